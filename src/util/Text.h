// Text: the program's texts and the small operations on them.
//
// A Text is a sequence of UTF-16 code units; lengths, indices and characters below mean code
// units. No function changes its arguments and none fails: a bad index gives the text unchanged
// or an empty text, as stated. All functions may be called from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvo {

using Text = std::u16string;
using TextView = std::u16string_view;

// Every occurrence of `search` (literal, case-sensitive, left to right, not overlapping) replaced.
// The name says "char"; texts of any length are accepted. An empty `search` replaces nothing.
Text Replace_char_in_string(TextView text, TextView search, TextView replacement);

// `text` without the white space and line ends at both ends (is_white_space).
Text Trim_Str(TextView text);

// Whether `needle` occurs in `text` (literal, case-sensitive). False for an empty needle.
bool Find_Str(TextView text, TextView needle);

// As Find_Str, ignoring case. An exception inside goes to the diagnostic sink in four messages
// (a fixed sentence, the text, the needle, the reason) and counts as "not found".
bool Find_Str_Case_Insensitive(TextView text, TextView needle);

// The first n characters; the text unchanged when it has no more than n. A negative n counts as 0.
Text Left_Str_substringToIndex(TextView text, std::int32_t n);

// The last n characters; the text unchanged when it has no more than n. A negative n counts as 0.
Text Right_Str_substringFromIndex(TextView text, std::int32_t n);

// From character i to the end; empty when i is negative or beyond the length.
Text Read_Str_FromIndex(TextView text, std::int32_t i);

// The first i characters; empty when i is negative or beyond the length.
Text Read_Str_Upto_Index(TextView text, std::int32_t i);

// White space and line ends as trimming knows them: U+0009 to U+000D, blank, U+0085, U+00A0 and
// the other Unicode space separators.
bool is_white_space(char16_t c);

// `text` with U+FFFD in place of control characters and of those that change the direction of text:
// what comes from strangers must not steer a terminal or disguise a name.
Text displayable(TextView text);

// Strict conversion: nullopt when `bytes` is not valid UTF-8 (overlong forms, surrogates, values
// above U+10FFFF and truncated sequences included). A byte-order mark is an ordinary character.
std::optional<Text> text_from_utf8(std::string_view bytes);

// Lenient conversion for display: each invalid byte becomes U+FFFD.
Text text_from_utf8_lossy(std::string_view bytes);

// An unpaired surrogate becomes U+FFFD.
std::string utf8_from_text(TextView text);

// `value` in decimal, without leading zeros.
Text decimal(std::uint64_t value);

}  // namespace norvo
