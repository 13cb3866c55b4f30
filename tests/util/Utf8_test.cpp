#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "util/Text.h"

namespace norvo {
namespace {

using namespace std::string_view_literals;

struct ValidText {
  std::string_view bytes;
  TextView text;
};

void PrintTo(const ValidText& valid, std::ostream* out) {
  *out << testing::PrintToString(std::string(valid.bytes));
}

class ValidUtf8 : public testing::TestWithParam<ValidText> {};

TEST_P(ValidUtf8, GoesToATextAndBack) {
  EXPECT_EQ(text_from_utf8(GetParam().bytes), Text(GetParam().text));
  EXPECT_EQ(text_from_utf8_lossy(GetParam().bytes), GetParam().text);
  EXPECT_EQ(utf8_from_text(GetParam().text), GetParam().bytes);
}

// The first and the last code point of every length, and those beside the surrogates.
INSTANTIATE_TEST_SUITE_P(
    Each, ValidUtf8,
    testing::Values(
        ValidText{""sv, u""sv}, ValidText{"\0"sv, u"\0"sv}, ValidText{"a\0b"sv, u"a\0b"sv},
        ValidText{"\x7F"sv, u"\u007F"sv}, ValidText{"\xC2\x80"sv, u"\u0080"sv},
        ValidText{"\xDF\xBF"sv, u"\u07FF"sv}, ValidText{"\xE0\xA0\x80"sv, u"\u0800"sv},
        ValidText{"\xED\x9F\xBF"sv, u"\uD7FF"sv}, ValidText{"\xEE\x80\x80"sv, u"\uE000"sv},
        ValidText{"\xEF\xBF\xBD"sv, u"\uFFFD"sv}, ValidText{"\xEF\xBF\xBF"sv, u"\uFFFF"sv},
        ValidText{"\xF0\x90\x80\x80"sv, u"\U00010000"sv},
        ValidText{"\xF0\x9F\x98\x80"sv, u"\U0001F600"sv},
        ValidText{"\xF4\x8F\xBF\xBF"sv, u"\U0010FFFF"sv},
        ValidText{"a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z"sv, u"a\u00E4\u20AC\U0001F600z"sv}));

TEST(Utf8, EveryCodePointGoesToATextAndBack) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) c = 0xE000;
    Text text;
    if (c < 0x10000) {
      text = Text(1, static_cast<char16_t>(c));
    } else {
      text = Text{static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10U)),
                  static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FFU))};
    }
    const std::string bytes = utf8_from_text(text);
    const std::size_t length = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    ASSERT_EQ(bytes.size(), length) << static_cast<std::uint32_t>(c);
    ASSERT_EQ(text_from_utf8(bytes), text) << static_cast<std::uint32_t>(c);
  }
}

TEST(Utf8, AByteOrderMarkIsAnOrdinaryCharacter) {
  EXPECT_EQ(text_from_utf8("\xEF\xBB\xBF"
                           "a"),
            Text(u"\uFEFFa"));
  EXPECT_EQ(utf8_from_text(u"\uFEFFa"),
            "\xEF\xBB\xBF"
            "a");
}

struct InvalidBytes {
  const char* what;
  std::string_view bytes;
  std::size_t replacements;  // each invalid byte becomes one U+FFFD
};

void PrintTo(const InvalidBytes& invalid, std::ostream* out) {
  *out << invalid.what;
}

class InvalidUtf8 : public testing::TestWithParam<InvalidBytes> {};

TEST_P(InvalidUtf8, IsRefusedWhereverItStands) {
  const std::string bytes(GetParam().bytes);
  EXPECT_EQ(text_from_utf8(bytes), std::nullopt) << GetParam().what;
  EXPECT_EQ(text_from_utf8("abc" + bytes), std::nullopt) << GetParam().what;
  EXPECT_EQ(text_from_utf8(bytes + "abc"), std::nullopt) << GetParam().what;
}

TEST_P(InvalidUtf8, ShowsAReplacementForEachByte) {
  const Text shown = text_from_utf8_lossy("a" + std::string(GetParam().bytes) + "z");
  EXPECT_EQ(shown, u"a" + Text(GetParam().replacements, u'\uFFFD') + u"z") << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Each, InvalidUtf8,
    testing::Values(InvalidBytes{"a continuation alone", "\x80"sv, 1},
                    InvalidBytes{"the last continuation alone", "\xBF"sv, 1},
                    InvalidBytes{"two bytes for U+0000", "\xC0\x80"sv, 2},
                    InvalidBytes{"two bytes for U+007F", "\xC1\xBF"sv, 2},
                    InvalidBytes{"three bytes for U+07FF", "\xE0\x9F\xBF"sv, 3},
                    InvalidBytes{"three bytes for U+0000", "\xE0\x80\x80"sv, 3},
                    InvalidBytes{"four bytes for U+FFFF", "\xF0\x8F\xBF\xBF"sv, 4},
                    InvalidBytes{"the first surrogate", "\xED\xA0\x80"sv, 3},
                    InvalidBytes{"the last surrogate", "\xED\xBF\xBF"sv, 3},
                    InvalidBytes{"a pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80"sv, 6},
                    InvalidBytes{"U+110000", "\xF4\x90\x80\x80"sv, 4},
                    InvalidBytes{"U+1FFFFF", "\xF7\xBF\xBF\xBF"sv, 4},
                    InvalidBytes{"five bytes", "\xF8\x88\x80\x80\x80"sv, 5},
                    InvalidBytes{"six bytes", "\xFC\x84\x80\x80\x80\x80"sv, 6},
                    InvalidBytes{"FE", "\xFE"sv, 1}, InvalidBytes{"FF", "\xFF"sv, 1},
                    InvalidBytes{"one of two bytes", "\xC3"sv, 1},
                    InvalidBytes{"one of three bytes", "\xE2"sv, 1},
                    InvalidBytes{"two of three bytes", "\xE2\x82"sv, 2},
                    InvalidBytes{"one of four bytes", "\xF0"sv, 1},
                    InvalidBytes{"two of four bytes", "\xF0\x9F"sv, 2},
                    InvalidBytes{"three of four bytes", "\xF0\x9F\x98"sv, 3}));

TEST(Utf8, AnInvalidByteDoesNotTakeItsNeighboursAlong) {
  EXPECT_EQ(text_from_utf8("\xC3("), std::nullopt);
  EXPECT_EQ(text_from_utf8_lossy("\xC3("), u"\uFFFD(");
  EXPECT_EQ(text_from_utf8_lossy("\xE2\xC3\xA4"), u"\uFFFD\u00E4");
}

TEST(Utf8, AnUnpairedSurrogateIsWrittenAsAReplacement) {
  const Text high(1, char16_t{0xD83D});
  const Text low(1, char16_t{0xDE00});
  EXPECT_EQ(utf8_from_text(high), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8_from_text(low), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8_from_text(high + u"a"),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(utf8_from_text(low + high), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(utf8_from_text(high + high + low), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace norvo
