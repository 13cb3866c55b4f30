#include "util/Numbers.h"

#include <algorithm>
#include <limits>

namespace norvo {

std::int64_t integer64_value(TextView text) {
  while (!text.empty() && is_white_space(text.front())) text.remove_prefix(1);
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) text.remove_prefix(1);

  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const std::uint64_t limit = negative ? largest + 1 : largest;
  std::uint64_t magnitude = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') break;
    const auto digit = static_cast<std::uint64_t>(c - u'0');
    if (magnitude > (limit - digit) / 10) {
      magnitude = limit;
      break;
    }
    magnitude = magnitude * 10 + digit;
  }
  return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

std::int32_t integer32_value(TextView text) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(integer64_value(text), Limits::min(), Limits::max()));
}

}  // namespace norvo
