// The end of the process without clean-up handlers.
#pragma once

#include "app/Elevation.h"

namespace norvo {

class ImmediateEnd final : public ProcessEnd {
 public:
  // Does not return.
  void end_at_once(int status) override;
};

}  // namespace norvo
