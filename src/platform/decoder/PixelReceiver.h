// Takes in what a helper program sends: messages of one length, each followed by as many pixels as
// it announces. Nothing here waits; one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace norvo {

class PixelReceiver {
 public:
  // How many pixels follow a message, asked before there is room for them; nullopt for a message
  // that breaks the protocol.
  using Announced = std::function<std::optional<std::size_t>(std::span<const std::byte> message)>;

  explicit PixelReceiver(std::size_t message_bytes) : message_(message_bytes) {}

  enum class Progress {
    waiting,   // not all is there yet
    complete,  // pixels() are all that were announced, until start_anew()
    refused,   // by `announced`
    ended,     // the other end is closed or broken
  };
  Progress receive(int socket, const Announced& announced);

  // The next bytes are those of a new message.
  void start_anew();

  std::vector<std::uint32_t>& pixels() { return pixels_; }

 private:
  std::vector<std::byte> message_;
  std::vector<std::uint32_t> pixels_;
  bool announced_ = false;    // the message is there, and the pixels are next
  std::size_t received_ = 0;  // bytes of the message, then of the pixels
};

}  // namespace norvo
