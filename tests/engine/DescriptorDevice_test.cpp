#include "engine/DescriptorDevice.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "support/FileTree.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

constexpr std::uint64_t beyond_all_offsets = std::uint64_t{1} << 63U;

class DescriptorDeviceTest : public testing::Test {
 protected:
  DescriptorDeviceTest() {
    make_file(path, std::string(512, 'a') + std::string(512, 'b') + std::string(100, 'c'));
  }

  DescriptorDevice device() const {
    return DescriptorDevice(UniqueFd(open(path.c_str(), O_RDONLY)));
  }

  static std::string text(std::span<const std::byte> bytes, std::int64_t count) {
    std::string letters;
    for (const std::byte byte : bytes.first(static_cast<std::size_t>(count))) {
      letters += static_cast<char>(byte);
    }
    return letters;
  }

  TemporaryFolder folder;
  const std::filesystem::path path = folder.path() / "image";
  std::vector<std::byte> block = std::vector<std::byte>(2048);
};

TEST_F(DescriptorDeviceTest, ReadsAtTheOffsetThatIsAskedForInAnyOrder) {
  DescriptorDevice image = device();
  ASSERT_EQ(image.read_block(512, std::span(block).first(512)), 512);
  EXPECT_EQ(text(block, 512), std::string(512, 'b'));
  ASSERT_EQ(image.read_block(510, std::span(block).first(4)), 4);
  EXPECT_EQ(text(block, 4), "aabb");
  ASSERT_EQ(image.read_sector(0, std::span(block).first(512)), 512);
  EXPECT_EQ(text(block, 512), std::string(512, 'a'));
}

TEST_F(DescriptorDeviceTest, ReadsWhatIsThereAtTheEndAndNothingBehindIt) {
  DescriptorDevice image = device();
  ASSERT_EQ(image.read_block(512, block), 612);
  EXPECT_EQ(text(block, 612), std::string(512, 'b') + std::string(100, 'c'));
  EXPECT_EQ(image.read_sector(1024, std::span(block).first(512)), 100);
  EXPECT_EQ(image.read_block(1124, block), 0);
  EXPECT_EQ(image.read_block(1'000'000, block), 0);
}

TEST_F(DescriptorDeviceTest, AnOffsetThatNoFileHasCannotBeReadOrPositionedAt) {
  DescriptorDevice image = device();
  EXPECT_EQ(image.read_block(beyond_all_offsets, block), -1);
  EXPECT_EQ(image.read_sector(std::numeric_limits<std::uint64_t>::max() - 511,
                              std::span(block).first(512)),
            -1);
  EXPECT_FALSE(image.can_position(beyond_all_offsets));
  EXPECT_FALSE(image.can_position(std::numeric_limits<std::uint64_t>::max()));
}

TEST_F(DescriptorDeviceTest, AnImageCanBePositionedInsideAndBehindItsEnd) {
  DescriptorDevice image = device();
  EXPECT_TRUE(image.can_position(0));
  EXPECT_TRUE(image.can_position(512));
  EXPECT_TRUE(image.can_position(1'000'000));
}

TEST_F(DescriptorDeviceTest, PositioningDoesNotChangeWhereIsRead) {
  DescriptorDevice image = device();
  EXPECT_TRUE(image.can_position(512));
  ASSERT_EQ(image.read_block(0, std::span(block).first(1)), 1);
  EXPECT_EQ(text(block, 1), "a");
}

TEST_F(DescriptorDeviceTest, APipeCannotBePositionedOrReadAtAnOffset) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const UniqueFd writing(ends[1]);
  DescriptorDevice device_of_pipe{UniqueFd(ends[0])};
  EXPECT_FALSE(device_of_pipe.can_position(0));
  EXPECT_EQ(device_of_pipe.read_block(0, block), -1);
}

TEST_F(DescriptorDeviceTest, ADescriptorThatCannotBeReadGivesAFailure) {
  DescriptorDevice folder_device{UniqueFd(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY))};
  EXPECT_EQ(folder_device.read_block(0, block), -1);
}

}  // namespace
}  // namespace norvo::test
