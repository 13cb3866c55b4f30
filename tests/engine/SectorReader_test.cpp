// The device as a row of items, and what stands in for those that cannot be read.
#include "engine/SectorReader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "support/Card.h"
#include "support/FakeDevice.h"
#include "support/TableBuilder.h"

namespace norvo::test {
namespace {

const std::size_t block_sizes[] = {1, 2, 3, 7, 512};

// The drive of a test and its reader, with one type for the marks of candidates.
struct Drive {
  explicit Drive(const std::string& drawing) : card(drawing) { card.put_on(medium, 0, 0); }

  SectorReader reader(std::size_t block_sectors) { return {device, matcher, block_sectors}; }

  Card card;
  FakeMedium medium;
  FakeDevice device{medium};
  const SignatureTable table = table_of({jpeg()});
  const HeaderMatcher matcher{table, EmptyHeader::matches_gate_byte};
};

// The items for the indices from `start` up to `end`; "!" follows one that lost the position.
std::string items(const Card& card, SectorReader& reader, std::uint64_t start, std::uint64_t end) {
  std::string names;
  for (std::uint64_t index = start; index < end;) {
    const SectorReader::Items some = reader.read(index, end - index);
    if (some.count == 0 || some.count > end - index) return names + " (wrong count)";
    names += (names.empty() ? "" : " ") + card.describe({some.data, some.count * sector_size});
    if (some.lost_position) names += some.count == 1 ? "!" : " (lost position of several)";
    index += some.count;
  }
  return names;
}

void expect_items(
    const std::string& drawing, std::uint64_t count, const std::string& wanted,
    void (*change)(FakeMedium& medium) = [](FakeMedium&) {}) {
  for (const std::size_t block_sectors : block_sizes) {
    for (const bool whole : {false, true}) {
      Drive drive(drawing);
      drive.medium.blocks_fail_whole = whole;
      change(drive.medium);
      SectorReader reader = drive.reader(block_sectors);
      EXPECT_EQ(items(drive.card, reader, 0, count), wanted) << block_sectors << ' ' << whole;
    }
  }
}

TEST(SectorReader, HandsOutTheSectorsInTheirOrder) {
  expect_items("aJzaa", 5, "0 1 z 3 4");
}

TEST(SectorReader, StartsWhereItWasPositioned) {
  for (const std::size_t block_sectors : block_sizes) {
    Drive drive("aaaaaaaaaa");
    SectorReader reader = drive.reader(block_sectors);
    EXPECT_TRUE(reader.position_at(6));
    EXPECT_EQ(items(drive.card, reader, 6, 10), "6 7 8 9");
  }
}

TEST(SectorReader, APositionThatIsRefusedLeavesItWhereItWas) {
  Drive drive("aaaa");
  drive.medium.positions_refused.insert(2);
  SectorReader reader = drive.reader(512);
  EXPECT_FALSE(reader.position_at(2));
  EXPECT_EQ(items(drive.card, reader, 2, 4), "0 1");
}

TEST(SectorReader, HandsOutNoMoreThanWasAskedFor) {
  Drive drive("aaaaaa");
  SectorReader reader = drive.reader(512);
  EXPECT_EQ(reader.read(0, 2).count, 2U);
  EXPECT_EQ(reader.read(2, 1).count, 1U);
  EXPECT_EQ(items(drive.card, reader, 3, 6), "3 4 5");
}

TEST(SectorReader, AnUnreadableSectorRepeatsTheOneBeforeAndLeavesTheDeviceOneBehind) {
  expect_items("aaxaa", 5, "0 1 1 1 3");
  expect_items("aaaxaaaaa", 9, "0 1 2 2 2 4 5 6 7");
}

TEST(SectorReader, AFurtherUnreadableSectorIsTriedOnce) {
  expect_items("axaxaa", 6, "0 0 0 2 2 4");
  expect_items("axaaxxa", 7, "0 0 0 2 3 3 3");
}

TEST(SectorReader, ARunOfUnreadableSectorsIsWalkedThroughOneByOne) {
  expect_items("axxxaa", 6, "0 0 0 0 0 4");
}

TEST(SectorReader, TheBufferHoldsZerosUntilTheFirstSectorIsRead) {
  expect_items("xaa", 3, "z z 1");
  expect_items("xxa", 4, "z z z 2");
}

TEST(SectorReader, AnUnreadableLastSectorRepeatsTheOneBefore) {
  expect_items("aax", 3, "0 1 1");
}

TEST(SectorReader, BehindTheEndOfTheDriveItsLastSectorIsRepeated) {
  expect_items("aaa", 6, "0 1 2 2 2 2");
}

TEST(SectorReader, BehindTheEndOfADriveThePositionIsLostFromTheSecondSectorOn) {
  expect_items("aaa", 6, "0 1 2 2 2! 2!",
               [](FakeMedium& medium) { medium.position_past_end_fails = true; });
}

TEST(SectorReader, ADriveThatIsGoneLosesThePositionAtOnce) {
  expect_items("aaaaa", 5, "0 1 2 2! 2!", [](FakeMedium& medium) {
    medium.gone_after_sector = 3;
    medium.position_past_end_fails = true;
  });
}

TEST(SectorReader, ALostPositionStaysAtTheSectorThatCouldNotBeRead) {
  // Index 2 fails and stays at sector 2, index 3 fails there again and is positioned at 3.
  expect_items("aaxaa", 5, "0 1 1! 1 3",
               [](FakeMedium& medium) { medium.positions_refused.insert(2); });
}

TEST(SectorReader, TheBytesThatExistAtTheEndOfADriveAreCopiedOverTheItemBefore) {
  for (const std::size_t block_sectors : block_sizes) {
    Drive drive("aa");
    drive.medium.sector = nullptr;
    drive.medium.bytes.assign(sector_size, 0x11);
    drive.medium.bytes.resize(sector_size + 100, 0x22);
    SectorReader reader = drive.reader(block_sectors);
    EXPECT_EQ(reader.read(0, 3).count, 1U);
    std::vector<std::byte> wanted(sector_size, std::byte{0x11});
    std::fill(wanted.begin(), wanted.begin() + 100, std::byte{0x22});
    for (const std::uint64_t index : {1U, 2U}) {
      const SectorReader::Items item = reader.read(index, 3 - index);
      ASSERT_EQ(item.count, 1U);
      EXPECT_EQ(std::memcmp(item.data, wanted.data(), sector_size), 0) << block_sectors;
    }
  }
}

TEST(SectorReader, MarksTheItemsThatMayStartAFile) {
  for (const std::size_t block_sectors : {1U, 2U, 3U, 7U, 100U, 512U}) {
    std::string drawing(150, 'a');
    for (const std::size_t header : {0U, 5U, 63U, 64U, 65U, 130U, 149U}) drawing[header] = 'J';
    Drive drive(drawing);
    SectorReader reader = drive.reader(block_sectors);
    ASSERT_TRUE(reader.position_at(3));
    std::vector<std::uint64_t> marked;
    for (std::uint64_t index = 3; index < drawing.size();) {
      const SectorReader::Items some = reader.read(index, drawing.size() - index);
      std::size_t at = some.find_candidate(0, some.count);
      for (; at < some.count; at = some.find_candidate(at + 1, some.count)) {
        marked.push_back(index + at);
      }
      EXPECT_EQ(at, some.count);
      index += some.count;
    }
    EXPECT_EQ(marked, (std::vector<std::uint64_t>{5, 63, 64, 65, 130, 149})) << block_sectors;
  }
}

TEST(SectorReader, ACandidateIsLookedForInsideTheGivenBoundsOnly) {
  Drive drive("aJaaJaa");
  SectorReader reader = drive.reader(512);
  const SectorReader::Items all = reader.read(0, 7);
  ASSERT_EQ(all.count, 7U);
  EXPECT_EQ(all.find_candidate(0, 7), 1U);
  EXPECT_EQ(all.find_candidate(1, 7), 1U);
  EXPECT_EQ(all.find_candidate(2, 7), 4U);
  EXPECT_EQ(all.find_candidate(2, 4), 4U);
  EXPECT_EQ(all.find_candidate(2, 3), 3U);
  EXPECT_EQ(all.find_candidate(5, 7), 7U);
  EXPECT_EQ(all.find_candidate(3, 3), 3U);
}

TEST(SectorReader, MarksARepeatedItemLikeTheSectorItRepeats) {
  for (const std::size_t block_sectors : block_sizes) {
    Drive drive("Jx");
    SectorReader reader = drive.reader(block_sectors);
    EXPECT_EQ(reader.read(0, 2).find_candidate(0, 1), 0U);
    EXPECT_EQ(reader.read(1, 1).find_candidate(0, 1), 0U);
  }
}

TEST(SectorReader, AGoodDriveIsReadInWholeBlocksUpToTheEndOfTheRange) {
  Drive drive("aaaaaaaaaaaaaaaa");
  SectorReader reader = drive.reader(5);
  static_cast<void>(items(drive.card, reader, 0, 13));
  EXPECT_EQ(drive.medium.block_reads, 3U);
  EXPECT_EQ(drive.medium.sector_reads, 0U);
}

// A drive that takes its time, and what it was asked to have ready.
class SlowDevice final : public Device {
 public:
  struct Hint {
    std::uint64_t offset;
    std::size_t length;
  };

  std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    read_to = offset + block.size();
    return static_cast<std::int64_t>(block.size());
  }
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override {
    return read_block(offset, sector);
  }
  bool can_position(std::uint64_t) override { return true; }
  void will_need(std::uint64_t offset, std::size_t length) override {
    // The block in between is read next itself.
    EXPECT_GE(offset, read_to);
    hints.push_back({offset, length});
  }

  std::uint64_t read_to = 0;
  std::vector<Hint> hints;
};

TEST(SectorReader, ASlowDriveIsAskedAheadForWhatIsReadNext) {
  SlowDevice device;
  const SignatureTable table = table_of({jpeg()});
  const HeaderMatcher matcher(table, EmptyHeader::matches_gate_byte);
  SectorReader reader(device, matcher, 8);
  for (std::uint64_t index = 0; index < 32; index += 8)
    static_cast<void>(reader.read(index, 32 - index));
  EXPECT_EQ(device.hints.size(), 3U);  // for all blocks but the first
  for (const SlowDevice::Hint& hint : device.hints) EXPECT_GT(hint.length, 0U);
}

}  // namespace
}  // namespace norvo::test
