// A full drive without a drive: no file of this process may grow beyond a size.
#pragma once

#include <sys/resource.h>

#include <csignal>
#include <stdexcept>

namespace norvo::test {

// Writes beyond `bytes` fail with EFBIG while the object lives. Says nothing about files that are
// larger already.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    if (getrlimit(RLIMIT_FSIZE, &before_) != 0) throw std::runtime_error("no limit to be read");
    handler_before_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("no limit to be set");
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_before_);
  }

 private:
  rlimit before_{};
  void (*handler_before_)(int) = nullptr;
};

}  // namespace norvo::test
