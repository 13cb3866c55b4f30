// A decoded picture, and what decoding told about the file.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace norvo {

struct PictureSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;

  bool operator==(const PictureSize&) const = default;
};

// Rows from top to bottom without gaps, `size.width * size.height` pixels; each is 0xAARRGGBB with
// its colours multiplied by its alpha.
struct Picture {
  PictureSize size;
  std::vector<std::uint32_t> pixels;

  bool operator==(const Picture&) const = default;
};

enum class Completeness : std::uint8_t {
  not_known,      // not looked at yet, or the decoder did not survive the file
  whole,          // all of the picture decodes
  partly,         // some of it does
  embedded_only,  // only the small picture inside the file is intact
  nothing,
};

// A decoder cannot see damage that happens to be valid: `whole` says that it decodes, no more.
struct Verdict {
  Completeness completeness = Completeness::not_known;
  std::optional<std::uint8_t> percent;  // 0 to 99, of the rows; only of `partly`, where it is known

  bool operator==(const Verdict&) const = default;
};

}  // namespace norvo
