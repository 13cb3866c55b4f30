#include "util/Numbers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>

namespace norvo {
namespace {

using Limits64 = std::numeric_limits<std::int64_t>;
using Limits32 = std::numeric_limits<std::int32_t>;

struct Reading {
  TextView text;
  std::int64_t value;
};

void PrintTo(const Reading& reading, std::ostream* out) {
  *out << utf8_from_text(reading.text);
}

class ForgivingNumber : public testing::TestWithParam<Reading> {};

TEST_P(ForgivingNumber, IsReadAlikeInBothWidths) {
  EXPECT_EQ(integer64_value(GetParam().text), GetParam().value);
  EXPECT_EQ(integer32_value(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Plain, ForgivingNumber,
                         testing::Values(Reading{u"0", 0}, Reading{u"7", 7}, Reading{u"255", 255},
                                         Reading{u"0010", 10}));
INSTANTIATE_TEST_SUITE_P(Signs, ForgivingNumber,
                         testing::Values(Reading{u"-7", -7}, Reading{u"+7", 7}, Reading{u"-0", 0},
                                         Reading{u"--7", 0}, Reading{u"+-7", 0}, Reading{u"- 7", 0},
                                         Reading{u"-", 0}));
INSTANTIATE_TEST_SUITE_P(LeadingWhiteSpace, ForgivingNumber,
                         testing::Values(Reading{u" 12", 12}, Reading{u"\t\r\n\v\f-12", -12},
                                         Reading{u"\u00A0\u3000\u0085+12", 12}));
INSTANTIATE_TEST_SUITE_P(StopsAtAnotherCharacter, ForgivingNumber,
                         testing::Values(Reading{u"12x9", 12}, Reading{u"12 9", 12},
                                         Reading{u"12.9", 12}, Reading{u"12-", 12},
                                         Reading{u"1\u0660", 1}, Reading{u"1/", 1},
                                         Reading{u"1:", 1}));
INSTANTIATE_TEST_SUITE_P(WithoutDigits, ForgivingNumber,
                         testing::Values(Reading{u"", 0}, Reading{u"nn", 0}, Reading{u" ", 0},
                                         Reading{u"_001", 0}, Reading{u"x12", 0}));

TEST(Integer64, ReadsUpToItsLimits) {
  EXPECT_EQ(integer64_value(u"9223372036854775806"), Limits64::max() - 1);
  EXPECT_EQ(integer64_value(u"9223372036854775807"), Limits64::max());
  EXPECT_EQ(integer64_value(u"-9223372036854775807"), Limits64::min() + 1);
  EXPECT_EQ(integer64_value(u"-9223372036854775808"), Limits64::min());
}

TEST(Integer64, SticksAtItsLimits) {
  EXPECT_EQ(integer64_value(u"9223372036854775808"), Limits64::max());
  EXPECT_EQ(integer64_value(u"18446744073709551616"), Limits64::max());
  EXPECT_EQ(integer64_value(u"99999999999999999999999999"), Limits64::max());
  EXPECT_EQ(integer64_value(u"-9223372036854775809"), Limits64::min());
  EXPECT_EQ(integer64_value(u"-99999999999999999999999999"), Limits64::min());
}

TEST(Integer64, HoldsWhatNeedsMoreThan32Bits) {
  EXPECT_EQ(integer64_value(u"4294967296"), 4294967296);
  EXPECT_EQ(integer64_value(u"-4294967296"), -4294967296);
}

TEST(Integer32, ReadsUpToItsLimits) {
  EXPECT_EQ(integer32_value(u"2147483647"), Limits32::max());
  EXPECT_EQ(integer32_value(u"-2147483648"), Limits32::min());
}

TEST(Integer32, SticksAtItsLimits) {
  EXPECT_EQ(integer32_value(u"2147483648"), Limits32::max());
  EXPECT_EQ(integer32_value(u"4294967297"), Limits32::max());
  EXPECT_EQ(integer32_value(u"99999999999999999999999999"), Limits32::max());
  EXPECT_EQ(integer32_value(u"-2147483649"), Limits32::min());
  EXPECT_EQ(integer32_value(u"-99999999999999999999999999"), Limits32::min());
}

}  // namespace
}  // namespace norvo
