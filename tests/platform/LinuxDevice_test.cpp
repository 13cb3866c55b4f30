// Devices and disk images as this system opens them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/EmptyDrive.h"
#include "platform/System.h"
#include "support/FileTree.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;

// A file of numbered sectors and a rest, in memory or on a disk.
class Image {
 public:
  static constexpr int sectors = 20;
  static constexpr std::size_t rest = 100;

  explicit Image(const fs::path& folder) : path_(folder / "norvo-test-XXXXXX") {
    std::string name = path_;
    UniqueFd fd(mkstemp(name.data()));
    path_ = name;
    std::ofstream file(path_, std::ios::binary);
    for (int s = 0; s < sectors; ++s) file << std::string(512, static_cast<char>('a' + s));
    file << std::string(rest, 'z');
  }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;
  ~Image() { fs::remove(path_); }

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

std::string read_with(Device& device, std::uint64_t offset, std::size_t length, bool one_sector) {
  std::vector<std::byte> bytes(length, std::byte{'?'});
  const std::int64_t got =
      one_sector ? device.read_sector(offset, bytes) : device.read_block(offset, bytes);
  if (got < 0) return "failed";
  std::string text;
  for (std::int64_t i = 0; i < got; ++i) {
    text += static_cast<char>(bytes[static_cast<std::size_t>(i)]);
  }
  return text;
}

OpenedDevice open_device_at(const fs::path& path) {
  return make_system_device_opener()->open(path);
}

class LinuxDeviceTest : public testing::TestWithParam<const char*> {};

TEST_P(LinuxDeviceTest, ReadsAnImageInBlocksAndSectorBySectorAlike) {
  const Image image(GetParam());
  const OpenedDevice opened = open_device_at(image.path());
  ASSERT_NE(opened.device, nullptr);
  EXPECT_EQ(read_with(*opened.device, 512, 1024, false),
            std::string(512, 'b') + std::string(512, 'c'));
  for (int s = 0; s < Image::sectors; ++s) {
    const std::uint64_t offset = static_cast<std::uint64_t>(s) * 512;
    const std::string wanted(512, static_cast<char>('a' + s));
    EXPECT_EQ(read_with(*opened.device, offset, 512, true), wanted);
    EXPECT_EQ(read_with(*opened.device, offset, 512, false), wanted);
  }
}

TEST_P(LinuxDeviceTest, ASectorAtTheEndBringsTheBytesThatExist) {
  const Image image(GetParam());
  const OpenedDevice opened = open_device_at(image.path());
  ASSERT_NE(opened.device, nullptr);
  const std::uint64_t end = std::uint64_t{Image::sectors} * 512;
  EXPECT_EQ(read_with(*opened.device, end, 512, true), std::string(Image::rest, 'z'));
  EXPECT_EQ(read_with(*opened.device, end + 512, 512, true), "");
}

TEST_P(LinuxDeviceTest, TheSizeOfAnImageIsThatOfItsFile) {
  const Image image(GetParam());
  const DeviceSize size = device_size(image.path());
  EXPECT_EQ(size.bytes, 20U * 512 + 100);
  EXPECT_EQ(size.error, 0);
}

TEST_P(LinuxDeviceTest, OpensForReadingOnlyAndKeepsTheDescriptorToItself) {
  const Image image(GetParam());
  const OpenedDevice opened = open_device_at(image.path());
  ASSERT_NE(opened.device, nullptr);
  int found = 0;
  for (int fd = 3; fd < 256; ++fd) {
    std::error_code error;
    if (fs::read_symlink("/proc/self/fd/" + std::to_string(fd), error) != image.path()) continue;
    ++found;
    EXPECT_EQ(fcntl(fd, F_GETFL) & O_ACCMODE, O_RDONLY);
    EXPECT_NE(fcntl(fd, F_GETFD) & FD_CLOEXEC, 0);
    static_cast<void>(read_with(*opened.device, 0, 512, true));
    EXPECT_EQ(fcntl(fd, F_GETFL) & O_DIRECT, 0);
  }
  EXPECT_EQ(found, 1);
}

TEST_P(LinuxDeviceTest, AHintChangesNothing) {
  const Image image(GetParam());
  const OpenedDevice opened = open_device_at(image.path());
  ASSERT_NE(opened.device, nullptr);
  opened.device->will_need(512, 4096);
  opened.device->will_need(1'000'000, 4096);
  EXPECT_EQ(read_with(*opened.device, 0, 512, false), std::string(512, 'a'));
}

// In memory, where direct reads may be refused, and on a disk.
INSTANTIATE_TEST_SUITE_P(FileSystems, LinuxDeviceTest, testing::Values("/dev/shm", "/var/tmp"),
                         [](const auto& place) {
                           return std::string(place.index == 0 ? "InMemory" : "OnADisk");
                         });

void expect_open_error(const fs::path& path, int error) {
  const OpenedDevice opened = open_device_at(path);
  EXPECT_EQ(opened.device, nullptr);
  EXPECT_EQ(opened.error, error) << path << ": " << std::strerror(opened.error);
  const DeviceSize size = device_size(path);
  EXPECT_EQ(size.bytes, 0U);
  EXPECT_EQ(size.error, error);
}

TEST(LinuxDevice, WhatDoesNotExistCannotBeOpened) {
  const TemporaryFolder folder;
  expect_open_error(folder.path() / "nothing", ENOENT);
  make_file(folder.path() / "file", "text");
  expect_open_error(folder.path() / "file/below", ENOTDIR);
}

TEST(LinuxDevice, AFolderIsNoDevice) {
  const TemporaryFolder folder;
  expect_open_error(folder.path(), EISDIR);
}

TEST(LinuxDevice, APipeIsRefusedWithoutWaitingForItsWriter) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0666), 0);
  expect_open_error(folder.path() / "pipe", ENOTBLK);
}

TEST(LinuxDevice, ACharacterDeviceIsRefused) {
  expect_open_error("/dev/null", ENOTBLK);
}

TEST(LinuxDevice, WhatMayNotBeReadIsRefusedWithEacces) {
  const TemporaryFolder folder;
  const fs::path secret = folder.path() / "secret";
  make_file(secret, "text");
  fs::permissions(secret, fs::perms::none);
  // Root reads everything, so it becomes somebody else meanwhile.
  constexpr uid_t nobody = 65534;
  const bool root = geteuid() == 0;
  if (root) {
    fs::permissions(folder.path(), fs::perms::owner_all | fs::perms::others_exec);
    ASSERT_EQ(seteuid(nobody), 0);
  }
  expect_open_error(secret, EACCES);
  if (root) {
    ASSERT_EQ(seteuid(0), 0);
  }
}

TEST(LinuxDevice, AnEmptyImageIsOpenedAndHasNoBytes) {
  const TemporaryFolder folder;
  make_file(folder.path() / "empty", "");
  const OpenedDevice opened = open_device_at(folder.path() / "empty");
  ASSERT_NE(opened.device, nullptr);
  EXPECT_EQ(read_with(*opened.device, 0, 512, false), "");
  EXPECT_EQ(device_size(folder.path() / "empty").error, 0);
}

TEST(LinuxDevice, ADriveWithoutAMediumIsSaidToHaveNone) {
  const fs::path drive = device_without_medium();
  if (drive.empty()) GTEST_SKIP() << "no block device without a medium that may be opened";
  expect_open_error(drive, ENOMEDIUM);
}

TEST(LinuxDevice, ALinkToAnImageIsFollowed) {
  const TemporaryFolder folder;
  make_file(folder.path() / "image", std::string(512, 'a'));
  fs::create_symlink("image", folder.path() / "link");
  EXPECT_NE(open_device_at(folder.path() / "link").device, nullptr);
}

}  // namespace
}  // namespace norvo::test
