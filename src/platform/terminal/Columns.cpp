#include "platform/terminal/Columns.h"

#include <algorithm>
#include <array>

namespace norvo {
namespace {

// Both ends included.
struct Range {
  char32_t first;
  char32_t last;
};

// Marks of the Latin, Cyrillic, Hebrew, Arabic, Thai and Japanese scripts, joiners and selectors.
constexpr std::array<Range, 18> marks{{
    {0x0300, 0x036F},
    {0x0483, 0x0489},
    {0x0591, 0x05BD},
    {0x0610, 0x061A},
    {0x064B, 0x065F},
    {0x0E31, 0x0E31},
    {0x0E34, 0x0E3A},
    {0x0E47, 0x0E4E},
    {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF},
    {0x200B, 0x200F},
    {0x20D0, 0x20FF},
    {0x302A, 0x302D},
    {0x3099, 0x309A},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF},
    {0xE0100, 0xE01EF},
}};

constexpr std::array<Range, 17> wide{{
    {0x1100, 0x115F},  // Hangul that begins a syllable
    {0x2E80, 0x303E},
    {0x3041, 0x4DBF},
    {0x4E00, 0xA4CF},
    {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},
    {0xFE10, 0xFE19},
    {0xFE30, 0xFE6F},
    {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},
    {0x16FE0, 0x18D08},
    {0x1AFF0, 0x1B2FB},
    {0x1F200, 0x1F64F},
    {0x1F680, 0x1F6FF},
    {0x1F900, 0x1FAFF},
    {0x20000, 0x3FFFD},
}};

template <std::size_t Count>
bool holds(const std::array<Range, Count>& ranges, char32_t character) {
  return std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
    return range.first <= character && character <= range.last;
  });
}

// A half of a pair that stands alone is shown as a replacement character.
char32_t take_character(TextView& text) {
  const char32_t first = text.front();
  text.remove_prefix(1);
  const bool is_pair = first >= 0xD800 && first <= 0xDBFF && !text.empty() &&
                       text.front() >= 0xDC00 && text.front() <= 0xDFFF;
  if (!is_pair) return first;
  const char32_t second = text.front();
  text.remove_prefix(1);
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

std::string blanks(TextView text, std::size_t width) {
  const std::size_t taken = display_columns(text);
  return std::string(taken < width ? width - taken : 0, ' ');
}

}  // namespace

std::size_t display_columns(TextView text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    const char32_t character = take_character(text);
    if (holds(marks, character)) continue;
    columns += holds(wide, character) ? 2U : 1U;
  }
  return columns;
}

std::string filled_behind(TextView text, std::size_t width) {
  return utf8_from_text(text) + blanks(text, width);
}

std::string filled_in_front(TextView text, std::size_t width) {
  return blanks(text, width) + utf8_from_text(text);
}

}  // namespace norvo
