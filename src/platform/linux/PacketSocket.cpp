#include "platform/linux/PacketSocket.h"

#include <sys/socket.h>
#include <sys/uio.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace norvo {
namespace {

// Room for one descriptor is room for two where a word has eight bytes.
struct DescriptorRoom {
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> bytes{};
};

void attach(msghdr& message, DescriptorRoom& room, int fd) {
  message.msg_control = room.bytes.data();
  message.msg_controllen = room.bytes.size();
  cmsghdr* const part = CMSG_FIRSTHDR(&message);
  part->cmsg_level = SOL_SOCKET;
  part->cmsg_type = SCM_RIGHTS;
  part->cmsg_len = CMSG_LEN(sizeof(int));
  std::memcpy(CMSG_DATA(part), &fd, sizeof fd);
}

// Takes every descriptor, so that none stays open unseen, and keeps the first.
UniqueFd take_descriptors(msghdr& message) {
  UniqueFd first;
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
       part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) continue;
    const std::size_t count = (part->cmsg_len - CMSG_LEN(0)) / sizeof(int);
    for (std::size_t i = 0; i < count; ++i) {
      int fd = -1;
      std::memcpy(&fd, CMSG_DATA(part) + i * sizeof fd, sizeof fd);
      UniqueFd taken(fd);
      if (!first) first = std::move(taken);
    }
  }
  return first;
}

}  // namespace

SocketPair make_packet_sockets() {
  std::array<int, 2> ends{-1, -1};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return {};
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

bool send_packet(int socket, std::string_view packet, int fd) {
  std::string bytes(packet);
  iovec part{.iov_base = bytes.data(), .iov_len = bytes.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  DescriptorRoom room;
  if (fd >= 0) attach(message, room, fd);
  ssize_t sent = 0;
  do {
    sent = sendmsg(socket, &message, MSG_NOSIGNAL);
  } while (sent < 0 && errno == EINTR);
  return sent == static_cast<ssize_t>(bytes.size());
}

Packet receive_packet(int socket, std::size_t longest) {
  Packet packet;
  packet.bytes.resize(longest + 1);
  iovec part{.iov_base = packet.bytes.data(), .iov_len = packet.bytes.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  DescriptorRoom room;
  message.msg_control = room.bytes.data();
  message.msg_controllen = room.bytes.size();
  ssize_t got = 0;
  do {
    got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
  } while (got < 0 && errno == EINTR);
  packet.ended = got <= 0;
  packet.bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  if (got >= 0) packet.fd = take_descriptors(message);
  return packet;
}

}  // namespace norvo
