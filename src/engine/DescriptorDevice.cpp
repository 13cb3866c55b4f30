#include "engine/DescriptorDevice.h"

#include <unistd.h>

#include <limits>

namespace norvo {
namespace {

bool is_file_offset(std::uint64_t offset) {
  return offset <= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
}

}  // namespace

std::int64_t DescriptorDevice::read_block(std::uint64_t offset, std::span<std::byte> block) {
  if (!is_file_offset(offset)) return -1;
  ssize_t got = 0;
  do {
    got = pread(fd(), block.data(), block.size(), static_cast<off_t>(offset));
  } while (got < 0 && errno == EINTR);
  return got;
}

std::int64_t DescriptorDevice::read_sector(std::uint64_t offset, std::span<std::byte> sector) {
  return read_block(offset, sector);
}

bool DescriptorDevice::can_position(std::uint64_t offset) {
  return is_file_offset(offset) && lseek(fd(), static_cast<off_t>(offset), SEEK_SET) >= 0;
}

void DescriptorDevice::will_need(std::uint64_t /*offset*/, std::size_t /*length*/) {
}

}  // namespace norvo
