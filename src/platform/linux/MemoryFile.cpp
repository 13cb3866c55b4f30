#include "platform/decoder/MemoryFile.h"

#include <sys/mman.h>

#include <cerrno>

namespace norvo {

UniqueFd memory_file(std::span<const std::byte> bytes) {
  UniqueFd file(memfd_create("picture", MFD_CLOEXEC));
  while (file && !bytes.empty()) {
    const ssize_t written = write(file.get(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return {};
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return file;
}

}  // namespace norvo
