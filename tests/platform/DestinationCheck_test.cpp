#include "platform/linux/DestinationCheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/System.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

// A device tree as the kernel shows it: folders of devices, a disk's partitions inside its folder,
// and beside them a folder with a link for each device number.
class DeviceTree : public testing::Test {
 protected:
  DeviceTree() {
    fs::create_directories(tree());
    add_disk("sda", "8:0");
    add_partition("sda", "sda1", "8:1");
    add_disk("sdb", "8:16");
    add_partition("sdb", "sdb1", "8:17");
    add_partition("sdb", "sdb2", "8:18");
  }

  fs::path tree() const { return folder_.path() / "dev/block"; }
  fs::path devices() const { return folder_.path() / "devices/virtual/block"; }

  void add_disk(const std::string& name, const std::string& number) const {
    add(devices() / name, number);
  }

  void add_partition(const std::string& disk, const std::string& name,
                     const std::string& number) const {
    add(devices() / disk / name, number);
    test::write_file(devices() / disk / name / "partition", "1\n");
  }

  // A mapping that lies on the device in the folder `below`.
  void map(const std::string& name, const fs::path& below) const {
    const fs::path slaves = devices() / name / "slaves";
    fs::create_directories(slaves);
    fs::create_directory_symlink(fs::path("../../..") / "block" / below, slaves / below.filename());
  }

  bool is_on(const std::string& holder, const std::string& device) const {
    return is_on_block_device(tree(), holder, device);
  }

 private:
  void add(const fs::path& folder, const std::string& number) const {
    fs::create_directories(folder);
    test::write_file(folder / "dev", number + "\n");
    fs::create_directory_symlink(folder, tree() / number);
  }

  test::TemporaryFolder folder_;
};

TEST_F(DeviceTree, ADeviceIsOnItself) {
  EXPECT_TRUE(is_on("8:16", "8:16"));
  EXPECT_TRUE(is_on("8:17", "8:17"));
}

TEST_F(DeviceTree, APartitionIsOnItsDisk) {
  EXPECT_TRUE(is_on("8:17", "8:16"));
  EXPECT_TRUE(is_on("8:18", "8:16"));
}

TEST_F(DeviceTree, DevicesBesideEachOtherAreNotOnEachOther) {
  EXPECT_FALSE(is_on("8:0", "8:16"));
  EXPECT_FALSE(is_on("8:17", "8:0"));
  EXPECT_FALSE(is_on("8:17", "8:18"));
  EXPECT_FALSE(is_on("8:17", "8:1"));
  EXPECT_FALSE(is_on("8:1", "8:16"));
}

TEST_F(DeviceTree, AMappingIsOnEveryDeviceBelowIt) {
  add_disk("dm-0", "253:0");
  map("dm-0", "sda/sda1");
  map("dm-0", "sdb/sdb1");
  EXPECT_TRUE(is_on("253:0", "8:1"));
  EXPECT_TRUE(is_on("253:0", "8:0"));
  EXPECT_TRUE(is_on("253:0", "8:17"));
  EXPECT_TRUE(is_on("253:0", "8:16"));
  EXPECT_FALSE(is_on("253:0", "8:18"));
  EXPECT_FALSE(is_on("8:17", "253:0"));
}

TEST_F(DeviceTree, AMappingOnAMappingIsOnTheDisk) {
  add_disk("dm-0", "253:0");
  add_disk("dm-1", "253:1");
  add_disk("dm-2", "253:2");
  map("dm-0", "sdb/sdb2");
  map("dm-1", "dm-0");
  map("dm-2", "dm-1");
  EXPECT_TRUE(is_on("253:2", "8:16"));
  EXPECT_TRUE(is_on("253:2", "253:0"));
  EXPECT_FALSE(is_on("253:2", "8:0"));
  EXPECT_FALSE(is_on("253:1", "253:2"));
}

TEST_F(DeviceTree, APartitionOfAMappingIsOnTheMapping) {
  add_disk("md0", "9:0");
  map("md0", "sdb");
  add_partition("md0", "md0p1", "259:0");
  EXPECT_TRUE(is_on("259:0", "9:0"));
}

TEST_F(DeviceTree, APartitionOfAMappingIsOnTheDiskBelowTheMapping) {
  add_disk("md0", "9:0");
  map("md0", "sdb");
  add_partition("md0", "md0p1", "259:0");
  EXPECT_TRUE(is_on("259:0", "8:16"));
  EXPECT_FALSE(is_on("259:0", "8:0"));
}

TEST_F(DeviceTree, ATreeThatGoesInCirclesEnds) {
  add_disk("dm-0", "253:0");
  add_disk("dm-1", "253:1");
  map("dm-0", "dm-1");
  map("dm-1", "dm-0");
  EXPECT_TRUE(is_on("253:0", "253:1"));
  EXPECT_FALSE(is_on("253:0", "8:16"));
}

TEST_F(DeviceTree, ALinkToADeviceThatIsGoneIsPassedOver) {
  add_disk("dm-0", "253:0");
  map("dm-0", "sdz");
  map("dm-0", "sdb/sdb1");
  EXPECT_TRUE(is_on("253:0", "8:16"));
  EXPECT_FALSE(is_on("253:0", "8:0"));
}

TEST_F(DeviceTree, AnUnknownDeviceIsOnNothing) {
  EXPECT_FALSE(is_on("0:42", "8:16"));
  EXPECT_FALSE(is_on("8:16", "0:42"));
  EXPECT_FALSE(is_on_block_device(tree() / "nowhere", "8:16", "8:16"));
}

TEST_F(DeviceTree, NumbersAreComparedWhole) {
  add_disk("sdc", "8:160");
  EXPECT_FALSE(is_on("8:160", "8:16"));
  EXPECT_FALSE(is_on("8:16", "8:160"));
  EXPECT_FALSE(is_on("8:16", "8:1"));
}

TEST(LiesOnDevice, IsFalseForADiskImageAndForWhatIsNotThere) {
  const test::TemporaryFolder folder;
  test::write_file(folder.path() / "image", test::zero_sectors(1));
  EXPECT_FALSE(lies_on_device(folder.path(), folder.path() / "image"));
  EXPECT_FALSE(lies_on_device(folder.path() / "new/folder", folder.path() / "image"));
  EXPECT_FALSE(lies_on_device(folder.path(), folder.path() / "nowhere"));
  EXPECT_FALSE(lies_on_device(folder.path(), folder.path()));
}

}  // namespace
}  // namespace norvo
