// The probe of the permissions with the opener of the search, so that both ask with the same
// rights.
#pragma once

#include "engine/Device.h"
#include "storage/DevicePermissions.h"

namespace norvo {

// Main thread only.
class DeviceOpenerProbe final : public DeviceProbe {
 public:
  // `opener` must outlive the probe.
  explicit DeviceOpenerProbe(DeviceOpener& opener) : opener_(opener) {}

  int open_and_close(const std::filesystem::path& raw_device) override {
    const OpenedDevice opened = opener_.open(raw_device);
    return opened.device == nullptr ? opened.error : 0;
  }

 private:
  DeviceOpener& opener_;
};

}  // namespace norvo
