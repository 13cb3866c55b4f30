// Numbers at places in foreign bytes: a place that is not inside reads as nullopt. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

enum class ByteOrder : std::uint8_t { big, little };

inline bool lies_inside(Bytes bytes, std::uint64_t at, std::uint64_t length) {
  return at <= bytes.size() && length <= bytes.size() - at;
}

// `length` is at most 8.
inline std::optional<std::uint64_t> number_at(Bytes bytes, std::uint64_t at, std::size_t length,
                                              ByteOrder order = ByteOrder::big) {
  if (!lies_inside(bytes, at, length)) return std::nullopt;
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t place = order == ByteOrder::big ? i : length - 1 - i;
    number = number << 8U | bytes[static_cast<std::size_t>(at) + place];
  }
  return number;
}

// What of the range lies inside.
inline Bytes part_of(Bytes bytes, std::uint64_t at, std::uint64_t length) {
  if (at >= bytes.size()) return {};
  const std::uint64_t left = bytes.size() - at;
  return bytes.subspan(static_cast<std::size_t>(at),
                       static_cast<std::size_t>(length < left ? length : left));
}

inline bool stands_at(Bytes bytes, std::uint64_t at, std::string_view text) {
  if (!lies_inside(bytes, at, text.size())) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (bytes[static_cast<std::size_t>(at) + i] != static_cast<std::uint8_t>(text[i])) return false;
  }
  return true;
}

}  // namespace norvo
