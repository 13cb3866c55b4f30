// The compiled table says of every sector what trying record after record would say.
#include "engine/HeaderMatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "support/TableBuilder.h"

namespace norvo::test {
namespace {

using Sector = std::array<std::byte, sector_size>;

// A sector of `filler` with `bytes` from byte `at` on.
Sector sector_with(std::size_t at, const std::vector<unsigned>& bytes, unsigned filler = 0xEE) {
  Sector sector;
  sector.fill(static_cast<std::byte>(filler));
  for (std::size_t i = 0; i < bytes.size(); ++i) sector.at(at + i) = std::byte(bytes[i]);
  return sector;
}

bool matches(const TypeRow& row, const Sector& sector,
             EmptyHeader empty_header = EmptyHeader::matches_gate_byte) {
  const SignatureTable table = table_of({row});
  const HeaderMatcher matcher(table, empty_header);
  const bool found = matcher.match(sector.data()) == 0;
  // What is dismissed at a glance is no match, whatever match() would say.
  if (found) {
    EXPECT_EQ(matcher.find_candidate(sector.data(), 1), 0U);
  }
  return found;
}

TypeRow type(const Text& header, const Text& position) {
  return {u"TYP", u"0", header, position};
}

TEST(HeaderMatcher, AHeaderForTheStartIsFoundThereOnly) {
  EXPECT_TRUE(matches(type(u"414243", u"1"), sector_with(0, {0x41, 0x42, 0x43})));
  EXPECT_FALSE(matches(type(u"414243", u"1"), sector_with(1, {0x41, 0x42, 0x43})));
  EXPECT_FALSE(matches(type(u"414243", u"1"), sector_with(0, {0x41, 0x42, 0x44})));
}

TEST(HeaderMatcher, AnyOtherTextThanOneAndTwoSmallNsIsANumber) {
  const Sector at_start = sector_with(0, {0x41, 0x42});
  EXPECT_TRUE(matches(type(u"4142", u"01"), at_start));
  EXPECT_TRUE(matches(type(u"4142", u" 1"), at_start));
  EXPECT_TRUE(matches(type(u"4142", u"+1x"), at_start));
  EXPECT_FALSE(matches(type(u"4142", u""), at_start));
  EXPECT_FALSE(matches(type(u"4142", u"nnn"), at_start));
  EXPECT_FALSE(matches(type(u"4142", u"Nn"), at_start));
  EXPECT_FALSE(matches(type(u"4142", u"0"), at_start));
  EXPECT_FALSE(matches(type(u"4142", u"-1"), at_start));
}

TEST(HeaderMatcher, ANumericPositionIsTriedUpToByte506) {
  EXPECT_TRUE(matches(type(u"41", u"507"), sector_with(506, {0x41})));
  for (const unsigned position : {508U, 509U, 511U, 512U}) {
    const std::string text = std::to_string(position);
    EXPECT_FALSE(
        matches(type(u"41", Text(text.begin(), text.end())), sector_with(position - 1, {0x41})));
  }
  EXPECT_FALSE(matches(type(u"EE", u"513"), sector_with(0, {})));
  EXPECT_FALSE(matches(type(u"EE", u"99999999999"), sector_with(0, {})));
}

TEST(HeaderMatcher, AHeaderMayEndWithByte511) {
  EXPECT_TRUE(matches(type(u"414243444546", u"507"),
                      sector_with(506, {0x41, 0x42, 0x43, 0x44, 0x45, 0x46})));
  EXPECT_FALSE(matches(type(u"41424344454600", u"507"),
                       sector_with(506, {0x41, 0x42, 0x43, 0x44, 0x45, 0x46})));
}

Text repeated(const Text& digits, std::size_t times) {
  Text text;
  for (std::size_t i = 0; i < times; ++i) text += digits;
  return text;
}

TEST(HeaderMatcher, AHeaderAsLongAsASectorIsFoundAndALongerOneIsNot) {
  const Sector sector = sector_with(0, {}, 0x41);
  for (const Text& position : {Text(u"1"), Text(u"nn")}) {
    EXPECT_TRUE(matches(type(repeated(u"41", 512), position), sector));
    EXPECT_FALSE(matches(type(repeated(u"41", 513), position), sector));
  }
}

TEST(HeaderMatcher, TheNarrowSearchWalksAlongGateBytes) {
  EXPECT_TRUE(matches(type(u"4142", u"nn"), sector_with(0, {0x41, 0x42})));
  EXPECT_TRUE(matches(type(u"4142", u"nn"), sector_with(0, {0x41, 0x41, 0x41, 0x42})));
  EXPECT_FALSE(matches(type(u"4142", u"nn"), sector_with(1, {0x41, 0x42})));
  EXPECT_FALSE(matches(type(u"4142", u"nn"), sector_with(0, {0x41, 0xEE, 0x41, 0x42})));
}

TEST(HeaderMatcher, APartialMatchOfTheNarrowSearchMovesTheNextTryBehindIt) {
  // After 41 42 were equal the next try is at byte 2.
  EXPECT_FALSE(matches(type(u"414243", u"nn"), sector_with(0, {0x41, 0x42, 0x42, 0x43})));
  EXPECT_TRUE(matches(type(u"414243", u"nn"), sector_with(0, {0x41, 0x42, 0x41, 0x42, 0x43})));
  // 41 41 were equal, and the try that would succeed began at byte 1.
  EXPECT_FALSE(matches(type(u"414142", u"nn"), sector_with(0, {0x41, 0x41, 0x41, 0x42})));
  EXPECT_TRUE(matches(type(u"414142", u"nn"), sector_with(0, {0x41, 0x41, 0x41, 0x41, 0x42})));
}

TEST(HeaderMatcher, TheNarrowSearchReachesTheSectorsLastBytes) {
  Sector sector = sector_with(0, {}, 0x41);
  sector[511] = std::byte{0x42};
  EXPECT_TRUE(matches(type(u"4142", u"nn"), sector));
  EXPECT_FALSE(matches(type(u"414243", u"nn"), sector));
  sector[511] = std::byte{0x41};
  EXPECT_FALSE(matches(type(u"4142", u"nn"), sector));
}

TEST(HeaderMatcher, TheGateIsComparedBesideTheHeader) {
  const Sector sector = sector_with(0, {0x41, 0x42});
  for (const Text& position : {Text(u"1"), Text(u"nn")}) {
    const auto with_gate = [&](const Text& gate) {
      return TypeRow{u"TYP", u"0", u"4142", position, gate};
    };
    EXPECT_TRUE(matches(with_gate(u"65"), sector));
    EXPECT_TRUE(matches(with_gate(u" +65 and more"), sector));
    for (const Text& gate : {Text(u"66"), Text(u""), Text(u"321"), Text(u"-191"), Text(u"x")}) {
      EXPECT_FALSE(matches(with_gate(gate), sector));
    }
  }
}

TEST(HeaderMatcher, AnEmptyGateIsByteZero) {
  EXPECT_TRUE(matches({u"TYP", u"0", u"0042", u"1", u""}, sector_with(0, {0x00, 0x42})));
}

TEST(HeaderMatcher, BadDigitsCountAsZeroAndAnOddOneIsIgnored) {
  EXPECT_TRUE(matches({u"TYP", u"0", u"G1Z", u"1", u"1"}, sector_with(0, {0x01})));
  EXPECT_TRUE(matches({u"TYP", u"0", u"aBxF", u"1", u"171"}, sector_with(0, {0xAB, 0x0F})));
  EXPECT_FALSE(matches({u"TYP", u"0", u"4", u"1", u"238"}, sector_with(0, {})));
}

TEST(HeaderMatcher, AnEmptyHeaderMatchesAtTheGateInThePhotoScanAndNothingInTheOther) {
  const TypeRow narrow{u"TYP", u"0", u"", u"nn", u"65"};
  const Sector gate = sector_with(0, {0x41});
  EXPECT_TRUE(matches(narrow, gate, EmptyHeader::matches_gate_byte));
  EXPECT_FALSE(matches(narrow, gate, EmptyHeader::matches_nothing));
  EXPECT_FALSE(matches(narrow, sector_with(1, {0x41}), EmptyHeader::matches_gate_byte));
  const TypeRow one_digit{u"TYP", u"0", u"4", u"nn", u"65"};
  EXPECT_TRUE(matches(one_digit, gate, EmptyHeader::matches_gate_byte));
  EXPECT_FALSE(matches(one_digit, gate, EmptyHeader::matches_nothing));
  for (const Text& position : {Text(u"1"), Text(u"01"), Text(u"nN")}) {
    EXPECT_FALSE(matches({u"TYP", u"0", u"", position, u"65"}, gate));
  }
}

TEST(HeaderMatcher, TheFirstRecordThatMatchesWins) {
  const SignatureTable table = table_of(
      {type(u"4143", u"1"), type(u"4142", u"nn"), type(u"414243", u"1"), type(u"42", u"2")});
  const HeaderMatcher matcher(table, EmptyHeader::matches_gate_byte);
  EXPECT_EQ(matcher.match(sector_with(0, {0x41, 0x43}).data()), 0U);
  EXPECT_EQ(matcher.match(sector_with(0, {0x41, 0x42, 0x43}).data()), 1U);
  EXPECT_EQ(matcher.match(sector_with(1, {0x42}).data()), 3U);
  EXPECT_EQ(matcher.match(sector_with(2, {0x42}).data()), HeaderMatcher::no_record);
}

TEST(HeaderMatcher, AnIncompleteLastRecordIsLeftOut) {
  SignatureTable table = table_of({type(u"41", u"1"), type(u"42", u"1")});
  table.pop_back();
  const HeaderMatcher matcher(table, EmptyHeader::matches_gate_byte);
  EXPECT_EQ(matcher.match(sector_with(0, {0x41}).data()), 0U);
  EXPECT_EQ(matcher.match(sector_with(0, {0x42}).data()), HeaderMatcher::no_record);
}

TEST(HeaderMatcher, AnEmptyTableHasNoCandidates) {
  const HeaderMatcher matcher({}, EmptyHeader::matches_gate_byte);
  const std::vector<std::byte> sectors(20 * sector_size);
  EXPECT_EQ(matcher.find_candidate(sectors.data(), 20), 20U);
  EXPECT_EQ(matcher.match(sectors.data()), HeaderMatcher::no_record);
}

TEST(HeaderMatcher, ACandidateIsFoundAtEveryPlaceOfABlock) {
  const SignatureTable table = table_of({jpeg(), png()});
  const HeaderMatcher matcher(table, EmptyHeader::matches_gate_byte);
  const Sector header = sector_with(0, {0xFF, 0xD8, 0xFF});
  for (std::size_t count = 1; count <= 20; ++count) {
    for (std::size_t place = 0; place < count; ++place) {
      std::vector<std::byte> sectors(count * sector_size, std::byte{0x5A});
      EXPECT_EQ(matcher.find_candidate(sectors.data(), count), count);
      std::copy(header.begin(), header.end(),
                sectors.begin() + static_cast<std::ptrdiff_t>(place * sector_size));
      EXPECT_EQ(matcher.find_candidate(sectors.data(), count), place);
    }
  }
}

}  // namespace
}  // namespace norvo::test
