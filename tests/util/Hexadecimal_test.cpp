#include "util/Hexadecimal.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace norvo {
namespace {

TEST(Hex2dec, MapsTheDigitsInBothCases) {
  const TextView upper = u"0123456789ABCDEF";
  const TextView lower = u"0123456789abcdef";
  for (std::size_t i = 0; i < upper.size(); ++i) {
    EXPECT_EQ(hex2dec(upper.substr(i, 1)), static_cast<std::int32_t>(i));
    EXPECT_EQ(hex2dec(lower.substr(i, 1)), static_cast<std::int32_t>(i));
  }
}

TEST(Hex2dec, CountsEveryOtherCharacterAsZero) {
  for (const TextView other : {u"Z", u"G", u"g", u"@", u"`", u"/", u":", u" ", u"-", u"x"}) {
    EXPECT_EQ(hex2dec(other), 0) << utf8_from_text(other);
  }
  EXPECT_EQ(hex2dec(TextView(u"\0", 1)), 0);
  EXPECT_EQ(hex2dec(u"\u00FF"), 0);
}

TEST(Hex2dec, LooksAtTheFirstCharacterOnly) {
  EXPECT_EQ(hex2dec(u"A9"), 10);
  EXPECT_EQ(hex2dec(u"ZF"), 0);
}

TEST(Hex2dec, TakesTheLowEightBitsOfACharacter) {
  EXPECT_EQ(hex2dec(u"\u0146"), 15);  // 46 is the code of F
  EXPECT_EQ(hex2dec(u"\u0439"), 9);   // 39 is the code of 9
  EXPECT_EQ(hex2dec(u"\u5061"), 10);  // 61 is the code of a
  EXPECT_EQ(hex2dec(u"\u0147"), 0);
}

TEST(Hex2int, ReadsTheDigitsAsOneNumber) {
  EXPECT_EQ(hex2int(u"FF"), 255U);
  EXPECT_EQ(hex2int(u"ff"), 255U);
  EXPECT_EQ(hex2int(u"1"), 1U);
  EXPECT_EQ(hex2int(u"1234"), 0x1234U);
  EXPECT_EQ(hex2int(u"DEADBEEF"), 0xDEADBEEFU);
  EXPECT_EQ(hex2int(u"FFFFFFFF"), 4294967295U);
}

TEST(Hex2int, IsZeroForAnEmptyText) {
  EXPECT_EQ(hex2int(u""), 0U);
}

TEST(Hex2int, CountsABadDigitAsZeroInItsPlace) {
  EXPECT_EQ(hex2int(u"G1"), 1U);
  EXPECT_EQ(hex2int(u"1G"), 16U);
  EXPECT_EQ(hex2int(u"F F"), 0xF0FU);
}

TEST(Hex2int, KnowsNoPrefix) {
  EXPECT_EQ(hex2int(u"0x1F"), 31U);
  EXPECT_EQ(hex2int(u"1x1F"), 0x101FU);
}

TEST(Hex2int, WrapsBeyondEightDigits) {
  EXPECT_EQ(hex2int(u"100000000"), 0U);
  EXPECT_EQ(hex2int(u"123456789"), 0x23456789U);
  EXPECT_EQ(hex2int(u"FFFFFFFFFFFFFFFF"), 0xFFFFFFFFU);
}

}  // namespace
}  // namespace norvo
