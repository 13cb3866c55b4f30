// What the window process and the device opener say to each other: one packet asks, one answers.
// Pure functions; any bytes may be given to the decoders, on any thread.
//
// A request: "NORQ", version, type (16-bit numbers, low byte first), and the path to its end.
// An answer: "NORA", version, and the errno (32 bits, low byte first); a descriptor comes along
// when, and only when, the errno is 0.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/OpenerGuard.h"

namespace norvo {

inline constexpr std::size_t request_head_size = 8;
inline constexpr std::size_t longest_request = request_head_size + longest_device_path;
inline constexpr std::size_t answer_size = 10;

// The request to open the block device at `path` for reading, the only one there is. Nothing for a
// path that does not fit.
std::optional<std::string> encode_request(std::string_view path);

// The path of a request. Nothing for any other packet: another mark, version or type, too short,
// without a path, or too long.
std::optional<std::string> decode_request(std::string_view packet);

// `error` is 0 or an errno.
std::string encode_answer(int error);

// The errno of an answer. Nothing for any other packet.
std::optional<int> decode_answer(std::string_view packet);

}  // namespace norvo
