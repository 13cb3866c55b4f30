// Sectors that cannot be read: the scan goes on with what it read last, and with the device one
// sector behind.
#include <gtest/gtest.h>

#include <algorithm>

#include "PhotoSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

TEST(PhotoScan, AfterTheFirstUnreadableSectorTheDeviceIsOneSectorBehind) {
  // Sector 4 is tried twice; each time sector 3 is dealt with again. Sector 7 is never read.
  expect_found({.drawing = "aJaaxaaJ", .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", "1 2 3 3 3 5 6 6"}});
}

TEST(PhotoScan, AFurtherUnreadableSectorCostsOneRepetition) {
  expect_found({.drawing = "JaxaxaaJ", .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", "0 1 1 1 3 3 5 6 6"}});
}

TEST(PhotoScan, ARunOfUnreadableSectorsRepeatsTheSectorBeforeItOnceMoreThanItIsLong) {
  expect_found({.drawing = "JaxxxaaP", .table = table_of({jpeg(), png()})},
               {{"JPG/GND00001.JPG", "0 1 1 1 1 1 5 6 6"}});
}

TEST(PhotoScan, AnUnreadableFirstSectorCountsAsZeros) {
  expect_found({.drawing = "xJaa", .table = table_of({jpeg()})}, {{"JPG/GND00001.JPG", "1 2 2"}});
}

TEST(PhotoScan, AnUnreadableLastSectorRepeatsTheOneBeforeIt) {
  expect_found({.drawing = "Jax", .table = table_of({jpeg()})}, {{"JPG/GND00001.JPG", "0 1 1 1"}});
}

TEST(PhotoScan, ARangeOfUnreadableSectorsFindsNothing) {
  expect_found({.drawing = "xxxx", .table = table_of({jpeg()})}, {});
}

TEST(PhotoScan, AHeaderBeforeAnUnreadableSectorStartsAFileEachTimeItIsDealtWith) {
  expect_found(
      {.drawing = "aJxaaa", .table = table_of({jpeg()})},
      {{"JPG/GND00001.JPG", "1 1"}, {"JPG/GND00002.JPG", "1 1"}, {"JPG/GND00003.JPG", "1 3 4 4"}});
}

TEST(PhotoScan, RepeatedSectorsCountTowardsTheLimit) {
  expect_found({.drawing = "Jaxaa", .table = table_of({jpeg(), png(u"2048")})},
               {{"JPG/GND00001.JPG", "0 1 1 1"}});
}

TEST(PhotoScan, ManyUnreadableSectorsInALongRunAreAllDealtWith) {
  // Every fourth sector from 3 on is bad. The first one is tried twice, each later one once.
  std::string drawing(41, 'a');
  drawing[0] = 'J';
  std::string wanted = "0 1 2 2 2";
  for (std::size_t bad = 3; bad < 41; bad += 4) drawing[bad] = 'x';
  for (std::size_t index = 5; index < 41; ++index) {
    const std::size_t behind = index - 1;
    wanted += " " + std::to_string(drawing[behind] == 'x' ? behind - 1 : behind);
  }
  expect_found({.drawing = drawing, .table = table_of({jpeg()})},
               {{"JPG/GND00001.JPG", wanted + " 38"}});
}

// The drive ends with the card although the range goes on for three sectors.
void end_early(PhotoSearch& search, std::uint64_t start) {
  search.medium.made_sectors = start + search.card.size();
  search.request.end_slider_val = decimal(start + search.card.size() + 3);
}

TEST(PhotoScan, ADriveShorterThanItSaidRepeatsItsLastSector) {
  expect_found({.drawing = "Ja", .table = table_of({jpeg()}), .prepare = end_early},
               {{"JPG/GND00001.JPG", "0 1 1 1 1 1"}});
}

TEST(PhotoScan, BehindTheEndOfADriveAHeaderIsSearchedUntilPositioningFails) {
  // At the end itself a drive can be positioned, so the header counts once more there.
  expect_found({.drawing = "aJ",
                .table = table_of({jpeg()}),
                .prepare =
                    [](PhotoSearch& search, std::uint64_t start) {
                      end_early(search, start);
                      search.medium.position_past_end_fails = true;
                    }},
               {{"JPG/GND00001.JPG", "1 1"}, {"JPG/GND00002.JPG", "1 1 1 1"}});
}

TEST(PhotoScan, WhereEveryPositioningSucceedsARepeatedHeaderIsFoundAgainAndAgain) {
  expect_found({.drawing = "aJ", .table = table_of({jpeg()}), .prepare = end_early},
               {{"JPG/GND00001.JPG", "1 1"},
                {"JPG/GND00002.JPG", "1 1"},
                {"JPG/GND00003.JPG", "1 1"},
                {"JPG/GND00004.JPG", "1 1"}});
}

TEST(PhotoScan, ADriveThatIsPulledFillsTheOpenFileWithItsLastSectorUpToTheEnd) {
  // Its first failed read cannot be positioned again either, so the header is not searched again.
  expect_found({.drawing = "aaJaa",
                .table = table_of({jpeg()}),
                .prepare =
                    [](PhotoSearch& search, std::uint64_t start) {
                      search.medium.gone_after_sector = start + 3;
                      search.medium.position_past_end_fails = true;
                    },
                .without_helper = true},
               {{"JPG/GND00001.JPG", "2 2 2 2"}});
}

TEST(PhotoScan, WhatAFailedPositioningComparesWithIsNotSearchedAndZerosAre) {
  const TypeRow zeros{u"NUL", no_limit, u"0000"};
  expect_found({.drawing = "aJxzaaa",
                .table = table_of({jpeg(), zeros}),
                .prepare =
                    [](PhotoSearch& search, std::uint64_t start) {
                      search.medium.positions_refused.insert(start + 2);
                      search.card.sector(4) = search.card.sector(1);
                    }},
               // Sector 4 is the same header as sector 1, with which is compared.
               {{"JPG/GND00001.JPG", "1 1 1 z"}, {"NUL/GND00002.NUL", "z 1 5 5"}});
}

// A drive of J, data and half a sector that begins with `half`.
std::vector<std::uint8_t> two_and_a_half_sectors(const std::vector<std::uint8_t>& half) {
  std::vector<std::uint8_t> bytes(5 * sector_size / 2, 0x11);
  std::fill(bytes.begin() + sector_size, bytes.begin() + 2 * sector_size, std::uint8_t{0x22});
  std::fill(bytes.begin() + 2 * sector_size, bytes.end(), std::uint8_t{0x33});
  const std::vector<std::uint8_t> header{0xFF, 0xD8, 0xFF};
  std::copy(header.begin(), header.end(), bytes.begin());
  std::copy(half.begin(), half.end(), bytes.begin() + 2 * sector_size);
  return bytes;
}

std::vector<std::byte> as_bytes(const std::vector<std::uint8_t>& numbers) {
  std::vector<std::byte> bytes;
  for (const std::uint8_t number : numbers) bytes.push_back(std::byte{number});
  return bytes;
}

TEST(PhotoScan, TheBytesThatExistAtTheEndOfADriveLieOverTheSectorBefore) {
  for (const std::size_t block_sectors : {1U, 2U, 3U, 512U}) {
    PhotoSearch search("aaaa");
    const std::vector<std::uint8_t> drive = two_and_a_half_sectors({});
    search.medium.sector = nullptr;
    search.medium.bytes = drive;
    EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()}), block_sectors));
    std::vector<std::uint8_t> mixed(drive.begin() + 2 * sector_size, drive.end());
    mixed.resize(sector_size, 0x22);
    std::vector<std::uint8_t> wanted(drive.begin(), drive.begin() + 2 * sector_size);
    for (int times = 0; times < 3; ++times) {  // indices 2 and 3, and the end
      wanted.insert(wanted.end(), mixed.begin(), mixed.end());
    }
    EXPECT_EQ(bytes_of(search.pass_path(Pass::general) / "JPG/GND00001.JPG"), as_bytes(wanted));
  }
}

TEST(PhotoScan, AHeaderInTheBytesThatExistAtTheEndOfADriveStartsAFile) {
  PhotoSearch search("aaa");
  search.medium.sector = nullptr;
  search.medium.bytes = two_and_a_half_sectors({0xFF, 0xD8, 0xFF});
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.reported(), (std::vector<std::string>{"JPG/GND00001.JPG", "JPG/GND00002.JPG"}));
  EXPECT_EQ(bytes_of(search.pass_path(Pass::general) / "JPG/GND00002.JPG").size(), 2 * sector_size);
}

}  // namespace
}  // namespace norvo::test
