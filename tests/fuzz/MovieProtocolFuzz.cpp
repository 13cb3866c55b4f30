// Any bytes as a command for a player or a report of one: what is read is what was written, or
// nothing.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/Require.h"
#include "platform/player/MovieProtocol.h"

namespace {

using norvo::fuzz::require;

bool is_same(std::span<const std::byte> bytes, const norvo::MovieMessage& message) {
  return std::equal(bytes.begin(), bytes.end(), message.begin(), message.end());
}

bool is_allowed(norvo::PictureSize size) {
  return size.width >= 1 && size.width <= norvo::longest_frame_side && size.height >= 1 &&
         size.height <= norvo::longest_frame_side;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  if (const auto command = norvo::decode_command(bytes)) {
    require(is_same(bytes, encode(*command)), "a command has one form");
    const bool opens = command->kind == norvo::MovieCommand::Kind::open;
    require(opens == is_allowed(command->box), "opening has a box, and nothing else has");
    require(command->milliseconds >= 0, "no place lies before the beginning");
  }
  if (const auto report = norvo::decode_report(bytes)) {
    require(is_same(bytes, encode(*report)), "a report has one form");
    const bool is_frame = report->kind == norvo::MovieReport::Kind::frame;
    require(is_frame == is_allowed(report->size), "a frame has a size, and nothing else has");
    require(report->milliseconds >= 0, "no place lies before the beginning");
  }
  return 0;
}
