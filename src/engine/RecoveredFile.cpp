#include "engine/RecoveredFile.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "engine/Device.h"
#include "engine/SavingFailure.h"

namespace norvo {

void RecoveredFile::open(const OutputTree& tree, const std::filesystem::path& relative) {
  abandon();
  fd_ = tree.create_file(relative);
}

void RecoveredFile::append(const std::byte* data, std::size_t sectors) {
  if (gathered_bytes_ != 0 && data != gathered_ + gathered_bytes_) write_gathered();
  if (gathered_bytes_ == 0) gathered_ = data;
  gathered_bytes_ += sectors * sector_size;
}

void RecoveredFile::write_gathered() {
  const std::byte* from = gathered_;
  std::size_t left = std::exchange(gathered_bytes_, 0);
  while (left > 0) {
    const ssize_t written = write(fd_.get(), from, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) throw SavingFailure("cannot write recovered data");
    from += written;
    left -= static_cast<std::size_t>(written);
  }
}

void RecoveredFile::close() {
  if (!is_open()) return;
  write_gathered();
  if (!fd_.close()) throw SavingFailure("cannot close a recovered file");
}

void RecoveredFile::abandon() noexcept {
  try {
    close();
  } catch (const SavingFailure&) {
    gathered_bytes_ = 0;
    static_cast<void>(fd_.close());
  }
}

}  // namespace norvo
