#include "platform/decoder/WakePipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "util/DescriptorPair.h"

namespace norvo {

WakePipe::WakePipe() {
  DescriptorPair pipe = make_pipe();
  if (!pipe) throw std::system_error(errno, std::generic_category(), "pipe");
  for (const UniqueFd* end : {&pipe.first, &pipe.second}) fcntl(end->get(), F_SETFL, O_NONBLOCK);
  read_end_ = std::move(pipe.first);
  write_end_ = std::move(pipe.second);
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
