#include "util/Numbers.h"

#include <algorithm>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

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

namespace {

std::size_t digits_at(std::string_view text, std::size_t place) {
  const std::size_t end = text.find_first_not_of("0123456789", place);
  return (end == std::string_view::npos ? text.size() : end) - std::min(place, text.size());
}

// The decimal number without a sign that `text` begins with, its exponent included; may be empty.
std::string_view decimal_number(std::string_view text) {
  std::size_t digits = digits_at(text, 0);
  std::size_t end = digits;
  if (text.substr(end).starts_with('.')) {
    const std::size_t fraction = digits_at(text, end + 1);
    digits += fraction;
    end += 1 + fraction;
  }
  if (digits == 0) return {};
  std::size_t exponent = end;
  if (exponent < text.size() && (text[exponent] == 'e' || text[exponent] == 'E')) ++exponent;
  if (exponent == end) return text.substr(0, end);
  if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
  const std::size_t powers = digits_at(text, exponent);
  return text.substr(0, powers == 0 ? end : exponent + powers);
}

}  // namespace

double floating_value(TextView text) {
  while (!text.empty() && is_white_space(text.front())) text.remove_prefix(1);
  std::string characters;
  for (const char16_t c : text) {
    if (c > u'~') break;
    characters += static_cast<char>(c);
  }
  std::string_view number = characters;
  const bool negative = number.starts_with('-');
  if (negative || number.starts_with('+')) number.remove_prefix(1);
  number = decimal_number(number);
  if (number.empty()) return 0;
  // Not std::from_chars, which not every standard library has for floating-point numbers.
  std::istringstream stream{std::string(number)};
  stream.imbue(std::locale::classic());
  double magnitude = 0;
  stream >> magnitude;
  if (stream.fail() && magnitude > 1) magnitude = std::numeric_limits<double>::infinity();
  return negative ? -magnitude : magnitude;
}

}  // namespace norvo
