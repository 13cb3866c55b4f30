// Opens block devices through the device opener's process.
#pragma once

#include <mutex>

#include "engine/Device.h"
#include "util/UniqueFd.h"

namespace norvo {

class RemoteDeviceOpener final : public DeviceOpener {
 public:
  // `socket` leads to answer_device_requests in another process.
  explicit RemoteDeviceOpener(UniqueFd socket) : socket_(std::move(socket)) {}

  // Any thread; one request at a time is under way, and others wait for it. The errno of the opener
  // (see open_block_device), ENAMETOOLONG for a path that no device has, ENOTBLK when what came is
  // no block device, and EIO, now and from then on, when the opener is gone; also EIO for an answer
  // that cannot be understood.
  OpenedDevice open(const std::filesystem::path& path) override;

 private:
  std::mutex one_request_;
  UniqueFd socket_;
};

}  // namespace norvo
