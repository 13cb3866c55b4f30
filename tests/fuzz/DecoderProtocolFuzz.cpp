// Any bytes as a request, an answer and its pixels: what is read is what was written, or nothing.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "platform/decoder/DecoderProtocol.h"

namespace {

using norvo::fuzz::require;

bool is_same(std::span<const std::byte> bytes, const norvo::DecoderMessage& message) {
  return std::equal(bytes.begin(), bytes.end(), message.begin(), message.end());
}

void check_request(std::span<const std::byte> bytes) {
  const auto request = norvo::decode_request(bytes);
  if (!request) return;
  require(is_same(bytes, encode(*request)), "a request has one form");
  require(request->box.width >= 1 && request->box.width <= norvo::longest_picture_side &&
              request->box.height >= 1 && request->box.height <= norvo::longest_picture_side,
          "a box has sides within their limits");
  require(norvo::portable_extension(request->extension) == request->extension,
          "an extension is plain");
}

void check_answer(std::span<const std::byte> bytes) {
  const auto answer = norvo::decode_answer(bytes);
  if (!answer) return;
  require(is_same(bytes, encode(*answer)), "an answer has one form");
  const std::size_t most =
      std::size_t{4} * norvo::longest_picture_side * norvo::longest_picture_side;
  require(norvo::picture_bytes(*answer) <= most, "a picture has a limit");
  require((answer->size.width == 0) == (answer->size.height == 0), "a picture has two sides");
  require(answer->verdict.percent.value_or(0) <= 99, "a part is less than all");
  require(!answer->verdict.percent || answer->verdict.completeness == norvo::Completeness::partly,
          "a percentage belongs to a part");
  const norvo::DecoderRequest request{.serial = answer->serial,
                                      .purpose = norvo::DecoderPurpose::picture,
                                      .box = {.width = 100, .height = 60},
                                      .extension = {}};
  if (norvo::answers(*answer, request)) {
    require(answer->size.width <= 100 && answer->size.height <= 60, "a picture fits its box");
  }
}

void check_pixels(std::span<const std::byte> bytes) {
  std::vector<std::uint32_t> pixels(bytes.size() / sizeof(std::uint32_t));
  if (!pixels.empty()) std::memcpy(pixels.data(), bytes.data(), pixels.size() * 4);
  bool good = true;
  for (const std::uint32_t pixel : pixels) {
    for (unsigned shift = 0; shift < 24; shift += 8) {
      if (((pixel >> shift) & 0xFFU) > pixel >> 24U) good = false;
    }
  }
  require(norvo::is_premultiplied(pixels) == good, "no colour exceeds its alpha");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  check_request(bytes);
  check_answer(bytes);
  check_pixels(bytes);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string plain = norvo::portable_extension(text);
  require(norvo::portable_extension(plain) == plain, "a plain extension stays as it is");
  return 0;
}
