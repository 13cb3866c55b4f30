// A file descriptor with one owner, closed when the owner goes.
#pragma once

#include <unistd.h>

#include <utility>

namespace norvo {

class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fd_(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
      static_cast<void>(close());
      fd_ = std::exchange(other.fd_, -1);
    }
    return *this;
  }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() { static_cast<void>(close()); }

  explicit operator bool() const { return fd_ >= 0; }
  int get() const { return fd_; }

  // Whether closing reported no error; true when there was nothing to close.
  [[nodiscard]] bool close() { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_ = -1;
};

}  // namespace norvo
