#include "platform/linux/OpenerGuard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/EmptyDrive.h"
#include "support/FileContent.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

TEST(DevicePath, IsACanonicalPathBelowDev) {
  for (const std::string_view path :
       {"/dev/sda"sv, "/dev/sda1"sv, "/dev/nvme0n1p2"sv, "/dev/mapper/group-name"sv, "/dev/a b"sv,
        "/dev/.hidden"sv, "/dev/..."sv, "/dev/a..b"sv, "/dev/a/b/c"sv, "/dev/dev"sv,
        "/dev/\xC3\xBC\xFF"sv}) {
    EXPECT_TRUE(is_device_path(path)) << path;
  }
}

TEST(DevicePath, IsNothingElse) {
  for (const std::string_view path : {""sv,
                                      "/"sv,
                                      "/dev"sv,
                                      "/dev/"sv,
                                      "dev/sda"sv,
                                      "sda"sv,
                                      "/devices/sda"sv,
                                      "/Dev/sda"sv,
                                      "//dev/sda"sv,
                                      "/dev//sda"sv,
                                      "/dev/sda/"sv,
                                      "/dev/a//b"sv,
                                      "/dev/."sv,
                                      "/dev/.."sv,
                                      "/dev/./sda"sv,
                                      "/dev/../dev/sda"sv,
                                      "/dev/../etc/shadow"sv,
                                      "/dev/a/../../etc/shadow"sv,
                                      "/dev/a/."sv,
                                      "/dev/a/.."sv,
                                      "/etc/shadow"sv,
                                      "/proc/self/fd/3"sv,
                                      " /dev/sda"sv,
                                      "/dev/sda\0"sv,
                                      "/dev/sda\0/x"sv,
                                      "\0/dev/sda"sv}) {
    EXPECT_FALSE(is_device_path(path)) << path;
  }
}

TEST(DevicePath, HasALengthLimit) {
  const std::string longest = "/dev/" + std::string(longest_device_path - 5, 'x');
  EXPECT_TRUE(is_device_path(longest));
  EXPECT_FALSE(is_device_path(longest + "x"));
}

// A folder in the one place below /dev where anybody may make files.
class FolderBelowDev : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = "/dev/shm/norvo-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) GTEST_SKIP() << "nobody may write to /dev/shm";
    folder_ = name;
  }
  void TearDown() override { fs::remove_all(folder_); }

  static int error_of(const fs::path& path) {
    const OpenedNode node = open_block_device(path);
    EXPECT_FALSE(node.fd);
    return node.error;
  }

  fs::path folder_;
};

TEST_F(FolderBelowDev, AFileIsNoBlockDevice) {
  test::write_file(folder_ / "file", "text");
  EXPECT_EQ(error_of(folder_ / "file"), ENOTBLK);
}

TEST_F(FolderBelowDev, AFolderIsNoBlockDevice) {
  EXPECT_EQ(error_of(folder_), ENOTBLK);
}

TEST_F(FolderBelowDev, APipeIsRefusedWithoutWaiting) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(error_of(folder_ / "pipe"), ENOTBLK);
}

TEST_F(FolderBelowDev, ALinkIsRefusedAtTheEndAndOnTheWay) {
  fs::create_symlink("/dev/null", folder_ / "link");
  fs::create_directory(folder_ / "real");
  fs::create_symlink("real", folder_ / "folder");
  test::write_file(folder_ / "real/file", "text");
  EXPECT_EQ(error_of(folder_ / "link"), ELOOP);
  EXPECT_EQ(error_of(folder_ / "folder/file"), ELOOP);
  EXPECT_EQ(error_of(folder_ / "real/file"), ENOTBLK);
}

TEST_F(FolderBelowDev, WhatIsNotThereIsSaidSo) {
  test::write_file(folder_ / "file", "text");
  EXPECT_EQ(error_of(folder_ / "nothing"), ENOENT);
  EXPECT_EQ(error_of(folder_ / "nothing/below"), ENOENT);
  EXPECT_EQ(error_of(folder_ / "file/below"), ENOTDIR);
}

TEST(OpenBlockDevice, RefusesCharacterDevices) {
  EXPECT_EQ(open_block_device("/dev/null").error, ENOTBLK);
}

TEST(OpenBlockDevice, RefusesWhatIsNoDevicePathWhetherItIsThereOrNot) {
  EXPECT_EQ(open_block_device("/etc/passwd").error, EACCES);
  EXPECT_EQ(open_block_device("/nothing").error, EACCES);
  EXPECT_EQ(open_block_device("/dev/../dev/null").error, EACCES);
  EXPECT_EQ(open_block_device("").error, EACCES);
}

TEST(OpenBlockDevice, ADriveWithoutAMediumIsSaidToHaveNone) {
  const fs::path drive = test::device_without_medium();
  if (drive.empty()) GTEST_SKIP() << "no block device without a medium that may be opened";
  const OpenedNode node = open_block_device(drive);
  EXPECT_FALSE(node.fd);
  EXPECT_EQ(node.error, ENOMEDIUM);
}

TEST(OpenBlockDevice, OpensForReadingOnly) {
  for (const fs::directory_entry& entry : fs::directory_iterator("/dev")) {
    if (!fs::is_block_file(entry.symlink_status())) continue;
    const OpenedNode node = open_block_device(entry.path());
    if (!node.fd) continue;
    EXPECT_EQ(node.error, 0);
    EXPECT_EQ(fcntl(node.fd.get(), F_GETFL) & O_ACCMODE, O_RDONLY);
    EXPECT_NE(fcntl(node.fd.get(), F_GETFD) & FD_CLOEXEC, 0);
    return;
  }
  GTEST_SKIP() << "no block device that may be opened";
}

}  // namespace
}  // namespace norvo
