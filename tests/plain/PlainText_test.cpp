#include "PlainText.h"

#include <gtest/gtest.h>

#include <limits>

namespace plain {
namespace {

TEST(PlainHexadecimal, CountsABadDigitAsZeroAndWrapsAt32Bits) {
  EXPECT_EQ(hex2int(u"FF"), 255U);
  EXPECT_EQ(hex2int(u"ff"), 255U);
  EXPECT_EQ(hex2int(u"G1"), 1U);
  EXPECT_EQ(hex2int(u""), 0U);
  EXPECT_EQ(hex2int(u"FFFFFFFF"), 4294967295U);
  EXPECT_EQ(hex2int(u"100000000"), 0U);
  EXPECT_EQ(hex2int(u"0x1F"), 31U);
  EXPECT_EQ(hex2int(u"1000000000000000000012"), 0x12U);
}

TEST(PlainHexadecimal, TakesTheLowByteOfACharacter) {
  EXPECT_EQ(hex2dec(u"0"), 0);
  EXPECT_EQ(hex2dec(u"Z"), 0);
  EXPECT_EQ(hex2dec(u"\u0146"), 15);  // low byte 46 is the code of F
  EXPECT_EQ(hex2dec(u"A9"), 10);
}

TEST(PlainNumbers, StopAtTheFirstOtherCharacterAndStickAtTheLimits) {
  EXPECT_EQ(to_integer_64(u" \t+12x9"), 12);
  EXPECT_EQ(to_integer_64(u"-7"), -7);
  EXPECT_EQ(to_integer_64(u"--7"), 0);
  EXPECT_EQ(to_integer_64(u""), 0);
  EXPECT_EQ(to_integer_64(u"nn"), 0);
  EXPECT_EQ(to_integer_64(u"9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(to_integer_64(u"9223372036854775808"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(to_integer_64(u"-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(to_integer_64(u"-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(to_integer_32(u"2147483648"), 2147483647);
  EXPECT_EQ(to_integer_32(u"-2147483649"), -2147483647 - 1);
}

TEST(PlainTexts, AreTrimmedAndSearched) {
  EXPECT_EQ(Trim_Str(u"\u00A0\u3000\t a b\r\n\u0085\u2028"), u"a b");
  EXPECT_EQ(Trim_Str(u"\uFEFFa"), u"\uFEFFa");
  EXPECT_EQ(Trim_Str(u" \t "), u"");
  EXPECT_FALSE(Find_Str(u"ABC", u""));
  EXPECT_FALSE(Find_Str(u"", u"A"));
  EXPECT_TRUE(Find_Str(u"ABC", u"BC"));
  EXPECT_FALSE(Find_Str(u"ABC", u"bc"));
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 2), u"DE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 9), u"ABCDE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 0), u"");
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", -1), u"");
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", 3), u"ABC");
}

TEST(PlainTexts, BecomeUpperCaseBeyondAscii) {
  EXPECT_EQ(upper_case(u"az09ä÷ÿßžō"), u"AZ09Ä÷ŸSSŽŌ");
  EXPECT_EQ(upper_case(u"ąıĺňάςцё"), u"ĄIĹŇΆΣЦЁ");
}

TEST(PlainUtf8, IsReadStrictly) {
  EXPECT_EQ(from_utf8("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), u"aä€\U0001F600");
  EXPECT_EQ(from_utf8(std::string("\0b", 2)), Text(u"\0b", 2));
  for (const char* bad : {"\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xC3(", "\xFF"}) {
    EXPECT_FALSE(from_utf8(bad)) << bad;
  }
  EXPECT_EQ(to_utf8(u"aä€\U0001F600"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace plain
