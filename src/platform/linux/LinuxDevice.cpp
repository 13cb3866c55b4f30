#include "platform/linux/LinuxDevice.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <utility>

#include "engine/DescriptorDevice.h"
#include "platform/System.h"
#include "platform/linux/MediumCheck.h"

namespace norvo {
namespace {

// Direct reads go past the page cache, whose pages of eight sectors would all be lost with one.
class LinuxDevice final : public DescriptorDevice {
 public:
  using DescriptorDevice::DescriptorDevice;

  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override {
    alignas(4096) std::array<std::byte, 4096> aligned;
    const std::span item(aligned.data(), sector.size());
    if (!set_direct(true)) return read_block(offset, sector);
    const std::int64_t got = read_block(offset, item);
    const int error = errno;
    set_direct(false);
    // A medium with larger sectors, or a file system without direct reads, refuses the request
    // itself.
    if (got < 0 && error == EINVAL) return read_block(offset, sector);
    if (got > 0) std::memcpy(sector.data(), aligned.data(), static_cast<std::size_t>(got));
    return got;
  }

  void will_need(std::uint64_t offset, std::size_t length) override {
    static_cast<void>(posix_fadvise(fd(), static_cast<off_t>(offset), static_cast<off_t>(length),
                                    POSIX_FADV_WILLNEED));
  }

 private:
  bool set_direct(bool on) const {
    const int flags = fcntl(fd(), F_GETFL);
    return flags >= 0 && fcntl(fd(), F_SETFL, on ? flags | O_DIRECT : flags & ~O_DIRECT) == 0;
  }
};

// Why what was opened cannot be searched; 0 when it can.
int search_error(const UniqueFd& fd) {
  struct stat status {};
  if (fstat(fd.get(), &status) != 0) return errno;
  if (S_ISREG(status.st_mode)) return 0;
  if (S_ISBLK(status.st_mode)) return medium_error(fd);
  return S_ISDIR(status.st_mode) ? EISDIR : ENOTBLK;
}

// O_NONBLOCK: opening a pipe must not wait for its other end.
UniqueFd open_read_only(const std::filesystem::path& path, int& error) {
  UniqueFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  error = fd ? search_error(fd) : errno;
  return error == 0 ? std::move(fd) : UniqueFd();
}

class LinuxDeviceOpener final : public DeviceOpener {
 public:
  OpenedDevice open(const std::filesystem::path& path) override {
    int error = 0;
    UniqueFd fd = open_read_only(path, error);
    if (!fd) return {.device = nullptr, .error = error};
    return {.device = make_linux_device(std::move(fd))};
  }
};

}  // namespace

std::unique_ptr<Device> make_linux_device(UniqueFd fd) {
  // Ahead of a reader that goes from start to end the kernel may read twice as far.
  static_cast<void>(posix_fadvise(fd.get(), 0, 0, POSIX_FADV_SEQUENTIAL));
  return std::make_unique<LinuxDevice>(std::move(fd));
}

std::unique_ptr<DeviceOpener> make_system_device_opener() {
  return std::make_unique<LinuxDeviceOpener>();
}

DeviceSize device_size(const std::filesystem::path& device) {
  int error = 0;
  const UniqueFd fd = open_read_only(device, error);
  if (!fd) return {.error = error};
  const off_t end = lseek(fd.get(), 0, SEEK_END);
  if (end < 0) return {.error = errno};
  return {.bytes = static_cast<std::uint64_t>(end)};
}

}  // namespace norvo
