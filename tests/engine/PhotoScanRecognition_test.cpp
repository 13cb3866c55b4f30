// Which sectors start a file, and what the file then holds.
#include <gtest/gtest.h>

#include <algorithm>

#include "PhotoSearch.h"

namespace norvo::test {
namespace {

// One type whose header, made of `header`, is expected by `position`; the card is "aXaa" with the
// header's bytes in sector 1 from byte `at` on.
Scenario header_at(const Text& position, std::size_t at, const std::vector<std::uint8_t>& header) {
  Text digits;
  for (const std::uint8_t byte : header) {
    digits += u"0123456789ABCDEF"[byte / 16];
    digits += u"0123456789ABCDEF"[byte % 16];
  }
  return {.drawing = "aaaa",
          .table = table_of({{u"TYP", no_limit, digits, position}}),
          .prepare = [at, header](PhotoSearch& search, std::uint64_t) {
            std::transform(header.begin(), header.end(),
                           search.card.sector(1).begin() + static_cast<std::ptrdiff_t>(at),
                           [](std::uint8_t byte) { return std::byte{byte}; });
          }};
}

const Found from_sector_1{{"TYP/GND00001.TYP", "1 2 3 3"}};
const Found nothing;

TEST(PhotoScan, FindsAHeaderAtTheStartOfASector) {
  expect_found({.drawing = "aaJaa", .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", "2 3 4 4"}});
}

TEST(PhotoScan, FindsNothingWhereNoSectorBeginsWithAHeader) {
  expect_found({.drawing = "aazaa", .table = table_of({jpeg(), png()})}, nothing);
}

TEST(PhotoScan, NumbersTheFilesOfAPassAcrossItsTypes) {
  expect_found({.drawing = "JPJG", .table = table_of({jpeg(u"512"), png(u"512"), gif(u"512")})},
               {{"JPG/GND00001.JPG", "0"},
                {"PNG/GND00002.PNG", "1"},
                {"JPG/GND00003.JPG", "2"},
                {"GIF/GND00004.GIF", "3"}});
}

TEST(PhotoScan, TheSectorOfTheNextHeaderEndsTheOldFileAndBeginsTheNewOne) {
  expect_found({.drawing = "JaPaa", .table = table_of({jpeg(), png()})},
               {{"JPG/GND00001.JPG", "0 1 2"}, {"PNG/GND00002.PNG", "2 3 4 4"}});
}

TEST(PhotoScan, OfTwoHeaderSectorsInARowTheFirstFileHoldsBoth) {
  expect_found({.drawing = "aJJa", .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", "1 2"}, {"JPG/GND00002.JPG", "2 3 3"}});
}

TEST(PhotoScan, TheFirstRecordInTableOrderThatMatchesWins) {
  const TypeRow shorter{u"ABC", no_limit, u"FFD8"};
  expect_found({.drawing = "Ja", .table = table_of({shorter, jpeg()})},
               {{"ABC/GND00001.ABC", "0 1 1"}});
  expect_found({.drawing = "Ja", .table = table_of({jpeg(), shorter})},
               {{"JPG/GND00001.JPG", "0 1 1"}});
}

TEST(PhotoScan, TwoRecordsOfOneExtensionShareAFolderAndItsCount) {
  const TypeRow other{u"JPG", no_limit, u"89504E47"};
  expect_found({.drawing = "JPa", .table = table_of({jpeg(), other})},
               {{"JPG/GND00001.JPG", "0 1"}, {"JPG/GND00002.JPG", "1 2 2"}});
}

TEST(PhotoScan, SectorsOfZerosAreWrittenAndEndNoFile) {
  expect_found({.drawing = "JzzazJ", .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", "0 z z 3 z 5"}, {"JPG/GND00002.JPG", "5 5"}});
}

TEST(PhotoScan, ASectorOfZerosIsNeverSearched) {
  expect_found({.drawing = "zaz", .table = table_of({{u"NUL", no_limit, u"0000"}})}, nothing);
}

TEST(PhotoScan, ASectorWithOneByteThatIsNotZeroIsSearched) {
  expect_found({.drawing = "zza",
                .table = table_of({{u"NUL", no_limit, u"0000"}}),
                .prepare = [](PhotoSearch& search,
                              std::uint64_t) { search.card.sector(1).back() = std::byte{1}; }},
               {{"NUL/GND00001.NUL", "1 2 2"}});
}

TEST(PhotoScan, ANumericPositionCountsBytesFromOne) {
  expect_found(header_at(u"5", 4, {0x66, 0x74, 0x79, 0x70}), from_sector_1);
  expect_found(header_at(u"5", 5, {0x66, 0x74, 0x79, 0x70}), nothing);
  expect_found(header_at(u"5", 3, {0x66, 0x74, 0x79, 0x70}), nothing);
}

TEST(PhotoScan, TheLastNumericPositionThatIsTriedIs507) {
  expect_found(header_at(u"507", 506, {0x66, 0x74}), from_sector_1);
  expect_found(header_at(u"508", 507, {0x66, 0x74}), nothing);
  expect_found(header_at(u"512", 511, {0x66}), nothing);
}

TEST(PhotoScan, AHeaderMayReachTheLastByteOfItsSectorAndNotFurther) {
  const std::vector<std::uint8_t> six{1, 2, 3, 4, 5, 6};
  expect_found(header_at(u"507", 506, six), from_sector_1);
  Scenario seven = header_at(u"507", 506, six);
  seven.table[2] =
      u"010203040506"
      u"5A";  // and the next sector begins with 5A
  expect_found(seven, nothing);
}

TEST(PhotoScan, APositionBelowTheSectorsFirstByteMatchesNothing) {
  expect_found(header_at(u"0", 0, {0x66, 0x74}), nothing);
  expect_found(header_at(u"-3", 0, {0x66, 0x74}), nothing);
  expect_found(header_at(u"NN", 0, {0x66, 0x74}), nothing);  // no digits: the number 0
}

TEST(PhotoScan, TheNarrowSearchReachesAHeaderAlongARunOfGateBytes) {
  expect_found(header_at(u"nn", 0, {0x66, 0x66, 0x66, 0x74}), from_sector_1);
  Scenario run = header_at(u"nn", 0, {0x66, 0x66, 0x66, 0x74});
  run.table[2] = u"6674";
  // The tries are at bytes 0, 1 (one byte matched, then the next) and 2.
  expect_found(run, from_sector_1);
}

TEST(PhotoScan, TheNarrowSearchIsGivenUpAtTheFirstByteThatIsNotTheGate) {
  expect_found(header_at(u"nn", 1, {0x66, 0x74}), nothing);
}

TEST(PhotoScan, AnEmptyHeaderWithTheNarrowSearchMatchesOnTheGateAlone) {
  const TypeRow empty{u"TYP", no_limit, u"", u"nn", u"255"};
  expect_found({.drawing = "aJa", .table = table_of({empty})}, {{"TYP/GND00001.TYP", "1 2 2"}});
  for (const Text& position : {Text(u"1"), Text(u"2")}) {
    const TypeRow elsewhere{u"TYP", no_limit, u"", position, u"90"};
    expect_found({.drawing = "aJa", .table = table_of({elsewhere})}, nothing);
  }
}

TEST(PhotoScan, AGateThatIsNotTheHeadersFirstByteKeepsTheTypeFromBeingFound) {
  TypeRow wrong = jpeg();
  wrong.gate = u"254";
  expect_found({.drawing = "aJa", .table = table_of({wrong})}, nothing);
}

TEST(PhotoScan, ABadDigitOfAHeaderCountsAsZeroAndAnOddLastOneNotAtAll) {
  const TypeRow bad{u"TYP", no_limit, u"4G7", u"1", u"64"};
  expect_found({.drawing = "aaa",
                .table = table_of({bad}),
                .prepare = [](PhotoSearch& search,
                              std::uint64_t) { search.card.sector(1)[0] = std::byte{0x40}; }},
               {{"TYP/GND00001.TYP", "1 2 2"}});
}

TEST(PhotoScan, AnEmptyTableEndsThePassAtOnceAndWritesNothing) {
  PhotoSearch search("JPG");
  EXPECT_TRUE(search.run(Pass::general, {}));
  EXPECT_EQ(search.found(), nothing);
  EXPECT_EQ(search.state.for_index, 0U);
  EXPECT_EQ(search.medium.block_reads + search.medium.sector_reads, 0U);
}

TEST(PhotoScan, OnlyTheRangeIsSearchedAndItsEndIsExclusive) {
  PhotoSearch search("JJJJJJ");
  search.request.start_slider_val = u"2";
  search.request.end_slider_val = u"4";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "2 3"}, {"JPG/GND00002.JPG", "3 3"}}));
  EXPECT_EQ(search.state.for_index, 4U);
}

TEST(PhotoScan, LongRunsOfDullSectorsLoseNothing) {
  std::string drawing(2000, 'a');
  drawing[1] = drawing[700] = drawing[1100] = 'J';
  drawing[800] = 'z';
  const SignatureTable table = table_of({jpeg(u"51200"), png(u"102400")});
  // The files are 200 sectors long: the limit of the table's last record.
  for (const std::size_t block_sectors : {1U, 3U, 64U, 65U, 512U}) {
    PhotoSearch search(drawing);
    EXPECT_TRUE(search.run(Pass::general, table, block_sectors));
    const Found found = search.found();
    ASSERT_EQ(found.size(), 3U);
    for (const auto& [name, first] : {std::pair{"JPG/GND00001.JPG", 1},
                                      {"JPG/GND00002.JPG", 700},
                                      {"JPG/GND00003.JPG", 1100}}) {
      std::string wanted = std::to_string(first);
      for (int s = first + 1; s < first + 200; ++s) {
        wanted += s == 800 ? " z" : " " + std::to_string(s);
      }
      EXPECT_EQ(found.at(name), wanted);
    }
  }
}

}  // namespace
}  // namespace norvo::test
