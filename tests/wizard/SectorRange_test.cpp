#include "wizard/SectorRange.h"

#include <gtest/gtest.h>

#include <optional>

namespace norvo {
namespace {

using Field = SectorRangeFault::Field;
using Fault = std::optional<SectorRangeFault>;

const Fault invalid_start =
    SectorRangeFault{u"Please enter valid Start Sector value.", Field::start};
const Fault invalid_end = SectorRangeFault{u"Please enter valid End Sector value.", Field::end};
const Fault wrong_order =
    SectorRangeFault{u"End Sector should be greater than Start Sector.", Field::end};

TEST(CheckForValidSec, AcceptsDigitsOnly) {
  EXPECT_TRUE(Check_For_Valid_Sec(u"0123456789"));
  for (const TextView other : {u" 5", u"5 ", u"-5", u"+5", u"5a", u"5.0", u"1/2", u"1:2"}) {
    EXPECT_FALSE(Check_For_Valid_Sec(other)) << utf8_from_text(other);
  }
  EXPECT_FALSE(Check_For_Valid_Sec(u"\u0660"));  // a digit of another script
  EXPECT_FALSE(Check_For_Valid_Sec(u"\uFF15"));
}

TEST(CheckForValidSec, AcceptsAnEmptyText) {
  EXPECT_TRUE(Check_For_Valid_Sec(u""));
}

TEST(SectorRange, FromZeroToTheSectorCountIsAccepted) {
  EXPECT_EQ(check_sector_range(u"0", u"1000", u"1000"), std::nullopt);
}

TEST(SectorRange, OfOneSectorIsAccepted) {
  EXPECT_EQ(check_sector_range(u"999", u"1000", u"1000"), std::nullopt);
  EXPECT_EQ(check_sector_range(u"0", u"1", u"1000"), std::nullopt);
}

class BadText : public testing::TestWithParam<TextView> {};

TEST_P(BadText, IsRefusedWithTheMessageOfItsField) {
  EXPECT_EQ(check_sector_range(GetParam(), u"1000", u"1000"), invalid_start);
  EXPECT_EQ(check_sector_range(u"0", GetParam(), u"1000"), invalid_end);
}

INSTANTIATE_TEST_SUITE_P(Each, BadText,
                         testing::Values(u"", u" 5", u"5 ", u"-5", u"+5", u"abc", u"5a", u"1e2",
                                         u"0x5", u"5.0", u" ", u"1001", u"9999", u"00001",
                                         u"\u0665"));

TEST(SectorRange, TheStartIsCheckedBeforeTheEnd) {
  EXPECT_EQ(check_sector_range(u"x", u"y", u"1000"), invalid_start);
  EXPECT_EQ(check_sector_range(u"9999", u"", u"1000"), invalid_start);
}

TEST(SectorRange, AnEndThatIsNotGreaterThanTheStartIsRefused) {
  EXPECT_EQ(check_sector_range(u"5", u"5", u"1000"), wrong_order);
  EXPECT_EQ(check_sector_range(u"6", u"5", u"1000"), wrong_order);
  EXPECT_EQ(check_sector_range(u"0", u"0", u"1000"), wrong_order);
  EXPECT_EQ(check_sector_range(u"1000", u"1000", u"1000"), wrong_order);
}

TEST(SectorRange, TextsAreComparedAsNumbers) {
  EXPECT_EQ(check_sector_range(u"9", u"10", u"1000"), std::nullopt);
  EXPECT_EQ(check_sector_range(u"10", u"9", u"1000"), wrong_order);
  EXPECT_EQ(check_sector_range(u"0010", u"10", u"1000"), wrong_order);
}

TEST(SectorRange, LeadingZerosCountForTheLength) {
  EXPECT_EQ(check_sector_range(u"0100", u"500", u"1000"), std::nullopt);
  EXPECT_EQ(check_sector_range(u"0100", u"500", u"999"), invalid_start);
  EXPECT_EQ(check_sector_range(u"100", u"0500", u"999"), invalid_end);
}

TEST(SectorRange, AnEndBeyondTheSectorCountIsRefused) {
  EXPECT_EQ(check_sector_range(u"0", u"1001", u"1000"), invalid_end);
  EXPECT_EQ(check_sector_range(u"0", u"1000", u"1000"), std::nullopt);
}

TEST(SectorRange, AStartAtTheSectorCountPassesItsOwnCheck) {
  EXPECT_EQ(check_sector_range(u"1001", u"1000", u"1000"), invalid_start);
  EXPECT_EQ(check_sector_range(u"1000", u"999", u"1000"), wrong_order);
}

TEST(SectorRange, ReachesBeyond32Bits) {
  EXPECT_EQ(check_sector_range(u"4294967296", u"34359738368", u"34359738368"), std::nullopt);
  EXPECT_EQ(check_sector_range(u"4294967296", u"4294967295", u"34359738368"), wrong_order);
  EXPECT_EQ(check_sector_range(u"0", u"34359738369", u"34359738368"), invalid_end);
}

// Beyond 2 to the 53rd a number has neighbours that are the same as a floating-point number.
TEST(SectorRange, TheSectorCountIsComparedAsAFloatingPointNumber) {
  EXPECT_EQ(check_sector_range(u"0", u"9007199254740993", u"9007199254740992"), std::nullopt);
  EXPECT_EQ(check_sector_range(u"0", u"9007199254740994", u"9007199254740992"), invalid_end);
}

TEST(SectorRange, NothingCanBeSearchedOnADriveWithoutSectors) {
  EXPECT_EQ(check_sector_range(u"0", u"0", u"0"), wrong_order);
  EXPECT_EQ(check_sector_range(u"0", u"1", u"0"), invalid_end);
  EXPECT_EQ(check_sector_range(u"1", u"1", u"0"), invalid_start);
}

}  // namespace
}  // namespace norvo
