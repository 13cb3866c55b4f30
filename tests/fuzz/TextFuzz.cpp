// Any bytes as UTF-8 and as UTF-16: converted, trimmed, searched and read as numbers.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/Require.h"
#include "util/Hexadecimal.h"
#include "util/LetterCase.h"
#include "util/Numbers.h"
#include "util/Text.h"

namespace {

using norvo::Text;
using norvo::TextView;
using norvo::fuzz::require;

bool is_high(char16_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
bool is_low(char16_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

bool is_well_formed(TextView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_low(text[i])) return false;
    if (is_high(text[i]) && (++i == text.size() || !is_low(text[i]))) return false;
  }
  return true;
}

void check_bytes(std::string_view bytes) {
  const std::optional<Text> strict = norvo::text_from_utf8(bytes);
  const Text lossy = norvo::text_from_utf8_lossy(bytes);
  require(is_well_formed(lossy), "a shown text has no unpaired surrogate");
  if (strict) {
    require(lossy == *strict, "valid bytes are shown as they are");
    require(norvo::utf8_from_text(*strict) == bytes, "valid bytes come back as they were");
  } else {
    require(lossy.find(u'\uFFFD') != Text::npos, "invalid bytes are shown as replacements");
  }
}

void check_conversion(TextView text) {
  const std::optional<Text> back = norvo::text_from_utf8(norvo::utf8_from_text(text));
  require(back.has_value(), "written UTF-8 is valid");
  require(back->size() == text.size(), "a replaced surrogate keeps its place");
  require((*back == text) == is_well_formed(text), "a well-formed text comes back as it was");
}

void check_trimming(TextView text) {
  const Text trimmed = norvo::Trim_Str(text);
  require(trimmed.empty() ||
              (!norvo::is_white_space(trimmed.front()) && !norvo::is_white_space(trimmed.back())),
          "no white space is left at the ends");
  const std::size_t begin = text.find(trimmed);
  require(begin != TextView::npos, "a trimmed text is a part of the text");
  require(norvo::Trim_Str(trimmed) == trimmed, "trimming again changes nothing");
  const auto spaces = std::count_if(text.begin(), text.end(), norvo::is_white_space);
  const auto left = std::count_if(trimmed.begin(), trimmed.end(), norvo::is_white_space);
  require(text.size() - trimmed.size() == static_cast<std::size_t>(spaces - left),
          "trimming takes white space and nothing else");
}

void check_searching(TextView text) {
  const std::size_t half = text.size() / 2;
  const TextView needle = text.substr(half / 2, half);
  require(norvo::Find_Str(text, needle) == !needle.empty(), "a part of a text is found");
  require(norvo::Find_Str_Case_Insensitive(text, needle) == !needle.empty(),
          "a part of a text is found whatever its case");
  require(norvo::Replace_char_in_string(text, needle, needle) == text,
          "replacing a part by itself changes nothing");
  const Text removed = norvo::Replace_char_in_string(text, u" ", u"");
  require(removed.find(u' ') == Text::npos, "nothing replaced is left");
}

void check_parts(TextView text) {
  for (const std::int32_t n :
       {std::numeric_limits<std::int32_t>::min(), -1, 0, 1, 7,
        static_cast<std::int32_t>(text.size()), std::numeric_limits<std::int32_t>::max()}) {
    const std::size_t taken = n < 0 ? 0 : std::min(static_cast<std::size_t>(n), text.size());
    const bool inside = n >= 0 && static_cast<std::size_t>(n) <= text.size();
    require(norvo::Left_Str_substringToIndex(text, n) == text.substr(0, taken), "the left part");
    require(norvo::Right_Str_substringFromIndex(text, n) == text.substr(text.size() - taken),
            "the right part");
    require(norvo::Read_Str_FromIndex(text, n) == (inside ? text.substr(taken) : TextView()),
            "the part from an index on");
    require(norvo::Read_Str_Upto_Index(text, n) == (inside ? text.substr(0, taken) : TextView()),
            "the part up to an index");
  }
}

void check_numbers(TextView text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t wide = norvo::integer64_value(text);
  require(
      norvo::integer32_value(text) == std::clamp<std::int64_t>(wide, Limits::min(), Limits::max()),
      "the narrow number is the wide one within its limits");
  std::uint32_t hexadecimal = 0;
  std::uint32_t weight = 1;
  for (std::size_t i = text.size(); i-- > 0; weight *= 16) {
    const auto digit = static_cast<std::uint32_t>(norvo::hex2dec(text.substr(i)));
    require(digit < 16, "a digit is below 16");
    hexadecimal += digit * weight;
  }
  require(norvo::hex2int(text) == hexadecimal, "a hexadecimal number is the sum of its digits");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  check_bytes(bytes);

  Text units;
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8U)));
  }
  for (const Text& text : {units, norvo::text_from_utf8_lossy(bytes)}) {
    check_conversion(text);
    check_trimming(text);
    check_searching(text);
    check_parts(text);
    check_numbers(text);
    static_cast<void>(norvo::upper_case(text));
  }
  return 0;
}
