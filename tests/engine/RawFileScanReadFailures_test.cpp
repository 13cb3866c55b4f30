// Sectors that cannot be read: the scan goes on with what it read last, and with the device one
// sector behind.
#include <gtest/gtest.h>

#include "RawFileSearch.h"

namespace norvo::test {
namespace {

TEST(RawFileScan, AfterTheFirstUnreadableSectorTheDeviceIsOneSectorBehind) {
  // Sector 4 is tried twice; each time sector 3 is dealt with again. Sector 7 is never read.
  expect_carved({.drawing = "aJaaxaaJ", .table = table_of({jpeg()})},
                {{"JPG/JPG00001.JPG", "1 2 3 3 3 5 6 6"}});
}

TEST(RawFileScan, AFurtherUnreadableSectorCostsOneRepetitionInEveryOpenFile) {
  expect_carved(
      {.drawing = "JaxaxaaJ", .table = table_of({jpeg(), jfif()})},
      {{"JPG/JPG00001.JPG", "0 1 1 1 3 3 5 6 6"}, {"JFI/JFI00001.JFI", "0 1 1 1 3 3 5 6 6"}});
}

TEST(RawFileScan, RepeatedSectorsCountTowardsEachMaximum) {
  expect_carved({.drawing = "Jaxaaa", .table = table_of({jpeg(u"1536"), jfif(u"2048")})},
                {{"JPG/JPG00001.JPG", "0 1 1"}, {"JFI/JFI00001.JFI", "0 1 1 1"}});
}

TEST(RawFileScan, AHeaderBeforeAnUnreadableSectorStartsAFileEachTimeItIsDealtWith) {
  expect_carved(
      {.drawing = "aJxaaa", .table = table_of({jpeg()})},
      {{"JPG/JPG00001.JPG", "1 1"}, {"JPG/JPG00002.JPG", "1 1"}, {"JPG/JPG00003.JPG", "1 3 4 4"}});
}

TEST(RawFileScan, AnUnreadableFirstSectorCountsAsZeros) {
  expect_carved({.drawing = "xJaa", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "1 2 2"}});
}

TEST(RawFileScan, AnUnreadableLastSectorRepeatsTheOneBeforeIt) {
  expect_carved({.drawing = "Jax", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "0 1 1 1"}});
}

TEST(RawFileScan, ADriveShorterThanItSaidRepeatsItsLastSector) {
  expect_carved({.drawing = "Ja",
                 .table = table_of({jpeg()}),
                 .prepare =
                     [](RawFileSearch& search, std::uint64_t start) {
                       search.medium.made_sectors = start + search.card.size();
                       search.request.end_slider_val = decimal(start + search.card.size() + 3);
                     }},
                {{"JPG/JPG00001.JPG", "0 1 1 1 1 1"}});
}

TEST(RawFileScan, ASectorThatCanNeitherBeReadNorPositionedAtIsFillerThatFilesReceive) {
  // Sector 4 is the header of sector 1 once more: from now on equal to the filler, and copied.
  // Zeros are searched instead, but no type begins with them.
  expect_carved({.drawing = "aJxzaaa",
                 .table = table_of({jpeg()}),
                 .prepare =
                     [](RawFileSearch& search, std::uint64_t start) {
                       search.medium.positions_refused.insert(start + 2);
                       search.card.sector(4) = search.card.sector(1);
                     }},
                {{"JPG/JPG00001.JPG", "1 1 1 z 1 5 5"}});
}

TEST(RawFileScan, ZerosAreSearchedOnceTheFillerIsAnotherSector) {
  expect_carved(
      {.drawing = "aJxzaa",
       .table = table_of({jpeg(), {u"NUL", no_limit, u"0000"}}),
       .prepare = [](RawFileSearch& search,
                     std::uint64_t start) { search.medium.positions_refused.insert(start + 2); }},
      {{"JPG/JPG00001.JPG", "1 1 1 z"}, {"NUL/NUL00001.NUL", "z 4 4"}});
}

TEST(RawFileScan, TheThoroughPassComparesWithZerosAgain) {
  RawFileSearch search("aJxzaa");
  search.medium.positions_refused.insert(2);
  const SignatureTable table = table_of({{u"NUL", no_limit, u"0000"}});
  EXPECT_TRUE(search.run(Pass::general, table));
  search.medium.unreadable.clear();
  EXPECT_TRUE(search.run(Pass::thorough, table));
  EXPECT_EQ(search.found(Pass::general), (Found{{"NUL/NUL00001.NUL", "z 4 4"}}));
  EXPECT_EQ(search.found(Pass::thorough), Found{});
}

}  // namespace
}  // namespace norvo::test
