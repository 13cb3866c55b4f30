#include "platform/terminal/ReportFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "util/Files.h"

namespace norvo {

int ReportFile::create(const std::filesystem::path& path) {
  if (path.has_parent_path() && !Create_Folder(path.parent_path())) return errno;
  fd_ = UniqueFd(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0666));
  return fd_ ? 0 : errno;
}

int ReportFile::add(std::string_view piece) {
  std::string_view left = piece;
  while (!left.empty()) {
    const ssize_t written = write(fd_.get(), left.data(), left.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      const int error = written == 0 ? EIO : errno;
      static_cast<void>(ftruncate(fd_.get(), whole_bytes_));
      return error;
    }
    left.remove_prefix(static_cast<std::size_t>(written));
  }
  whole_bytes_ += static_cast<off_t>(piece.size());
  return 0;
}

int ReportFile::close() {
  return fd_.close() ? 0 : errno;
}

}  // namespace norvo
