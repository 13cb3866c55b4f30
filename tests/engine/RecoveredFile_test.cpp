#include "engine/RecoveredFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <vector>

#include "engine/Device.h"
#include "engine/SavingFailure.h"
#include "support/FileSizeLimit.h"
#include "support/FileTree.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;

// `count` consecutive sectors, filled with `first`, `first` + 1 and so on.
std::vector<std::byte> sectors(unsigned first, std::size_t count) {
  std::vector<std::byte> bytes(count * sector_size);
  for (std::size_t i = 0; i < count; ++i) {
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(i * sector_size), sector_size,
                static_cast<std::byte>(first + i));
  }
  return bytes;
}

class RecoveredFileTest : public testing::Test {
 protected:
  // The first byte of each sector of `name`.
  std::vector<int> content(const std::string& name) const {
    std::vector<int> firsts;
    const std::vector<std::byte> bytes = bytes_of(folder.path() / name);
    EXPECT_EQ(bytes.size() % sector_size, 0U);
    for (std::size_t at = 0; at < bytes.size(); at += sector_size) {
      firsts.push_back(std::to_integer<int>(bytes[at]));
    }
    return firsts;
  }

  TemporaryFolder folder;
  OutputTree tree{folder.path()};
  RecoveredFile file;
};

TEST_F(RecoveredFileTest, HoldsTheAppendedSectorsInTheirOrder) {
  const std::vector<std::byte> near = sectors(1, 3);
  const std::vector<std::byte> far = sectors(7, 2);
  file.open(tree, "a.jpg");
  EXPECT_TRUE(file.is_open());
  file.append({.data = near.data(), .count = 1, .origin = {}});
  file.append({.data = near.data() + sector_size, .count = 2, .origin = {}});
  file.append({.data = far.data(), .count = 2, .origin = {}});
  file.append({.data = near.data(), .count = 1, .origin = {}});
  file.append({.data = near.data(), .count = 1, .origin = {}});
  file.close();
  EXPECT_FALSE(file.is_open());
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2, 3, 7, 8, 1, 1}));
}

TEST_F(RecoveredFileTest, WhatWasHandedOverSurvivesTheChangeOfItsMemory) {
  std::vector<std::byte> memory = sectors(1, 2);
  file.open(tree, "a.jpg");
  file.append({.data = memory.data(), .count = 2, .origin = {}});
  file.write_gathered();
  memory = sectors(5, 2);
  file.append({.data = memory.data(), .count = 1, .origin = {}});
  file.close();
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2, 5}));
}

TEST_F(RecoveredFileTest, NeighbouringSectorsGoOutTogetherOnlyWhenAsked) {
  const std::vector<std::byte> memory = sectors(1, 2);
  file.open(tree, "a.jpg");
  file.append({.data = memory.data(), .count = 2, .origin = {}});
  EXPECT_TRUE(content("a.jpg").empty());
  file.write_gathered();
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2}));
  file.write_gathered();
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2}));
}

TEST_F(RecoveredFileTest, OpeningAnotherFileClosesTheFirstWithAllItsSectors) {
  const std::vector<std::byte> memory = sectors(1, 2);
  file.open(tree, "a.jpg");
  file.append({.data = memory.data(), .count = 2, .origin = {}});
  file.open(tree, "b.jpg");
  file.append({.data = memory.data(), .count = 1, .origin = {}});
  file.close();
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2}));
  EXPECT_EQ(content("b.jpg"), (std::vector<int>{1}));
}

TEST_F(RecoveredFileTest, OpeningAnotherFileIsSilentAboutTheFirstOnesFailure) {
  const std::vector<std::byte> memory = sectors(1, 2);
  file.open(tree, "a.jpg");
  file.append({.data = memory.data(), .count = 2, .origin = {}});
  const FileSizeLimit limit(sector_size);
  EXPECT_NO_THROW(file.open(tree, "b.jpg"));
  file.append({.data = memory.data(), .count = 1, .origin = {}});
  file.close();
  EXPECT_EQ(content("b.jpg"), (std::vector<int>{1}));
}

TEST_F(RecoveredFileTest, AFileThatCannotBeMadeIsASavingFailure) {
  fs::create_directory(folder.path() / "a.jpg");
  EXPECT_THROW(file.open(tree, "a.jpg"), SavingFailure);
  EXPECT_FALSE(file.is_open());
}

TEST_F(RecoveredFileTest, AWriteThatFailsIsASavingFailure) {
  const std::vector<std::byte> memory = sectors(1, 3);
  file.open(tree, "a.jpg");
  const FileSizeLimit limit(2 * sector_size);
  file.append({.data = memory.data(), .count = 3, .origin = {}});
  EXPECT_THROW(file.write_gathered(), SavingFailure);
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2}));
}

TEST_F(RecoveredFileTest, AFailureThatOnlyClosingShowsIsASavingFailure) {
  const std::vector<std::byte> memory = sectors(1, 1);
  file.open(tree, "a.jpg");
  const FileSizeLimit limit(0);
  file.append({.data = memory.data(), .count = 1, .origin = {}});
  EXPECT_THROW(file.close(), SavingFailure);
}

// The descriptor under which this process has `path` open, or -1.
int descriptor_of(const fs::path& path) {
  for (int fd = 3; fd < 256; ++fd) {
    std::error_code error;
    if (fs::read_symlink("/proc/self/fd/" + std::to_string(fd), error) == path) return fd;
  }
  return -1;
}

TEST_F(RecoveredFileTest, ACloseThatTheSystemRefusesIsASavingFailure) {
  if (!fs::exists("/proc/self/fd")) GTEST_SKIP() << "there is no /proc here";
  file.open(tree, "a.jpg");
  const int fd = descriptor_of(folder.path() / "a.jpg");
  ASSERT_GE(fd, 0);
  ASSERT_EQ(close(fd), 0);
  EXPECT_THROW(file.close(), SavingFailure);
  EXPECT_FALSE(file.is_open());
}

TEST_F(RecoveredFileTest, AbandoningKeepsWhatCanBeKeptAndIsSilent) {
  const std::vector<std::byte> memory = sectors(1, 3);
  file.open(tree, "a.jpg");
  file.append({.data = memory.data(), .count = 3, .origin = {}});
  {
    const FileSizeLimit limit(2 * sector_size);
    file.abandon();
  }
  EXPECT_FALSE(file.is_open());
  EXPECT_EQ(content("a.jpg"), (std::vector<int>{1, 2}));
  file.open(tree, "b.jpg");
  file.append({.data = memory.data() + sector_size, .count = 1, .origin = {}});
  file.close();
  EXPECT_EQ(content("b.jpg"), (std::vector<int>{2}));
}

TEST_F(RecoveredFileTest, ClosingOrAbandoningWhatIsNotOpenDoesNothing) {
  EXPECT_FALSE(file.is_open());
  EXPECT_NO_THROW(file.close());
  file.abandon();
  EXPECT_TRUE(entries_below(folder.path()).empty());
}

}  // namespace
}  // namespace norvo::test
