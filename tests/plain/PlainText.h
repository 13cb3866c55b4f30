// Texts, numbers and hexadecimal digits, exactly as the signature files and the search read them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "PlainSearch.h"

namespace plain {

// Tab, line feed, vertical tab, form feed, carriage return, blank and the other Unicode spaces.
bool is_space(char16_t c);

Text Trim_Str(const Text& text);
// False for an empty needle, although every text holds the empty text.
bool Find_Str(const Text& text, const Text& needle);
Text Left_Str_substringToIndex(const Text& text, std::int32_t n);
Text Right_Str_substringFromIndex(const Text& text, std::int32_t n);

// Upper case of the Latin (to U+017F), Greek and Cyrillic letters; all else stays.
Text upper_case(const Text& text);

// Leading spaces and one sign, then digits; what follows is ignored, no digits give 0, and a value
// out of range sticks at the limit.
std::int64_t to_integer_64(const Text& text);
std::int32_t to_integer_32(const Text& text);

int hex2dec(const Text& text);            // first character only; `text` is not empty
std::uint32_t hex2int(const Text& text);  // a bad digit counts as 0; wraps at 32 bits

std::optional<Text> from_utf8(const std::string& utf8);  // nothing when it is not valid UTF-8
std::string to_utf8(const Text& text);

}  // namespace plain
