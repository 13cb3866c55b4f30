#include "engine/BlockPipeline.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "support/TableBuilder.h"

namespace norvo::test {
namespace {

constexpr std::size_t block_sectors = 4;

// Every sector begins with its number; each seventh begins with the header FA FB. Reading takes as
// long as a test wants, told by the thread that reads.
class NumberedDevice final : public Device {
 public:
  explicit NumberedDevice(std::uint64_t sectors) : sectors_(sectors) {}

  std::chrono::microseconds helper_delay{0};
  std::thread::id scan_thread = std::this_thread::get_id();
  std::uint64_t unreadable = static_cast<std::uint64_t>(-1);

  std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) override {
    if (std::this_thread::get_id() != scan_thread) std::this_thread::sleep_for(helper_delay);
    const std::uint64_t first = offset / sector_size;
    const std::uint64_t wanted = block.size() / sector_size;
    std::uint64_t count = first < sectors_ ? std::min(wanted, sectors_ - first) : 0;
    if (unreadable == first) return -1;
    if (unreadable > first) count = std::min(count, unreadable - first);
    for (std::uint64_t i = 0; i < count; ++i) {
      std::byte* sector = block.data() + i * sector_size;
      const std::uint64_t number = first + i;
      std::memset(sector, 1, sector_size);
      if (number % 7 == 0) sector[0] = std::byte{0xFA}, sector[1] = std::byte{0xFB};
      std::memcpy(sector + 8, &number, sizeof number);
    }
    return static_cast<std::int64_t>(count * sector_size);
  }
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override {
    return read_block(offset, sector);
  }
  bool can_position(std::uint64_t /*offset*/) override { return true; }
  void will_need(std::uint64_t /*offset*/, std::size_t /*length*/) override {}

 private:
  std::uint64_t sectors_;
};

HeaderMatcher matcher() {
  return HeaderMatcher(table_of({{.extension = u"FAB", .maximum = u"512", .header = u"FAFB"}}),
                       EmptyHeader::matches_nothing);
}

std::uint64_t number_in(const SectorBlock& block, std::size_t i) {
  std::uint64_t number = 0;
  std::memcpy(&number, block.data() + i * sector_size + 8, sizeof number);
  return number;
}

// Takes all blocks and checks that each holds the sectors it should, with the right marks. Returns
// the sector after the last one.
std::uint64_t take_all(BlockPipeline& pipeline, std::uint64_t start) {
  std::uint64_t next = start;
  while (const SectorBlock* block = pipeline.take()) {
    EXPECT_EQ(block->start, next);
    for (std::size_t i = 0; i < block->valid; ++i, ++next) {
      EXPECT_EQ(number_in(*block, i), next);
      const bool marked = ((block->candidates()[i / 64] >> (i % 64)) & 1U) != 0;
      EXPECT_EQ(marked, next % 7 == 0) << "sector " << next;
    }
  }
  return next;
}

TEST(BlockPipeline, HandsOutEveryBlockOnceAndInOrder) {
  NumberedDevice device(1000);
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 5, 999);
  EXPECT_EQ(take_all(pipeline, 5), 999U);
  EXPECT_EQ(pipeline.take(), nullptr);
}

TEST(BlockPipeline, KeepsTheOrderWhenTheHelperIsSlow) {
  NumberedDevice device(400);
  device.helper_delay = std::chrono::milliseconds(3);
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 0, 400);
  EXPECT_EQ(take_all(pipeline, 0), 400U);
}

TEST(BlockPipeline, DoesNotWaitForAHelperThatIsHeldUp) {
  NumberedDevice device(40000);
  device.helper_delay = std::chrono::milliseconds(50);
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 0, 40000);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(take_all(pipeline, 0), 40000U);
  // Were each block of the helper waited for, its share of one in five would take 100 seconds.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(50));
}

TEST(BlockPipeline, EndsAtTheFirstBlockThatIsNotReadCompletely) {
  NumberedDevice device(400);
  device.unreadable = 42;
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 0, 400);
  EXPECT_EQ(take_all(pipeline, 0), 40U);
  EXPECT_EQ(pipeline.take(), nullptr);
}

TEST(BlockPipeline, EndsBeforeTheEndOfADeviceThatIsShorterThanTheRange) {
  NumberedDevice device(22);
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 0, 400);
  EXPECT_EQ(take_all(pipeline, 0), 20U);
}

TEST(BlockPipeline, ReadsNothingForAnEmptyRange) {
  NumberedDevice device(22);
  const HeaderMatcher headers = matcher();
  BlockPipeline pipeline(device, headers, block_sectors, 7, 7);
  EXPECT_EQ(pipeline.take(), nullptr);
}

TEST(BlockPipeline, CanBeGivenUpAtAnyMoment) {
  for (int taken = 0; taken < 20; ++taken) {
    NumberedDevice device(400);
    const HeaderMatcher headers = matcher();
    BlockPipeline pipeline(device, headers, block_sectors, 0, 400);
    for (int i = 0; i < taken; ++i) ASSERT_NE(pipeline.take(), nullptr);
  }
}

}  // namespace
}  // namespace norvo::test
