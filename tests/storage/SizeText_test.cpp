// getMPSize: the texts of sizes, to the last blank.
#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "storage/DriveList.h"

namespace norvo {
namespace {

TEST(SizeText, SmallSizesAreBytesAfterOneBlank) {
  EXPECT_EQ(getMPSize(u"0"), u"0.00 bytes ");
  EXPECT_EQ(getMPSize(u"500"), u"500.00 bytes ");
  EXPECT_EQ(getMPSize(u"1000"), u"1000.00 bytes ");
}

TEST(SizeText, LargerUnitsStandAfterTwoBlanks) {
  EXPECT_EQ(getMPSize(u"1536"), u"1.50  KB ");
  EXPECT_EQ(getMPSize(u"1572864"), u"1.50  MB ");
  EXPECT_EQ(getMPSize(u"16008609792"), u"14.91  GB ");
  EXPECT_EQ(getMPSize(u"1649267441664"), u"1.50  TB ");
}

TEST(SizeText, AUnitBeginsAboveAThousandAndTwentyFour) {
  EXPECT_EQ(getMPSize(u"1024"), u"1024.00 bytes ");
  EXPECT_EQ(getMPSize(u"1025"), u"1.00  KB ");
  EXPECT_EQ(getMPSize(u"1048576"), u"1024.00  KB ");
  EXPECT_EQ(getMPSize(u"1048577"), u"1.00  MB ");
  EXPECT_EQ(getMPSize(u"1073741824"), u"1024.00  MB ");
  EXPECT_EQ(getMPSize(u"1073741952"), u"1.00  GB ");
  EXPECT_EQ(getMPSize(u"1099511627776"), u"1024.00  GB ");
  EXPECT_EQ(getMPSize(u"1099511758848"), u"1.00  TB ");
}

TEST(SizeText, NothingIsLargerThanTerabytes) {
  EXPECT_EQ(getMPSize(u"1125899906842624"), u"1024.00  TB ");
  EXPECT_EQ(getMPSize(u"11258999068426240"), u"10240.00  TB ");
  EXPECT_EQ(getMPSize(u"18446744073709551615"), u"16777216.00  TB ");
}

// One byte above 1 GiB is 1 GiB in single precision, and so no gigabyte yet.
TEST(SizeText, SizesAreRoundedToSinglePrecisionBeforeTheyAreDivided) {
  EXPECT_EQ(getMPSize(u"1073741825"), u"1024.00  MB ");
  EXPECT_EQ(getMPSize(u"1073741887"), u"1024.00  MB ");
  EXPECT_EQ(getMPSize(u"1099511627777"), u"1024.00  GB ");
  // 1073736581.12 bytes would be 1023.995 MB; the nearest float is 1073736576, below it.
  EXPECT_EQ(getMPSize(u"1073736582"), u"1023.99  MB ");
}

TEST(SizeText, ANumberEndsBeforeTheFirstOtherCharacter) {
  EXPECT_EQ(getMPSize(u""), u"0.00 bytes ");
  EXPECT_EQ(getMPSize(u"x1"), u"0.00 bytes ");
  EXPECT_EQ(getMPSize(u"nan"), u"0.00 bytes ");
  EXPECT_EQ(getMPSize(u"0x10"), u"0.00 bytes ");
  EXPECT_EQ(getMPSize(u"12\u0663"), u"12.00 bytes ");
}

class DecimalComma final : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(SizeText, HasAPointAndNoGroupsWhateverTheLocale) {
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
  const Text text = getMPSize(u"1099511627776");
  std::locale::global(before);
  EXPECT_EQ(text, u"1024.00  GB ");
}

}  // namespace
}  // namespace norvo
