// A probe of devices with the answer that a test wants.
#pragma once

#include <filesystem>
#include <vector>

#include "storage/DevicePermissions.h"

namespace norvo::test {

class FakeProbe final : public DeviceProbe {
 public:
  int open_and_close(const std::filesystem::path& raw_device) override {
    probed.push_back(raw_device);
    return error;
  }

  int error = 0;  // errno; 0: it opens
  std::vector<std::filesystem::path> probed;
};

}  // namespace norvo::test
