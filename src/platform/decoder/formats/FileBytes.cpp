#include "platform/decoder/formats/FileBytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

namespace norvo {

// The size by lseek(): the C library asks for it by a call that also takes paths, which the decoder
// may not use.
FileBytes::FileBytes(int descriptor) {
  const off_t end = lseek(descriptor, 0, SEEK_END);
  if (end <= 0) return;
  const std::size_t size = std::min(static_cast<std::size_t>(end), most_bytes);
  void* const place = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (place != MAP_FAILED) bytes_ = Bytes(static_cast<const std::uint8_t*>(place), size);
}

FileBytes::~FileBytes() {
  if (!bytes_.empty()) munmap(const_cast<std::uint8_t*>(bytes_.data()), bytes_.size());
}

}  // namespace norvo
