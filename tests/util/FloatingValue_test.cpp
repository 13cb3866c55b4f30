// Numbers with a decimal point and an exponent, read the forgiving way.
#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "util/Numbers.h"

namespace norvo {
namespace {

struct FloatingReading {
  TextView text;
  double value;
};

void PrintTo(const FloatingReading& reading, std::ostream* out) {
  *out << '"' << utf8_from_text(reading.text) << '"';
}

constexpr double infinity = std::numeric_limits<double>::infinity();

class FloatingNumber : public testing::TestWithParam<FloatingReading> {};

TEST_P(FloatingNumber, IsRead) {
  EXPECT_EQ(floating_value(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Plain, FloatingNumber,
                         testing::Values(FloatingReading{u"0", 0}, FloatingReading{u"1000", 1000},
                                         FloatingReading{u"0100", 100},
                                         FloatingReading{u"12.5", 12.5},
                                         FloatingReading{u".5", 0.5}, FloatingReading{u"5.", 5},
                                         FloatingReading{u"1e3", 1000},
                                         FloatingReading{u"25E-1", 2.5}));
INSTANTIATE_TEST_SUITE_P(SignsAndWhiteSpace, FloatingNumber,
                         testing::Values(FloatingReading{u"-7", -7}, FloatingReading{u"+7", 7},
                                         FloatingReading{u"--7", 0}, FloatingReading{u"+-7", 0},
                                         FloatingReading{u"- 7", 0}, FloatingReading{u" \t7", 7},
                                         FloatingReading{u"\u00A0-7.5", -7.5}));
INSTANTIATE_TEST_SUITE_P(StopsAtAnotherCharacter, FloatingNumber,
                         testing::Values(FloatingReading{u"12 sectors", 12},
                                         FloatingReading{u"12x", 12}, FloatingReading{u"1,5", 1},
                                         FloatingReading{u"1.2.3", 1.2},
                                         FloatingReading{u"12e", 12}, FloatingReading{u"12e+", 12},
                                         FloatingReading{u"1e+2.5", 100},
                                         FloatingReading{u"0x10", 0},
                                         FloatingReading{u"1\u0660", 1}));
INSTANTIATE_TEST_SUITE_P(WithoutANumber, FloatingNumber,
                         testing::Values(FloatingReading{u"", 0}, FloatingReading{u" ", 0},
                                         FloatingReading{u"abc", 0}, FloatingReading{u".", 0},
                                         FloatingReading{u"-", 0}, FloatingReading{u"-.", 0},
                                         FloatingReading{u"e5", 0}, FloatingReading{u"inf", 0},
                                         FloatingReading{u"-inf", 0}, FloatingReading{u"nan", 0},
                                         FloatingReading{u"\u0665", 0},
                                         FloatingReading{u"<None>", 0}));
INSTANTIATE_TEST_SUITE_P(
    Huge, FloatingNumber,
    testing::Values(FloatingReading{u"9007199254740993", 9007199254740992.0},
                    FloatingReading{u"18446744073709551615", 18446744073709551616.0},
                    FloatingReading{u"1e308", 1e308}, FloatingReading{u"1e309", infinity},
                    FloatingReading{u"-1e999", -infinity}));

TEST(FloatingNumber, OfManyDigitsIsInfinite) {
  EXPECT_EQ(floating_value(Text(400, u'9')), infinity);
}

TEST(FloatingNumber, TooSmallToBeTakenIsNothing) {
  EXPECT_EQ(floating_value(u"1e-999"), 0);
}

}  // namespace
}  // namespace norvo
