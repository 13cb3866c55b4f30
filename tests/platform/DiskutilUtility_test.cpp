// The disk utility of macOS with a stand-in for diskutil.
#include "platform/macos/DiskutilUtility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "storage/DriveList.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class FakeVolumes final : public MountedVolumes {
 public:
  std::vector<fs::path> removable() override { return {"/Volumes/CARD", "/Volumes/GONE"}; }
  std::vector<fs::path> local() override { return {"/", "/System/Volumes/Data", "/Volumes/CARD"}; }
};

class DiskutilUtilityTest : public testing::Test {
 protected:
  fs::path diskutil(const std::string& script) const {
    const fs::path path = folder_.path() / "diskutil";
    test::write_file(path, "#!/bin/sh\n" + script);
    fs::permissions(path, fs::perms::owner_all);
    return path;
  }

  // Answers about each path but GONE with a volume that is named after it.
  fs::path answering() const {
    return diskutil(
        "[ \"$1 $2 $#\" = 'info -plist 3' ] || exit 1\n"
        "case \"$3\" in *GONE*) echo \"Could not find disk: $3\"; exit 1;; esac\n"
        "echo \"<plist><dict><key>DeviceIdentifier</key><string>disk2s1</string>\"\n"
        "echo \"<key>IOKitSize</key><integer>1000</integer>\"\n"
        "echo \"<key>VolumeName</key><string>$3</string></dict></plist>\"\n");
  }

  test::TemporaryFolder folder_;
  FakeVolumes volumes_;
};

TEST_F(DiskutilUtilityTest, TheListsAreTheSystems) {
  DiskutilUtility utility(volumes_, "/nowhere/diskutil");
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/Volumes/CARD", "/Volumes/GONE"));
  EXPECT_THAT(utility.mountedLocalVolumePaths(),
              ElementsAre("/", "/System/Volumes/Data", "/Volumes/CARD"));
}

TEST_F(DiskutilUtilityTest, DiskutilIsAskedForAPropertyListOnThePath) {
  DiskutilUtility utility(volumes_, answering());
  const auto report = utility.info("/Volumes/My $HOME; 'card'");
  ASSERT_TRUE(report);
  EXPECT_EQ(report->text("VolumeName"), u"/Volumes/My $HOME; 'card'");
  EXPECT_EQ(report->number("IOKitSize"), 1000U);
}

TEST_F(DiskutilUtilityTest, WithoutAnAnswerNothingIsKnown) {
  EXPECT_FALSE(DiskutilUtility(volumes_, answering()).info("/Volumes/GONE"));
  EXPECT_FALSE(DiskutilUtility(volumes_, diskutil("kill -9 $$\n")).info("/"));
  EXPECT_FALSE(DiskutilUtility(volumes_, diskutil("exec yes '<plist>'\n")).info("/"));
  EXPECT_FALSE(DiskutilUtility(volumes_, folder_.path() / "not-there").info("/"));
}

TEST_F(DiskutilUtilityTest, ADiskutilThatDoesNotEndIsNotWaitedForBeyondItsTime) {
  DiskutilUtility utility(volumes_, diskutil("exec sleep 300\n"), std::chrono::milliseconds(300));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(utility.info("/Volumes/CARD"));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST_F(DiskutilUtilityTest, TheDriveListIsMadeFromItsAnswers) {
  DiskutilUtility utility(volumes_, answering());
  DriveList list(utility, false);
  list.Reload_Drive_list_Function();
  EXPECT_THAT(list.nsMutaryOfDataObject(),
              ElementsAre(MyDataObject::initWithString1(u"disk2s1", u"/Volumes/CARD", u"",
                                                        u"1000.00 bytes ", u"", u"1")));
}

}  // namespace
}  // namespace norvo
