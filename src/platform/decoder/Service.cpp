#include "platform/decoder/Service.h"

#include <unistd.h>

#include <cerrno>
#include <new>

#include "platform/decoder/DescriptorMessage.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

bool write_all(int socket, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(socket, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

bool answer(int socket, const DecoderRequest& request, const Decoded& decoded) {
  DecoderAnswer answer{.serial = request.serial, .size = {}, .verdict = decoded.verdict};
  const bool has_picture = request.purpose == DecoderPurpose::picture && decoded.picture;
  if (has_picture) answer.size = decoded.picture->size;
  if (!write_all(socket, encode(answer))) return false;
  return !has_picture || write_all(socket, std::as_bytes(std::span(decoded.picture->pixels)));
}

}  // namespace

bool serve_requests(int socket, const Decode& decode) try {
  DecoderMessage message{};
  while (const UniqueFd file = receive_with_descriptor(socket, message)) {
    const std::optional<DecoderRequest> request = decode_request(message);
    if (!request) return false;
    if (!answer(socket, *request, decode(FileBytes(file.get()), *request))) return true;
  }
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace norvo
