// What a decoder made of a file.
#pragma once

#include <optional>
#include <utility>

#include "platform/decoder/Picture.h"

namespace norvo {

// A verdict without a percentage.
inline Verdict plain_verdict(Completeness completeness) {
  return {.completeness = completeness, .percent = std::nullopt};
}

struct Decoded {
  std::optional<Picture> picture;
  Verdict verdict = plain_verdict(Completeness::nothing);

  bool has_something() const { return verdict.completeness != Completeness::nothing; }
};

inline Decoded whole(std::optional<Picture> picture) {
  return {.picture = std::move(picture), .verdict = plain_verdict(Completeness::whole)};
}

// `rows` of `height` rows decoded; less than all of them is never 100 percent.
inline Decoded partly(std::optional<Picture> picture, std::uint32_t rows, std::uint32_t height) {
  const std::uint64_t percent = height == 0 ? 0 : std::uint64_t{rows} * 100 / height;
  return {.picture = std::move(picture),
          .verdict = {.completeness = Completeness::partly,
                      .percent = static_cast<std::uint8_t>(percent > 99 ? 99 : percent)}};
}

// It is not known how much.
inline Decoded partly(std::optional<Picture> picture) {
  return {.picture = std::move(picture), .verdict = plain_verdict(Completeness::partly)};
}

inline Decoded embedded_only(std::optional<Picture> picture) {
  return {.picture = std::move(picture), .verdict = plain_verdict(Completeness::embedded_only)};
}

// A picture whose file must be looked at again for a verdict.
inline Decoded not_judged(std::optional<Picture> picture) {
  return {.picture = std::move(picture), .verdict = {}};
}

}  // namespace norvo
