// Wakes a thread that polls. wake() from any thread, the rest from the polling one.
#pragma once

#include "util/UniqueFd.h"

namespace norvo {

class WakePipe {
 public:
  // Throws std::system_error without descriptors.
  WakePipe();

  void wake() const;

  // The descriptor to poll; readable after wake().
  int descriptor() const { return read_end_.get(); }
  // Takes in all wake-ups so far.
  void clear() const;

 private:
  UniqueFd read_end_;
  UniqueFd write_end_;
};

}  // namespace norvo
