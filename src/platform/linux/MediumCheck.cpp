#include "platform/linux/MediumCheck.h"

#include <linux/fs.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstdint>

namespace norvo {

int medium_error(const UniqueFd& fd) {
  std::uint64_t bytes = 0;
  return ioctl(fd.get(), BLKGETSIZE64, &bytes) == 0 && bytes == 0 ? ENOMEDIUM : 0;
}

}  // namespace norvo
