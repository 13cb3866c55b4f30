// Packets, and descriptors with them, over a pair of SOCK_SEQPACKET sockets.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/UniqueFd.h"

namespace norvo {

struct SocketPair {
  UniqueFd first;
  UniqueFd second;
};

// Two connected sockets that are not passed on to other programs; empty ones when there are none to
// be had.
SocketPair make_packet_sockets();

// Sends one packet, with a copy of the open descriptor `fd` unless that is -1. False when the other
// end is gone. Any thread.
[[nodiscard]] bool send_packet(int socket, std::string_view packet, int fd = -1);

struct Packet {
  bool ended = false;  // the other end is gone (or sent an empty packet, which looks the same)
  std::string bytes;   // what came beyond the asked length is lost, and leaves one byte more
  UniqueFd fd;         // the first descriptor that came along; others are closed
};

// Waits for a packet of at most `longest` bytes. A longer one has longest + 1 bytes here, so that
// nobody takes its beginning for the whole. One thread at a time.
Packet receive_packet(int socket, std::size_t longest);

}  // namespace norvo
