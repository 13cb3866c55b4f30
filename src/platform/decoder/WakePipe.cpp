#include "platform/decoder/WakePipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace norvo {

WakePipe::WakePipe() {
  std::array<int, 2> ends{-1, -1};
  if (pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  for (const int end : ends) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  read_end_ = UniqueFd(ends[0]);
  write_end_ = UniqueFd(ends[1]);
}

void WakePipe::wake() const {
  // A full pipe wakes as well.
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(write_end_.get(), &byte, 1);
}

void WakePipe::clear() const {
  std::array<char, 64> bytes{};
  while (read(read_end_.get(), bytes.data(), bytes.size()) > 0) {
  }
}

}  // namespace norvo
