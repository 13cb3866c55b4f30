#include "util/Text.h"

#include <algorithm>
#include <exception>

#include "util/Diagnostics.h"
#include "util/LetterCase.h"

namespace norvo {
namespace {

// An index from a 32-bit signed argument, widened with its sign: a negative one becomes huge.
std::size_t widened(std::int32_t i) {
  return static_cast<std::size_t>(static_cast<std::int64_t>(i));
}

struct Decoded {
  char32_t code_point = 0;
  std::size_t length = 0;  // bytes used; 0 for an invalid sequence
};

bool is_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

Decoded decode_one(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) return {lead, 1};
  std::size_t length = 0;
  char32_t code_point = 0;
  char32_t smallest = 0;
  if ((lead & 0xE0U) == 0xC0U) {
    length = 2, code_point = lead & 0x1FU, smallest = 0x80;
  } else if ((lead & 0xF0U) == 0xE0U) {
    length = 3, code_point = lead & 0x0FU, smallest = 0x800;
  } else if ((lead & 0xF8U) == 0xF0U) {
    length = 4, code_point = lead & 0x07U, smallest = 0x10000;
  } else {
    return {};
  }
  if (bytes.size() < length) return {};
  for (std::size_t i = 1; i < length; ++i) {
    if (!is_continuation(bytes[i])) return {};
    code_point = (code_point << 6U) | (static_cast<unsigned char>(bytes[i]) & 0x3FU);
  }
  const bool surrogate = code_point >= 0xD800 && code_point <= 0xDFFF;
  if (code_point < smallest || code_point > 0x10FFFF || surrogate) return {};
  return {code_point, length};
}

void append_utf16(Text& text, char32_t code_point) {
  if (code_point < 0x10000) {
    text.push_back(static_cast<char16_t>(code_point));
    return;
  }
  const char32_t rest = code_point - 0x10000;
  text.push_back(static_cast<char16_t>(0xD800 + (rest >> 10U)));
  text.push_back(static_cast<char16_t>(0xDC00 + (rest & 0x3FFU)));
}

void append_utf8(std::string& bytes, char32_t c) {
  const auto put = [&bytes](char32_t value) { bytes.push_back(static_cast<char>(value)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6U)), put(0x80 | (c & 0x3FU));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12U)), put(0x80 | ((c >> 6U) & 0x3FU)), put(0x80 | (c & 0x3FU));
  } else {
    put(0xF0 | (c >> 18U)), put(0x80 | ((c >> 12U) & 0x3FU));
    put(0x80 | ((c >> 6U) & 0x3FU)), put(0x80 | (c & 0x3FU));
  }
}

constexpr char32_t replacement_character = 0xFFFD;

}  // namespace

Text Replace_char_in_string(TextView text, TextView search, TextView replacement) {
  if (search.empty()) return Text(text);
  Text result;
  std::size_t from = 0;
  for (std::size_t at = text.find(search); at != TextView::npos; at = text.find(search, from)) {
    result.append(text.substr(from, at - from)).append(replacement);
    from = at + search.size();
  }
  return result.append(text.substr(from));
}

Text Trim_Str(TextView text) {
  while (!text.empty() && is_white_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_white_space(text.back())) text.remove_suffix(1);
  return Text(text);
}

bool Find_Str(TextView text, TextView needle) {
  return !needle.empty() && text.find(needle) != TextView::npos;
}

bool Find_Str_Case_Insensitive(TextView text, TextView needle) {
  try {
    return Find_Str(fold_case(text), fold_case(needle));
  } catch (const std::exception& reason) {
    Show_NSLog_Message(u"Find_Str_Case_Insensitive exception");
    Show_NSLog_Message(text);
    Show_NSLog_Message(needle);
    Show_NSLog_Message(text_from_utf8_lossy(reason.what()));
    return false;
  }
}

Text Left_Str_substringToIndex(TextView text, std::int32_t n) {
  return Text(text.substr(0, widened(std::max(n, 0))));
}

Text Right_Str_substringFromIndex(TextView text, std::int32_t n) {
  const std::size_t count = widened(std::max(n, 0));
  return Text(count >= text.size() ? text : text.substr(text.size() - count));
}

Text Read_Str_FromIndex(TextView text, std::int32_t i) {
  return widened(i) > text.size() ? Text() : Text(text.substr(widened(i)));
}

Text Read_Str_Upto_Index(TextView text, std::int32_t i) {
  return widened(i) > text.size() ? Text() : Text(text.substr(0, widened(i)));
}

bool is_white_space(char16_t c) {
  return (c >= 0x0009 && c <= 0x000D) || c == 0x0020 || c == 0x0085 || c == 0x00A0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

Text displayable(TextView text) {
  Text shown(text);
  std::replace_if(
      shown.begin(), shown.end(),
      [](char16_t c) {
        const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
        const bool line_break = c == 0x2028 || c == 0x2029;
        const bool direction = c == 0x061C || c == 0x200E || c == 0x200F ||
                               (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
        return control || line_break || direction;
      },
      static_cast<char16_t>(replacement_character));
  return shown;
}

std::optional<Text> text_from_utf8(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = decode_one(bytes);
    if (decoded.length == 0) return std::nullopt;
    append_utf16(text, decoded.code_point);
    bytes.remove_prefix(decoded.length);
  }
  return text;
}

Text text_from_utf8_lossy(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = decode_one(bytes);
    append_utf16(text, decoded.length == 0 ? replacement_character : decoded.code_point);
    bytes.remove_prefix(std::max<std::size_t>(decoded.length, 1));
  }
  return text;
}

std::string utf8_from_text(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
    if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      const char32_t upper = static_cast<char32_t>(unit - 0xD800) << 10U;
      append_utf8(bytes, 0x10000 + upper + static_cast<char32_t>(text[++i] - 0xDC00));
    } else {
      append_utf8(bytes, high || low ? replacement_character : unit);
    }
  }
  return bytes;
}

Text decimal(std::uint64_t value) {
  const std::string digits = std::to_string(value);
  return Text(digits.begin(), digits.end());
}

}  // namespace norvo
