// The desktop as the toolkit reaches it. Main thread.
#pragma once

#include "wizard/Desktop.h"

namespace norvo {

class QtDesktop : public Desktop {
 public:
  bool open_path(const std::filesystem::path& path) override;
  bool open_address(TextView address) override;
  void copy_text(TextView text) override;
  void terminate() override;
};

}  // namespace norvo
