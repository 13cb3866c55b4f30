#include "platform/decoder/PixelReceiver.h"

#include <sys/socket.h>

#include <cerrno>

namespace norvo {

PixelReceiver::Progress PixelReceiver::receive(int socket, const Announced& announced) {
  while (true) {
    const auto place =
        announced_ ? std::as_writable_bytes(std::span(pixels_)) : std::span(message_);
    if (received_ == place.size()) return Progress::complete;
    const auto rest = place.subspan(received_);
    const ssize_t got = recv(socket, rest.data(), rest.size(), MSG_DONTWAIT);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return Progress::waiting;
    if (got <= 0) return Progress::ended;
    received_ += static_cast<std::size_t>(got);
    if (announced_ || received_ < message_.size()) continue;
    const std::optional<std::size_t> count = announced(message_);
    if (!count) return Progress::refused;
    pixels_.assign(*count, 0);
    announced_ = true;
    received_ = 0;
  }
}

void PixelReceiver::start_anew() {
  pixels_.clear();
  announced_ = false;
  received_ = 0;
}

}  // namespace norvo
