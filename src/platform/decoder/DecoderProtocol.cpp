#include "platform/decoder/DecoderProtocol.h"

#include <algorithm>
#include <cstring>

namespace norvo {
namespace {

constexpr std::uint32_t request_mark = 0x5152444E;
constexpr std::uint32_t answer_mark = 0x4152444E;
constexpr std::uint8_t no_percent = 255;

// Places in both messages; the rest of a message is zero.
constexpr std::size_t mark_at = 0;
constexpr std::size_t serial_at = 4;
constexpr std::size_t width_at = 8;
constexpr std::size_t height_at = 10;
constexpr std::size_t kind_at = 12;
constexpr std::size_t extension_at = 13;
constexpr std::size_t percent_at = 13;

template <typename Number>
void put(DecoderMessage& message, std::size_t at, Number number) {
  std::memcpy(message.data() + at, &number, sizeof number);
}

template <typename Number>
Number take(std::span<const std::byte> message, std::size_t at) {
  Number number{};
  std::memcpy(&number, message.data() + at, sizeof number);
  return number;
}

PictureSize take_size(std::span<const std::byte> message) {
  return {.width = take<std::uint16_t>(message, width_at),
          .height = take<std::uint16_t>(message, height_at)};
}

bool is_plain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool is_side(std::uint32_t side) {
  return side >= 1 && side <= longest_picture_side;
}

bool is_same(std::span<const std::byte> message, const DecoderMessage& written) {
  return std::equal(message.begin(), message.end(), written.begin(), written.end());
}

}  // namespace

std::string portable_extension(std::string_view extension) {
  std::string plain;
  for (const char c : extension) {
    plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  const bool fits = plain.size() <= longest_extension;
  return fits && std::all_of(plain.begin(), plain.end(), is_plain) ? plain : std::string();
}

DecoderMessage encode(const DecoderRequest& request) {
  DecoderMessage message{};
  put(message, mark_at, request_mark);
  put(message, serial_at, request.serial);
  put(message, width_at, static_cast<std::uint16_t>(request.box.width));
  put(message, height_at, static_cast<std::uint16_t>(request.box.height));
  put(message, kind_at, static_cast<std::uint8_t>(request.purpose));
  std::memcpy(message.data() + extension_at, request.extension.data(),
              std::min(request.extension.size(), longest_extension));
  return message;
}

DecoderMessage encode(const DecoderAnswer& answer) {
  DecoderMessage message{};
  put(message, mark_at, answer_mark);
  put(message, serial_at, answer.serial);
  put(message, width_at, static_cast<std::uint16_t>(answer.size.width));
  put(message, height_at, static_cast<std::uint16_t>(answer.size.height));
  put(message, kind_at, static_cast<std::uint8_t>(answer.verdict.completeness));
  put(message, percent_at, answer.verdict.percent.value_or(no_percent));
  return message;
}

std::optional<DecoderRequest> decode_request(std::span<const std::byte> message) {
  if (message.size() != decoder_message_bytes) return std::nullopt;
  DecoderRequest request;
  request.serial = take<std::uint32_t>(message, serial_at);
  request.box = take_size(message);
  request.purpose = static_cast<DecoderPurpose>(take<std::uint8_t>(message, kind_at));
  for (std::size_t i = 0; i < longest_extension; ++i) {
    const char c = take<char>(message, extension_at + i);
    if (c == '\0') break;
    if (!is_plain(c)) return std::nullopt;
    request.extension += c;
  }
  const bool known =
      request.purpose == DecoderPurpose::picture || request.purpose == DecoderPurpose::verdict;
  if (!known || !is_side(request.box.width) || !is_side(request.box.height)) return std::nullopt;
  // Whatever is left must be zero.
  return is_same(message, encode(request)) ? std::optional(request) : std::nullopt;
}

std::optional<DecoderAnswer> decode_answer(std::span<const std::byte> message) {
  if (message.size() != decoder_message_bytes) return std::nullopt;
  DecoderAnswer answer;
  answer.serial = take<std::uint32_t>(message, serial_at);
  answer.size = take_size(message);
  const auto completeness = take<std::uint8_t>(message, kind_at);
  if (completeness > static_cast<std::uint8_t>(Completeness::nothing)) return std::nullopt;
  answer.verdict.completeness = static_cast<Completeness>(completeness);
  const auto percent = take<std::uint8_t>(message, percent_at);
  if (percent != no_percent) {
    if (percent > 99 || answer.verdict.completeness != Completeness::partly) return std::nullopt;
    answer.verdict.percent = percent;
  }
  const bool empty = answer.size == PictureSize{};
  if (!empty && (!is_side(answer.size.width) || !is_side(answer.size.height))) return std::nullopt;
  return is_same(message, encode(answer)) ? std::optional(answer) : std::nullopt;
}

bool answers(const DecoderAnswer& answer, const DecoderRequest& request) {
  if (answer.serial != request.serial) return false;
  if (request.purpose == DecoderPurpose::verdict) return answer.size == PictureSize{};
  return answer.size.width <= request.box.width && answer.size.height <= request.box.height;
}

std::size_t picture_bytes(const DecoderAnswer& answer) {
  return std::size_t{answer.size.width} * answer.size.height * sizeof(std::uint32_t);
}

bool is_premultiplied(std::span<const std::uint32_t> pixels) {
  return std::all_of(pixels.begin(), pixels.end(), [](std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    return ((pixel >> 16U) & 0xFFU) <= alpha && ((pixel >> 8U) & 0xFFU) <= alpha &&
           (pixel & 0xFFU) <= alpha;
  });
}

}  // namespace norvo
