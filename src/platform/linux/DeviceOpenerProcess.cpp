#include "platform/linux/DeviceOpenerProcess.h"

#include <cerrno>
#include <optional>
#include <string>

#include "platform/linux/OpenerGuard.h"
#include "platform/linux/OpenerProtocol.h"
#include "platform/linux/PacketSocket.h"

namespace norvo {
namespace {

OpenedNode open_requested(const Packet& packet) {
  const std::optional<std::string> path = decode_request(packet.bytes);
  if (!path) return {.fd = {}, .error = EPROTO};
  return open_block_device(*path);
}

}  // namespace

void answer_device_requests(UniqueFd socket) {
  for (;;) {
    const Packet packet = receive_packet(socket.get(), longest_request);
    if (packet.ended) return;
    const OpenedNode node = open_requested(packet);
    if (!send_packet(socket.get(), encode_answer(node.error), node.fd.get())) return;
  }
}

}  // namespace norvo
