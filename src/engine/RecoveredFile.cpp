#include "engine/RecoveredFile.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "engine/Device.h"
#include "engine/SavingFailure.h"

namespace norvo {

void RecoveredFile::open(const OutputTree& tree, const std::filesystem::path& relative,
                         std::unique_ptr<FileWitness> witness) {
  abandon();
  runs_.clear();
  witness_ = std::move(witness);
  fd_ = tree.create_file(relative);
}

void RecoveredFile::append(const Sectors& sectors) {
  if (gathered_bytes_ != 0 && sectors.data != gathered_ + gathered_bytes_) write_gathered();
  if (gathered_bytes_ == 0) gathered_ = sectors.data;
  gathered_bytes_ += sectors.count * sector_size;
  if (witness_) runs_.add(sectors.origin, sectors.count);
}

void RecoveredFile::write_gathered() {
  const std::byte* from = gathered_;
  std::size_t left = std::exchange(gathered_bytes_, 0);
  while (left > 0) {
    const ssize_t written = write(fd_.get(), from, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) throw SavingFailure("cannot write recovered data");
    const auto bytes = static_cast<std::size_t>(written);
    if (witness_) witness_->written({from, bytes});
    from += bytes;
    left -= bytes;
  }
}

void RecoveredFile::close() {
  if (!is_open()) return;
  write_gathered();
  if (!fd_.close()) throw SavingFailure("cannot close a recovered file");
}

void RecoveredFile::conclude() {
  if (witness_) std::exchange(witness_, nullptr)->finished(runs_);
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
