#include "util/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

class Umask {
 public:
  explicit Umask(mode_t mask) : before_(umask(mask)) {}
  ~Umask() { umask(before_); }
  Umask(const Umask&) = delete;
  Umask& operator=(const Umask&) = delete;

 private:
  mode_t before_;
};

unsigned permissions(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

class Files : public testing::Test {
 protected:
  fs::path at(const fs::path& relative) const { return folder_.path() / relative; }

  test::TemporaryFolder folder_;
};

using CreateFolder = Files;
using DeleteFile = Files;
using EntriesOf = Files;
using ReadWholeFile = Files;

TEST_F(CreateFolder, MakesTheFolderWithAllMissingParents) {
  EXPECT_TRUE(Create_Folder(at("a/b/c")));
  EXPECT_TRUE(fs::is_directory(at("a/b/c")));
}

TEST_F(CreateFolder, GivesEveryFolderItMakesAllPermissionsWhateverTheUmask) {
  const Umask umask(077);
  EXPECT_TRUE(Create_Folder(at("a/b/c")));
  EXPECT_EQ(permissions(at("a")), 0777U);
  EXPECT_EQ(permissions(at("a/b")), 0777U);
  EXPECT_EQ(permissions(at("a/b/c")), 0777U);
}

TEST_F(CreateFolder, LeavesAnExistingFolderAlone) {
  fs::create_directory(at("a"));
  test::write_file(at("a/file"), "kept");
  ASSERT_EQ(chmod(at("a").c_str(), 0700), 0);
  EXPECT_TRUE(Create_Folder(at("a")));
  EXPECT_EQ(permissions(at("a")), 0700U);
  EXPECT_EQ(test::read_file(at("a/file")), "kept");
}

TEST_F(CreateFolder, LeavesTheParentsThatExistAlone) {
  fs::create_directory(at("a"));
  ASSERT_EQ(chmod(at("a").c_str(), 0700), 0);
  EXPECT_TRUE(Create_Folder(at("a/b")));
  EXPECT_EQ(permissions(at("a")), 0700U);
  EXPECT_TRUE(fs::is_directory(at("a/b")));
}

TEST_F(CreateFolder, IsContentWithAPlainFileAndLeavesItAlone) {
  test::write_file(at("plain"), "content");
  ASSERT_EQ(chmod(at("plain").c_str(), 0640), 0);
  EXPECT_TRUE(Create_Folder(at("plain")));
  EXPECT_TRUE(fs::is_regular_file(at("plain")));
  EXPECT_EQ(test::read_file(at("plain")), "content");
  EXPECT_EQ(permissions(at("plain")), 0640U);
}

TEST_F(CreateFolder, IsContentWithALinkToAFolder) {
  fs::create_directory(at("real"));
  fs::create_directory_symlink(at("real"), at("link"));
  EXPECT_TRUE(Create_Folder(at("link")));
  EXPECT_TRUE(fs::is_symlink(at("link")));
  EXPECT_TRUE(Create_Folder(at("link/below")));
  EXPECT_TRUE(fs::is_directory(at("real/below")));
}

TEST_F(CreateFolder, FailsBelowAPlainFile) {
  test::write_file(at("plain"), "content");
  EXPECT_FALSE(Create_Folder(at("plain/below")));
  EXPECT_FALSE(Create_Folder(at("plain/below/deeper")));
  EXPECT_EQ(test::read_file(at("plain")), "content");
}

TEST_F(CreateFolder, FailsForANameThatNoFileSystemTakes) {
  EXPECT_FALSE(Create_Folder(at(std::string(300, 'x'))));
}

TEST_F(CreateFolder, TakesATrailingSlash) {
  EXPECT_TRUE(Create_Folder(at("a/b/")));
  EXPECT_TRUE(fs::is_directory(at("a/b")));
}

TEST_F(DeleteFile, RemovesAFile) {
  test::write_file(at("file"), "content");
  test::write_file(at("other"), "content");
  Delete_File(at("file"));
  EXPECT_FALSE(fs::exists(at("file")));
  EXPECT_TRUE(fs::exists(at("other")));
}

TEST_F(DeleteFile, RemovesAFolderWithItsContents) {
  fs::create_directories(at("a/b/c"));
  test::write_file(at("a/b/file"), "content");
  Delete_File(at("a"));
  EXPECT_FALSE(fs::exists(at("a")));
}

TEST_F(DeleteFile, RemovesALinkAndNotWhatItPointsTo) {
  fs::create_directory(at("real"));
  test::write_file(at("real/file"), "content");
  fs::create_symlink(at("real/file"), at("file link"));
  fs::create_directory_symlink(at("real"), at("folder link"));
  Delete_File(at("file link"));
  Delete_File(at("folder link"));
  EXPECT_FALSE(fs::is_symlink(at("file link")));
  EXPECT_FALSE(fs::is_symlink(at("folder link")));
  EXPECT_EQ(test::read_file(at("real/file")), "content");
}

TEST_F(DeleteFile, DoesNotFollowLinksInsideAFolder) {
  fs::create_directories(at("real"));
  test::write_file(at("real/file"), "content");
  fs::create_directory(at("a"));
  fs::create_directory_symlink(at("real"), at("a/link"));
  Delete_File(at("a"));
  EXPECT_FALSE(fs::exists(at("a")));
  EXPECT_EQ(test::read_file(at("real/file")), "content");
}

TEST_F(DeleteFile, RemovesALinkToNothing) {
  fs::create_symlink(at("nowhere"), at("link"));
  Delete_File(at("link"));
  EXPECT_FALSE(fs::is_symlink(at("link")));
}

TEST_F(DeleteFile, KeepsSilentAboutFailures) {
  test::write_file(at("plain"), "content");
  EXPECT_NO_THROW(Delete_File(at("missing")));
  EXPECT_NO_THROW(Delete_File(at("plain/below")));
  EXPECT_NO_THROW(Delete_File(at(std::string(300, 'x'))));
  EXPECT_EQ(test::read_file(at("plain")), "content");
}

TEST_F(EntriesOf, AreSortedByName) {
  for (const char* name : {"b", "a", "c"}) test::write_file(at(name), "x");
  EXPECT_EQ(entries_of(folder_.path()), (std::vector<fs::path>{at("a"), at("b"), at("c")}));
}

TEST_F(EntriesOf, AreNoneWhereThereIsNoReadableFolder) {
  test::write_file(at("file"), "x");
  EXPECT_TRUE(entries_of(at("file")).empty());
  EXPECT_TRUE(entries_of(at("missing")).empty());
}

TEST_F(ReadWholeFile, ReturnsEveryByte) {
  const std::string content("a\r\nb\0\xFFz\n", 8);
  test::write_file(at("file"), content);
  EXPECT_EQ(read_whole_file(at("file"), 100), content);
  test::write_file(at("empty"), "");
  EXPECT_EQ(read_whole_file(at("empty"), 0), "");
}

TEST_F(ReadWholeFile, RefusesAFileAboveTheLimit) {
  test::write_file(at("file"), "12345");
  EXPECT_EQ(read_whole_file(at("file"), 5), "12345");
  EXPECT_EQ(read_whole_file(at("file"), 4), std::nullopt);
}

TEST_F(ReadWholeFile, RefusesWhatIsNoReadableRegularFile) {
  fs::create_directory(at("folder"));
  ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
  EXPECT_EQ(read_whole_file(at("missing"), 100), std::nullopt);
  EXPECT_EQ(read_whole_file(at("folder"), 100), std::nullopt);
  EXPECT_EQ(read_whole_file(at("pipe"), 100), std::nullopt);
  if (geteuid() != 0) {
    test::write_file(at("secret"), "content");
    ASSERT_EQ(chmod(at("secret").c_str(), 0), 0);
    EXPECT_EQ(read_whole_file(at("secret"), 100), std::nullopt);
  }
}

}  // namespace
}  // namespace norvo
