// What the window and a player process say to each other: messages of fixed length, checked by
// their receiver. Functions of their arguments; any thread.
//
// The command `open` travels with the movie's open descriptor. The event `frame` is followed by its
// pixels; the next one comes only after the command `frame_taken`.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/decoder/Picture.h"

namespace norvo {

inline constexpr std::size_t movie_message_bytes = 24;
using MovieMessage = std::array<std::byte, movie_message_bytes>;

// The longest side of a frame that may be asked for.
inline constexpr std::uint32_t longest_frame_side = 2048;

struct MovieCommand {
  enum class Kind : std::uint8_t { open = 1, play, pause, seek, frame_taken };

  Kind kind = Kind::play;
  PictureSize box;                // of `open`; both 0 otherwise
  std::int64_t milliseconds = 0;  // of `seek`, from 0; 0 otherwise

  bool operator==(const MovieCommand&) const = default;
};

struct MovieReport {
  enum class Kind : std::uint8_t { opened = 1, position, frame, ended, no_movie };

  Kind kind = Kind::opened;
  PictureSize size;               // of `frame`; both 0 otherwise
  std::int64_t milliseconds = 0;  // duration of `opened`, place of `position`; from 0

  bool operator==(const MovieReport&) const = default;
};

MovieMessage encode(const MovieCommand& command);
MovieMessage encode(const MovieReport& report);

// nullopt for anything that `encode` would not have written.
std::optional<MovieCommand> decode_command(std::span<const std::byte> message);
std::optional<MovieReport> decode_report(std::span<const std::byte> message);

}  // namespace norvo
