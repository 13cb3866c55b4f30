#include "util/DescriptorPair.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace norvo {
namespace {

using Ends = std::array<int, 2>;

template <typename Make>
DescriptorPair make_pair_with(const Make& make) {
  const std::unique_lock lock = hold_descriptor_pairs();
  Ends ends{-1, -1};
  if (make(ends) != 0) return {};
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  return {.first = UniqueFd(ends[0]), .second = UniqueFd(ends[1])};
}

}  // namespace

std::unique_lock<std::mutex> hold_descriptor_pairs() {
  static std::mutex pairs;
  return std::unique_lock(pairs);
}

DescriptorPair make_pipe() {
  return make_pair_with([](Ends& ends) { return pipe(ends.data()); });
}

DescriptorPair make_socket_pair() {
  return make_pair_with(
      [](Ends& ends) { return socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()); });
}

}  // namespace norvo
