#include "platform/player/MovieProtocol.h"

#include <cstring>

namespace norvo {
namespace {

constexpr std::uint32_t command_mark = 0x434D564E;
constexpr std::uint32_t report_mark = 0x524D564E;

struct Fields {
  std::uint32_t mark = 0;
  std::uint16_t kind = 0;
  std::uint16_t width = 0;
  std::uint16_t height = 0;
  std::array<std::uint16_t, 3> zero{};
  std::int64_t milliseconds = 0;
};
static_assert(sizeof(Fields) == movie_message_bytes);

MovieMessage written(std::uint32_t mark, std::uint16_t kind, PictureSize size,
                     std::int64_t milliseconds) {
  const Fields fields{.mark = mark,
                      .kind = kind,
                      .width = static_cast<std::uint16_t>(size.width),
                      .height = static_cast<std::uint16_t>(size.height),
                      .zero = {},
                      .milliseconds = milliseconds};
  MovieMessage message{};
  std::memcpy(message.data(), &fields, sizeof fields);
  return message;
}

// nullopt for what neither kind of message may hold. A size belongs to the kind `sized` alone.
std::optional<Fields> read(std::span<const std::byte> message, std::uint32_t mark,
                           std::uint16_t last_kind, std::uint16_t sized) {
  if (message.size() != movie_message_bytes) return std::nullopt;
  Fields fields;
  std::memcpy(&fields, message.data(), sizeof fields);
  const bool is_frame = fields.width >= 1 && fields.width <= longest_frame_side &&
                        fields.height >= 1 && fields.height <= longest_frame_side;
  const bool is_empty = fields.width == 0 && fields.height == 0;
  const bool good = fields.mark == mark && fields.kind >= 1 && fields.kind <= last_kind &&
                    (fields.kind == sized ? is_frame : is_empty) &&
                    fields.zero == decltype(fields.zero){} && fields.milliseconds >= 0;
  return good ? std::optional(fields) : std::nullopt;
}

PictureSize size_in(const Fields& fields) {
  return {.width = fields.width, .height = fields.height};
}

}  // namespace

MovieMessage encode(const MovieCommand& command) {
  return written(command_mark, static_cast<std::uint16_t>(command.kind), command.box,
                 command.milliseconds);
}

MovieMessage encode(const MovieReport& report) {
  return written(report_mark, static_cast<std::uint16_t>(report.kind), report.size,
                 report.milliseconds);
}

std::optional<MovieCommand> decode_command(std::span<const std::byte> message) {
  using Kind = MovieCommand::Kind;
  const auto fields = read(message, command_mark, static_cast<std::uint16_t>(Kind::frame_taken),
                           static_cast<std::uint16_t>(Kind::open));
  if (!fields) return std::nullopt;
  const MovieCommand command{.kind = static_cast<Kind>(fields->kind),
                             .box = size_in(*fields),
                             .milliseconds = fields->milliseconds};
  const bool stray_time = command.milliseconds != 0 && command.kind != Kind::seek;
  return stray_time ? std::nullopt : std::optional(command);
}

std::optional<MovieReport> decode_report(std::span<const std::byte> message) {
  using Kind = MovieReport::Kind;
  const auto fields = read(message, report_mark, static_cast<std::uint16_t>(Kind::no_movie),
                           static_cast<std::uint16_t>(Kind::frame));
  if (!fields) return std::nullopt;
  const MovieReport report{.kind = static_cast<Kind>(fields->kind),
                           .size = size_in(*fields),
                           .milliseconds = fields->milliseconds};
  const bool timed = report.kind == Kind::opened || report.kind == Kind::position;
  return report.milliseconds != 0 && !timed ? std::nullopt : std::optional(report);
}

}  // namespace norvo
