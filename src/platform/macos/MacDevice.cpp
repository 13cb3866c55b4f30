#include <fcntl.h>
#include <sys/disk.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "engine/DescriptorDevice.h"
#include "platform/System.h"

namespace norvo {
namespace {

// A raw node has no cache in between, so single sectors need nothing special here.
class MacDevice final : public DescriptorDevice {
 public:
  using DescriptorDevice::DescriptorDevice;

  void will_need(std::uint64_t offset, std::size_t length) override {
    radvisory advice{};
    advice.ra_offset = static_cast<off_t>(offset);
    advice.ra_count = static_cast<int>(length);
    static_cast<void>(fcntl(fd(), F_RDADVISE, &advice));
  }
};

UniqueFd open_read_only(const std::filesystem::path& path, int& error) {
  UniqueFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (!fd || fstat(fd.get(), &status) != 0) {
    error = errno;
    return {};
  }
  error = S_ISDIR(status.st_mode) ? EISDIR : ENOTBLK;
  const bool searchable =
      S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode) || S_ISREG(status.st_mode);
  return searchable ? std::move(fd) : UniqueFd{};
}

class MacDeviceOpener final : public DeviceOpener {
 public:
  OpenedDevice open(const std::filesystem::path& path) override {
    int error = 0;
    UniqueFd fd = open_read_only(path, error);
    if (!fd) return {.device = nullptr, .error = error};
    return {.device = std::make_unique<MacDevice>(std::move(fd))};
  }
};

}  // namespace

std::unique_ptr<DeviceOpener> make_system_device_opener() {
  return std::make_unique<MacDeviceOpener>();
}

DeviceSize device_size(const std::filesystem::path& device) {
  int error = 0;
  const UniqueFd fd = open_read_only(device, error);
  if (!fd) return {.error = error};
  std::uint32_t block_size = 0;
  std::uint64_t blocks = 0;
  if (ioctl(fd.get(), DKIOCGETBLOCKSIZE, &block_size) == 0 &&
      ioctl(fd.get(), DKIOCGETBLOCKCOUNT, &blocks) == 0) {
    return {.bytes = blocks * block_size};
  }
  const off_t end = lseek(fd.get(), 0, SEEK_END);
  if (end < 0) return {.error = errno};
  return {.bytes = static_cast<std::uint64_t>(end)};
}

}  // namespace norvo
