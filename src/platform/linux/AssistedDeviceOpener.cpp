#include "platform/linux/AssistedDeviceOpener.h"

namespace norvo {

OpenedDevice AssistedDeviceOpener::open(const std::filesystem::path& path) {
  OpenedDevice opened = own_.open(path);
  if (opened.device != nullptr) return opened;
  if (opened.error != EACCES && opened.error != EPERM) return opened;
  return helper_.open(path);
}

}  // namespace norvo
