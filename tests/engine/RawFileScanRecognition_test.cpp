// Which sectors start a file: position rules, gate bytes, and the order of the types.
#include <gtest/gtest.h>

#include "RawFileSearch.h"

namespace norvo::test {
namespace {

// Puts `bytes` into the card's sector 1 from byte `at` on; the rest of the sector holds `rest`.
auto with_bytes(std::size_t at, const std::vector<unsigned>& bytes, unsigned rest = 0x5A) {
  return [=](RawFileSearch& search, std::uint64_t /*start*/) {
    std::vector<std::byte>& sector = search.card.sector(1);
    std::fill(sector.begin(), sector.end(), std::byte(rest));
    for (std::size_t i = 0; i < bytes.size(); ++i) sector.at(at + i) = std::byte(bytes[i]);
  };
}

using Prepare = std::function<void(RawFileSearch&, std::uint64_t)>;

void expect_recognised(const TypeRow& type, const Prepare& prepare) {
  expect_carved({.drawing = "aaa", .table = table_of({type}), .prepare = prepare},
                {{"TYP/TYP00001.TYP", "1 2 2"}});
}

void expect_ignored(const TypeRow& type, const Prepare& prepare) {
  expect_carved({.drawing = "aaa", .table = table_of({type}), .prepare = prepare}, {});
}

TypeRow row(const Text& header, const Text& position) {
  return {u"TYP", no_limit, header, position};
}

TEST(RawFileScan, TheRuleOneLooksAtByteZeroOnly) {
  expect_recognised(row(u"4142", u"1"), with_bytes(0, {0x41, 0x42}));
  expect_ignored(row(u"4142", u"1"), with_bytes(1, {0x41, 0x42}));
  expect_ignored(row(u"4142", u"1"), with_bytes(0, {0x41, 0x41, 0x42}));
}

TEST(RawFileScan, ANumericRuleLooksAtTheByteBeforeItsNumber) {
  expect_recognised(row(u"4142", u"5"), with_bytes(4, {0x41, 0x42}));
  expect_ignored(row(u"4142", u"5"), with_bytes(5, {0x41, 0x42}));
  expect_ignored(row(u"4142", u"5"), with_bytes(4, {0x41, 0x41, 0x42}));
}

TEST(RawFileScan, ANumericRuleOf508OrMoreNeverMatches) {
  expect_recognised(row(u"4142434445", u"507"), with_bytes(506, {0x41, 0x42, 0x43, 0x44, 0x45}));
  expect_ignored(row(u"41", u"508"), with_bytes(507, {0x41}));
  expect_ignored(row(u"41", u"512"), with_bytes(511, {0x41}));
  expect_ignored(row(u"41", u"513"), with_bytes(0, {}, 0x41));
}

TEST(RawFileScan, ANumericRuleBelowOneNeverMatches) {
  for (const char16_t* position : {u"0", u"-1", u"", u"N"}) {
    expect_ignored(row(u"4141", position), with_bytes(0, {}, 0x41));
  }
}

TEST(RawFileScan, ANarrowHeaderInTheMiddleOfASectorIsNotFoundWhereByteZeroIsNoGateByte) {
  expect_ignored(row(u"4142", u"nn"), with_bytes(100, {0x41, 0x42}));
}

TEST(RawFileScan, ANarrowHeaderIsFoundBehindARunOfGateBytesFromByteZeroOn) {
  std::vector<unsigned> run(100, 0x41);
  run.push_back(0x42);
  expect_recognised(row(u"4142", u"nn"), with_bytes(0, run));
  run[50] = 0x43;
  expect_ignored(row(u"4142", u"nn"), with_bytes(0, run));
}

TEST(RawFileScan, APartialMatchOfANarrowHeaderMovesTheNextTryBehindIt) {
  // 41 41 were equal, so the next try begins at byte 2 and misses the header at byte 1.
  expect_ignored(row(u"414142", u"nn"), with_bytes(0, {0x41, 0x41, 0x41, 0x42}));
  expect_recognised(row(u"414142", u"nn"), with_bytes(0, {0x41, 0x41, 0x41, 0x41, 0x42}));
}

TEST(RawFileScan, AnEmptyHeaderNeverMatches) {
  for (const char16_t* position : {u"1", u"nn", u"2"}) {
    for (const char16_t* header : {u"", u"4"}) {
      expect_ignored({u"TYP", no_limit, header, position, u"65"}, with_bytes(0, {}, 0x41));
    }
  }
}

TEST(RawFileScan, TheGateByteIsAskedBesideTheHeader) {
  const auto gated = [](const Text& gate) {
    return TypeRow{u"TYP", no_limit, u"4142", u"1", gate};
  };
  expect_recognised(gated(u"65"), with_bytes(0, {0x41, 0x42}));
  expect_ignored(gated(u"66"), with_bytes(0, {0x41, 0x42}));
  expect_ignored(gated(u""), with_bytes(0, {0x41, 0x42}));
  expect_recognised({u"TYP", no_limit, u"0042", u"1", u""}, with_bytes(0, {0x00, 0x42}));
}

TEST(RawFileScan, AHeaderThatWouldPassTheSectorsEndIsNotFound) {
  expect_recognised(row(u"414243444546", u"507"),
                    with_bytes(506, {0x41, 0x42, 0x43, 0x44, 0x45, 0x46}));
  expect_ignored(row(u"41424344454600", u"507"),
                 with_bytes(506, {0x41, 0x42, 0x43, 0x44, 0x45, 0x46}));
}

TEST(RawFileScan, SectorsOfZerosAreNotSearched) {
  // A header of zeros is found in a sector that is not all zeros only.
  expect_carved({.drawing = "zaz",
                 .table = table_of({row(u"0000", u"1")}),
                 .prepare = with_bytes(511, {0x01}, 0x00)},
                {{"TYP/TYP00001.TYP", "1 z z"}});
}

TEST(RawFileScan, TheFirstSectorOfTheRangeIsSearchedAndTheOneBehindItIsNot) {
  // Around the card every sector begins with a J header.
  expect_carved({.drawing = "Ja", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "0 1 1"}});
  expect_carved({.drawing = "aa", .table = table_of({jpeg()})}, {});
}

}  // namespace
}  // namespace norvo::test
