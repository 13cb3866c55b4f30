#include "platform/decoder/DescriptorMessage.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace norvo {
namespace {

// Room for one descriptor beside the message. How much that takes is no constant on every system.
struct ControlRoom {
  alignas(cmsghdr) std::array<char, 64> bytes{};

  void lend_to(msghdr& packet) {
    packet.msg_control = bytes.data();
    packet.msg_controllen = static_cast<decltype(packet.msg_controllen)>(CMSG_SPACE(sizeof(int)));
  }
};

UniqueFd descriptor_in(msghdr& packet) {
  const cmsghdr* const control = CMSG_FIRSTHDR(&packet);
  const bool has_one = control != nullptr && control->cmsg_level == SOL_SOCKET &&
                       control->cmsg_type == SCM_RIGHTS &&
                       control->cmsg_len == CMSG_LEN(sizeof(int));
  if (!has_one) return {};
  int descriptor = -1;
  std::memcpy(&descriptor, CMSG_DATA(control), sizeof descriptor);
  return UniqueFd(descriptor);
}

}  // namespace

bool send_with_descriptor(int socket, std::span<const std::byte> message, int descriptor) {
  // sendmsg() only reads from it.
  iovec part{.iov_base = const_cast<std::byte*>(message.data()), .iov_len = message.size()};
  ControlRoom room;
  msghdr packet{};
  packet.msg_iov = &part;
  packet.msg_iovlen = 1;
  room.lend_to(packet);
  cmsghdr* const control = CMSG_FIRSTHDR(&packet);
  control->cmsg_level = SOL_SOCKET;
  control->cmsg_type = SCM_RIGHTS;
  control->cmsg_len = static_cast<decltype(control->cmsg_len)>(CMSG_LEN(sizeof descriptor));
  std::memcpy(CMSG_DATA(control), &descriptor, sizeof descriptor);
  ssize_t sent = -1;
  do {
    sent = sendmsg(socket, &packet, MSG_DONTWAIT);
  } while (sent < 0 && errno == EINTR);
  return sent == static_cast<ssize_t>(message.size());
}

bool receive_message(int socket, std::span<std::byte> message, UniqueFd& descriptor) {
  descriptor = UniqueFd();
  std::size_t received = 0;
  while (received < message.size()) {
    iovec part{.iov_base = message.data() + received, .iov_len = message.size() - received};
    ControlRoom room;
    msghdr packet{};
    packet.msg_iov = &part;
    packet.msg_iovlen = 1;
    room.lend_to(packet);
    const ssize_t got = recvmsg(socket, &packet, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    received += static_cast<std::size_t>(got);
    if (UniqueFd arrived = descriptor_in(packet)) descriptor = std::move(arrived);
  }
  return true;
}

UniqueFd receive_with_descriptor(int socket, std::span<std::byte> message) {
  UniqueFd descriptor;
  if (!receive_message(socket, message, descriptor)) return {};
  return descriptor;
}

}  // namespace norvo
