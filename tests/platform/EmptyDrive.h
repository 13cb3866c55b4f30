// A block device without a medium, as this machine has it.
#pragma once

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>

#include <cstdint>
#include <filesystem>

#include "util/UniqueFd.h"

namespace norvo::test {

// Empty when there is none that may be opened. A loop device that no file is attached to is one.
inline std::filesystem::path device_without_medium() {
  for (const std::filesystem::directory_entry& entry :
       std::filesystem::directory_iterator("/dev")) {
    if (!std::filesystem::is_block_file(entry.symlink_status())) continue;
    const UniqueFd fd(open(entry.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::uint64_t bytes = 1;
    if (fd && ioctl(fd.get(), BLKGETSIZE64, &bytes) == 0 && bytes == 0) return entry.path();
  }
  return {};
}

}  // namespace norvo::test
