// What the pool and a decoder process say to each other: messages of fixed length, checked by their
// receiver. Functions of their arguments; any thread.
//
// A request travels with the open descriptor of the file. An answer is followed by its pixels,
// `picture_bytes` of them, in the byte order of the machine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/decoder/Picture.h"

namespace norvo {

inline constexpr std::size_t decoder_message_bytes = 32;
using DecoderMessage = std::array<std::byte, decoder_message_bytes>;

// The longest side that may be asked for, and the longest extension that is passed on.
inline constexpr std::uint32_t longest_picture_side = 1024;
inline constexpr std::size_t longest_extension = 15;

enum class DecoderPurpose : std::uint8_t { picture = 1, verdict = 2 };

struct DecoderRequest {
  std::uint32_t serial = 0;  // comes back in the answer
  DecoderPurpose purpose = DecoderPurpose::picture;
  PictureSize box;        // sides from 1 to `longest_picture_side`
  std::string extension;  // small letters and digits

  bool operator==(const DecoderRequest&) const = default;
};

struct DecoderAnswer {
  std::uint32_t serial = 0;
  PictureSize size;  // both sides 0 without a picture
  Verdict verdict;

  bool operator==(const DecoderAnswer&) const = default;
};

// The extension as a request may hold it: in small letters, empty when it is too long or holds
// anything but ASCII letters and digits.
std::string portable_extension(std::string_view extension);

DecoderMessage encode(const DecoderRequest& request);
DecoderMessage encode(const DecoderAnswer& answer);

// nullopt for anything that `encode` would not have written.
std::optional<DecoderRequest> decode_request(std::span<const std::byte> message);
std::optional<DecoderAnswer> decode_answer(std::span<const std::byte> message);

// Whether this is an answer to `request`: same serial, a picture only where one was asked for and
// not beyond its box.
bool answers(const DecoderAnswer& answer, const DecoderRequest& request);

// Bytes of the pixels behind an answer.
std::size_t picture_bytes(const DecoderAnswer& answer);

// Whether no colour exceeds its alpha, which drawing relies on.
bool is_premultiplied(std::span<const std::uint32_t> pixels);

}  // namespace norvo
