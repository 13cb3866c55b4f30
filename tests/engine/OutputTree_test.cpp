// Folders and files below the destination, and everything that must not lead a write elsewhere.
#include "engine/OutputTree.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <string>

#include "engine/SavingFailure.h"
#include "support/FileTree.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;

class Umask {
 public:
  explicit Umask(mode_t mask) : before_(umask(mask)) {}
  Umask(const Umask&) = delete;
  Umask& operator=(const Umask&) = delete;
  ~Umask() { umask(before_); }

 private:
  mode_t before_;
};

mode_t permissions(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

class OutputTreeTest : public testing::Test {
 protected:
  void expect_refused(const fs::path& file) const {
    EXPECT_THROW(static_cast<void>(tree.create_file(file)), SavingFailure) << file;
  }
  void write_to(const fs::path& file, const std::string& text) const {
    const UniqueFd fd = tree.create_file(file);
    EXPECT_EQ(write(fd.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  TemporaryFolder folder;
  TemporaryFolder elsewhere;
  const fs::path root = folder.path();
  const OutputTree tree{root};
};

TEST_F(OutputTreeTest, MakesAFileWithAllItsFolders) {
  write_to("a/b/c.jpg", "photo");
  EXPECT_EQ(entries_below(root), (std::set<std::string>{"a/", "a/b/", "a/b/c.jpg"}));
  EXPECT_EQ(read_file(root / "a/b/c.jpg"), "photo");
}

TEST_F(OutputTreeTest, EveryFolderItMakesIsOpenToAllWhateverTheUmask) {
  const Umask strict(077);
  const OutputTree deep(root / "new" / "place");
  deep.make_folder("a/b");
  static_cast<void>(deep.create_file("a/c/d/e.jpg"));
  for (const char* made :
       {"new", "new/place", "new/place/a", "new/place/a/b", "new/place/a/c", "new/place/a/c/d"}) {
    EXPECT_EQ(permissions(root / made), 0777U) << made;
  }
  EXPECT_EQ(permissions(root / "new/place/a/c/d/e.jpg"), 0600U);
}

TEST_F(OutputTreeTest, LeavesThePermissionsOfAnExistingFolderAlone) {
  fs::create_directory(root / "a");
  fs::permissions(root / "a", fs::perms::owner_all);
  tree.make_folder("a");
  static_cast<void>(tree.create_file("a/b/c.jpg"));
  EXPECT_EQ(permissions(root / "a"), 0700U);
}

TEST_F(OutputTreeTest, AFileIsOpenForReadingAndWriting) {
  const UniqueFd fd = tree.create_file("a.jpg");
  EXPECT_EQ(fcntl(fd.get(), F_GETFL) & O_ACCMODE, O_RDWR);
  EXPECT_NE(fcntl(fd.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(OutputTreeTest, AnExistingLongerFileIsEmptied) {
  make_file(root / "a/b.jpg", std::string(4000, 'x'));
  write_to("a/b.jpg", "short");
  EXPECT_EQ(read_file(root / "a/b.jpg"), "short");
}

TEST_F(OutputTreeTest, TheDestinationItselfMayBeALink) {
  const fs::path link = elsewhere.path() / "link";
  fs::create_directory_symlink(root, link);
  const OutputTree linked(link);
  linked.make_folder("a");
  static_cast<void>(linked.create_file("a/b.jpg"));
  EXPECT_TRUE(fs::exists(root / "a/b.jpg"));
}

TEST_F(OutputTreeTest, ADestinationThatIsAPlainFileIsRefused) {
  make_file(root / "file", "text");
  const OutputTree wrong(root / "file");
  EXPECT_THROW(wrong.make_folder("a"), SavingFailure);
  EXPECT_THROW(static_cast<void>(wrong.create_file("a")), SavingFailure);
  EXPECT_EQ(read_file(root / "file"), "text");
}

TEST_F(OutputTreeTest, ADestinationThatCannotBeMadeIsRefused) {
  const OutputTree wrong("/dev/null/nowhere");
  EXPECT_THROW(wrong.make_folder("a"), SavingFailure);
}

TEST_F(OutputTreeTest, ALinkInPlaceOfAFolderIsRefusedAtEveryLevel) {
  for (const char* level : {"one", "one/two", "one/two/three"}) {
    SCOPED_TRACE(level);
    fs::remove_all(root / "one");
    fs::create_directories((root / level).parent_path());
    fs::create_directory_symlink(elsewhere.path(), root / level);
    expect_refused("one/two/three/file.jpg");
    EXPECT_THROW(tree.make_folder("one/two/three"), SavingFailure);
    EXPECT_THROW(tree.make_folder("one/two/three/four"), SavingFailure);
    EXPECT_TRUE(entries_below(elsewhere.path()).empty());
  }
}

TEST_F(OutputTreeTest, ALinkWithinTheTreeIsRefusedToo) {
  fs::create_directories(root / "real");
  fs::create_directory_symlink("real", root / "link");
  expect_refused("link/file.jpg");
  EXPECT_TRUE(entries_below(root / "real").empty());
}

TEST_F(OutputTreeTest, ALinkInPlaceOfTheFileIsRefusedWhetherItsTargetExistsOrNot) {
  make_file(elsewhere.path() / "precious", "precious");
  fs::create_symlink(elsewhere.path() / "precious", root / "there.jpg");
  fs::create_symlink(elsewhere.path() / "new", root / "nowhere.jpg");
  expect_refused("there.jpg");
  expect_refused("nowhere.jpg");
  EXPECT_EQ(read_file(elsewhere.path() / "precious"), "precious");
  EXPECT_FALSE(fs::exists(elsewhere.path() / "new"));
}

TEST_F(OutputTreeTest, AFileWithASecondNameIsRefusedAndKeepsItsContent) {
  make_file(elsewhere.path() / "precious", "precious");
  fs::create_hard_link(elsewhere.path() / "precious", root / "a.jpg");
  expect_refused("a.jpg");
  EXPECT_EQ(read_file(elsewhere.path() / "precious"), "precious");
}

TEST_F(OutputTreeTest, APipeIsRefusedWithoutWaitingForItsReader) {
  ASSERT_EQ(mkfifo((root / "a.jpg").c_str(), 0666), 0);
  expect_refused("a.jpg");
}

TEST_F(OutputTreeTest, ADeviceNodeIsRefused) {
  const fs::path node = root / "a.jpg";
  if (mknod(node.c_str(), S_IFCHR | 0666U, makedev(1, 3)) != 0) {
    GTEST_SKIP() << "making a device node needs root";
  }
  expect_refused("a.jpg");
}

TEST_F(OutputTreeTest, AFolderInPlaceOfTheFileIsRefused) {
  fs::create_directory(root / "a.jpg");
  expect_refused("a.jpg");
}

TEST_F(OutputTreeTest, APlainFileInPlaceOfAFolderOnTheWayIsRefused) {
  make_file(root / "a", "text");
  expect_refused("a/b.jpg");
  EXPECT_THROW(tree.make_folder("a/b"), SavingFailure);
  EXPECT_EQ(read_file(root / "a"), "text");
}

TEST_F(OutputTreeTest, APlainFileInPlaceOfTheLastFolderCountsAsMade) {
  make_file(root / "a/b", "text");
  EXPECT_NO_THROW(tree.make_folder("a/b"));
  EXPECT_EQ(read_file(root / "a/b"), "text");
}

TEST_F(OutputTreeTest, AFolderThatExistsCountsAsMade) {
  make_file(root / "a/b/file", "text");
  EXPECT_NO_THROW(tree.make_folder("a/b"));
  EXPECT_EQ(read_file(root / "a/b/file"), "text");
}

TEST_F(OutputTreeTest, APathThatLeavesTheDestinationIsRefused) {
  const std::string with_nul("a\0b.jpg", 7);
  for (const fs::path& path :
       {fs::path("../a.jpg"), fs::path("a/../../b.jpg"), fs::path("a/../b.jpg"), fs::path(".."),
        elsewhere.path() / "a.jpg", fs::path("/a.jpg"), fs::path(with_nul), fs::path(""),
        fs::path("."), fs::path("./")}) {
    expect_refused(path);
    EXPECT_THROW(tree.make_folder(path), SavingFailure) << path;
  }
  EXPECT_TRUE(entries_below(root).empty());
  EXPECT_TRUE(entries_below(elsewhere.path()).empty());
  EXPECT_FALSE(fs::exists(root.parent_path() / "a.jpg"));
}

TEST_F(OutputTreeTest, KeepsNoDescriptorOpen) {
  const auto open_descriptors = [] {
    return std::distance(fs::directory_iterator("/dev/fd"), fs::directory_iterator());
  };
  const auto before = open_descriptors();
  tree.make_folder("a/b/c");
  static_cast<void>(tree.create_file("a/b/c/d.jpg"));
  fs::create_symlink("nowhere", root / "link");
  expect_refused("link/x");
  EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
}  // namespace norvo::test
