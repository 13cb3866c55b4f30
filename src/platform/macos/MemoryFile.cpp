#include "platform/decoder/MemoryFile.h"

#include <fcntl.h>

#include <cstdio>
#include <memory>

namespace norvo {

UniqueFd memory_file(std::span<const std::byte> bytes) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
  if (!file) return {};
  if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) return {};
  if (std::fflush(file.get()) != 0) return {};
  return UniqueFd(fcntl(fileno(file.get()), F_DUPFD_CLOEXEC, 0));
}

}  // namespace norvo
