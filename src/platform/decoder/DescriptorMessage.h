// A message over a socket that carries an open descriptor along. Any thread that blocks or ignores
// SIGPIPE, which a closed other end raises.
#pragma once

#include <cstddef>
#include <span>

#include "util/UniqueFd.h"

namespace norvo {

// Sends all of `message` at once, with `descriptor`, which stays the caller's. False when the
// other end is gone or does not take it without waiting.
bool send_with_descriptor(int socket, std::span<const std::byte> message, int descriptor);

// Waits for `message.size()` bytes, and for the descriptor that may come with them. False when the
// other end is gone or sent less.
bool receive_message(int socket, std::span<std::byte> message, UniqueFd& descriptor);

// The same where a descriptor must come. The descriptor that came with them, or an empty one when
// the other end is gone, sent less, or sent no descriptor.
UniqueFd receive_with_descriptor(int socket, std::span<std::byte> message);

}  // namespace norvo
