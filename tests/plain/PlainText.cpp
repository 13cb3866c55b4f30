#include "PlainText.h"

#include <cmath>
#include <limits>

namespace plain {
namespace {

// Latin Extended-A keeps upper and lower case side by side, but on which parity changes twice.
char16_t upper_latin_extended(char16_t c) {
  const bool upper_is_odd = (c >= 0x0139 && c <= 0x0148) || (c >= 0x0179 && c <= 0x017E);
  const bool has_no_pair = c == 0x0131 || c == 0x0138 || c == 0x0149 || c == 0x017F;
  if (c == 0x0131) {
    return u'I';
  }
  if (c == 0x017F) {
    return u'S';
  }
  if (has_no_pair || c == 0x0130 || c == 0x0178) {
    return c;
  }
  const bool is_lower = upper_is_odd ? c % 2 == 0 : c % 2 == 1;
  return is_lower ? static_cast<char16_t>(c - 1) : c;
}

char16_t upper_greek(char16_t c) {
  switch (c) {
    case 0x03AC:
      return 0x0386;
    case 0x03AD:
    case 0x03AE:
    case 0x03AF:
      return static_cast<char16_t>(c - 0x25);
    case 0x03C2:
      return 0x03A3;
    case 0x03CC:
      return 0x038C;
    case 0x03CD:
    case 0x03CE:
      return static_cast<char16_t>(c - 0x3F);
    default:
      return (c >= 0x03B1 && c <= 0x03CB) ? static_cast<char16_t>(c - 0x20) : c;
  }
}

char16_t upper_character(char16_t c) {
  if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) {
    return static_cast<char16_t>(c - 0x20);
  }
  if (c == 0xB5) {
    return 0x039C;
  }
  if (c == 0xFF) {
    return 0x0178;
  }
  if (c >= 0x0100 && c <= 0x017F) {
    return upper_latin_extended(c);
  }
  if (c >= 0x0370 && c <= 0x03FF) {
    return upper_greek(c);
  }
  if (c >= 0x0430 && c <= 0x044F) {
    return static_cast<char16_t>(c - 0x20);
  }
  if (c >= 0x0450 && c <= 0x045F) {
    return static_cast<char16_t>(c - 0x50);
  }
  return c;
}

// The value of one digit added to `value`, held at `limit`.
std::uint64_t add_digit(std::uint64_t value, unsigned digit, std::uint64_t limit) {
  if (value > (limit - digit) / 10) {
    return limit;
  }
  return value * 10 + digit;
}

// How many bytes follow a leading byte, or nothing when no character begins with it.
std::optional<int> continuation_count(unsigned lead) {
  if (lead < 0x80) {
    return 0;
  }
  if (lead >= 0xC2 && lead <= 0xDF) {
    return 1;
  }
  if (lead >= 0xE0 && lead <= 0xEF) {
    return 2;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    return 3;
  }
  return std::nullopt;
}

bool is_scalar_of_length(char32_t code, int continuations) {
  if (continuations == 2) {
    return code >= 0x800 && !(code >= 0xD800 && code <= 0xDFFF);
  }
  if (continuations == 3) {
    return code >= 0x10000 && code <= 0x10FFFF;
  }
  return true;
}

void append_utf16(Text& text, char32_t code) {
  if (code < 0x10000) {
    text.push_back(static_cast<char16_t>(code));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
}

void append_utf8(std::string& out, char32_t code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
    return;
  }
  if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
  } else {
    if (code < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (code >> 18)));
      out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    }
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
  }
  out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
}

}  // namespace

bool is_space(char16_t c) {
  return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

Text Trim_Str(const Text& text) {
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (begin < end && is_space(text[begin])) {
    ++begin;
  }
  while (end > begin && is_space(text[end - 1])) {
    --end;
  }
  return text.substr(begin, end - begin);
}

bool Find_Str(const Text& text, const Text& needle) {
  return !needle.empty() && text.find(needle) != Text::npos;
}

Text Left_Str_substringToIndex(const Text& text, std::int32_t n) {
  const std::size_t count = n < 0 ? 0 : static_cast<std::size_t>(n);
  return count < text.size() ? text.substr(0, count) : text;
}

Text Right_Str_substringFromIndex(const Text& text, std::int32_t n) {
  const std::size_t count = n < 0 ? 0 : static_cast<std::size_t>(n);
  return count >= text.size() ? text : text.substr(text.size() - count);
}

Text upper_case(const Text& text) {
  Text result;
  for (const char16_t c : text) {
    if (c == 0xDF) {
      result += u"SS";
    } else {
      result.push_back(upper_character(c));
    }
  }
  return result;
}

std::int64_t to_integer_64(const Text& text) {
  std::size_t i = 0;
  while (i < text.size() && is_space(text[i])) {
    ++i;
  }
  bool negative = false;
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
    negative = text[i] == u'-';
    ++i;
  }
  const auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const std::uint64_t limit = negative ? largest + 1 : largest;
  std::uint64_t value = 0;
  for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
    value = add_digit(value, static_cast<unsigned>(text[i] - u'0'), limit);
  }
  return static_cast<std::int64_t>(negative ? 0 - value : value);
}

std::int32_t to_integer_32(const Text& text) {
  const std::int64_t value = to_integer_64(text);
  if (value > std::numeric_limits<std::int32_t>::max()) {
    return std::numeric_limits<std::int32_t>::max();
  }
  if (value < std::numeric_limits<std::int32_t>::min()) {
    return std::numeric_limits<std::int32_t>::min();
  }
  return static_cast<std::int32_t>(value);
}

int hex2dec(const Text& text) {
  const unsigned low = text.at(0) & 0xFFU;
  if (low >= '1' && low <= '9') {
    return static_cast<int>(low - '0');
  }
  if (low >= 'A' && low <= 'F') {
    return static_cast<int>(low - 'A') + 10;
  }
  if (low >= 'a' && low <= 'f') {
    return static_cast<int>(low - 'a') + 10;
  }
  return 0;
}

std::uint32_t hex2int(const Text& text) {
  std::uint32_t sum = 0;
  const std::size_t n = text.size();
  for (std::size_t i = n; i-- > 0;) {
    // 16 to the 16th and beyond does not fit 64 bits, and would leave nothing in 32.
    if (n - 1 - i >= 16) {
      break;
    }
    const auto power = static_cast<std::uint64_t>(std::pow(16.0, static_cast<double>(n - 1 - i)));
    const auto digit = static_cast<std::uint64_t>(hex2dec(text.substr(i, 1)));
    sum += static_cast<std::uint32_t>(digit * power);
  }
  return sum;
}

std::optional<Text> from_utf8(const std::string& utf8) {
  Text text;
  for (std::size_t i = 0; i < utf8.size();) {
    const unsigned lead = static_cast<unsigned char>(utf8[i]);
    const std::optional<int> more = continuation_count(lead);
    if (!more || i + static_cast<std::size_t>(*more) >= utf8.size()) {
      return std::nullopt;
    }
    char32_t code = *more == 0 ? lead : lead & (0x3FU >> *more);
    for (int k = 0; k < *more; ++k) {
      const unsigned next = static_cast<unsigned char>(utf8[++i]);
      if ((next & 0xC0U) != 0x80U) {
        return std::nullopt;
      }
      code = (code << 6) | (next & 0x3FU);
    }
    ++i;
    if (!is_scalar_of_length(code, *more)) {
      return std::nullopt;
    }
    append_utf16(text, code);
  }
  return text;
}

std::string to_utf8(const Text& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    const bool is_high = code >= 0xD800 && code <= 0xDBFF;
    if (is_high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
    }
    append_utf8(out, code);
  }
  return out;
}

}  // namespace plain
