// The person's own right first, help where it does not reach.
#pragma once

#include "engine/Device.h"

namespace norvo {

class AssistedDeviceOpener final : public DeviceOpener {
 public:
  // Both outlive this opener.
  AssistedDeviceOpener(DeviceOpener& own, DeviceOpener& helper) : own_(own), helper_(helper) {}

  // What `own` gives; what `helper` gives when `own` lacks the permission (EACCES, EPERM). So a
  // disk image is opened with the person's rights alone. As many threads as both openers bear.
  OpenedDevice open(const std::filesystem::path& path) override;

 private:
  DeviceOpener& own_;
  DeviceOpener& helper_;
};

}  // namespace norvo
