// The disk utility with stand-ins for lsblk.
#include "platform/linux/LinuxDiskUtility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "storage/DriveList.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LinuxDiskUtilityTest : public testing::Test {
 protected:
  // A program that notes its arguments and then does `script`.
  fs::path lsblk(const std::string& script) const {
    const fs::path path = folder_.path() / "lsblk";
    test::write_file(path, "#!/bin/sh\necho \"$@\" >>" + calls_file().string() + "\n" + script);
    fs::permissions(path, fs::perms::owner_all);
    return path;
  }
  fs::path calls_file() const { return folder_.path() / "calls"; }
  std::string calls() const { return test::read_file(calls_file()); }

  static std::string answer(const std::string& devices) {
    return "echo '{\"blockdevices\":[" + devices + "]}'\n";
  }

  const std::string stick_ =
      R"({"kname":"sdb1","tran":"usb","size":1024,"mountpoints":["/media/stick"]})";
  const std::string disk_ = R"({"kname":"sda1","tran":"sata","mountpoints":["/"]})";
  test::TemporaryFolder folder_;
};

TEST_F(LinuxDiskUtilityTest, ListsWhatLsblkSays) {
  LinuxDiskUtility utility({lsblk(answer(disk_ + "," + stick_))});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
  EXPECT_THAT(utility.mountedLocalVolumePaths(), ElementsAre("/", "/media/stick"));
  EXPECT_EQ(utility.info("/media/stick")->number("IOKitSize"), 1024U);
}

TEST_F(LinuxDiskUtilityTest, AsksOnceForAnEnumerationAndItsReports) {
  LinuxDiskUtility utility({lsblk(answer(disk_ + "," + stick_))});
  for (const fs::path& path : utility.mountedLocalVolumePaths()) utility.info(path);
  EXPECT_EQ(
      calls(),
      "--json --bytes -o PATH,KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,"
      "FSTYPE,FSVER,MOUNTPOINTS\n");
}

TEST_F(LinuxDiskUtilityTest, EveryEnumerationLooksAnew) {
  LinuxDiskUtility utility({lsblk(answer(stick_))});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
  lsblk(answer(disk_));
  EXPECT_THAT(utility.mountedRemovableMedia(), IsEmpty());
  EXPECT_FALSE(utility.info("/media/stick"));
}

TEST_F(LinuxDiskUtilityTest, AReportCanBeHadWithoutAnEnumeration) {
  LinuxDiskUtility utility({lsblk(answer(stick_))});
  EXPECT_EQ(utility.info("sdb1")->text("BusProtocol"), u"USB");
}

// What a version without these columns does.
std::string refusal(const std::string& unknown) {
  return "case \"$*\" in " + unknown + ") echo 'lsblk: unknown column' >&2; exit 1;; esac\n";
}

TEST_F(LinuxDiskUtilityTest, ALsblkWithOneMountPointStillTellsTheVersionOfAFileSystem) {
  LinuxDiskUtility utility(
      {lsblk(refusal("*MOUNTPOINTS*") + "fsver=\n" +
             "case \"$*\" in *FSVER*MOUNTPOINT) fsver='\"fsver\":\"FAT16\",';; esac\n" +
             "echo '{\"blockdevices\":[{\"kname\":\"sdb1\",\"rm\":true,\"fstype\":\"vfat\",'"
             "\"$fsver\"'\"mountpoint\":\"/media/stick\"}]}'\n")});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
  EXPECT_EQ(utility.info("/media/stick")->text("FilesystemUserVisibleName"), u"MS-DOS (FAT16)");
}

TEST_F(LinuxDiskUtilityTest, AnOlderLsblkIsAskedForItsOwnColumns) {
  LinuxDiskUtility utility(
      {lsblk(refusal("*MOUNTPOINTS*|*FSVER*|*PATH*") +
             answer(R"({"kname":"sdb1","rm":"1","size":"1024","mountpoint":"/media/stick"})"))});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
  EXPECT_THAT(calls(), HasSubstr("\n--json --bytes -o KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,"
                                 "TRAN,VENDOR,MODEL,LABEL,FSTYPE,MOUNTPOINT\n"));
}

// It ends with a status of its own when a device went away meanwhile.
TEST_F(LinuxDiskUtilityTest, TheStatusDoesNotMatterWhenThereIsAnAnswer) {
  LinuxDiskUtility utility({lsblk(answer(stick_) + "exit 64\n")});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
}

TEST_F(LinuxDiskUtilityTest, TheFirstProgramThatIsThereIsAsked) {
  LinuxDiskUtility utility({folder_.path() / "not-there", lsblk(answer(stick_))});
  EXPECT_THAT(utility.mountedRemovableMedia(), ElementsAre("/media/stick"));
}

TEST_F(LinuxDiskUtilityTest, WithoutAnAnswerThereAreNoDrives) {
  for (const char* script : {"exit 1\n", "echo nonsense\n", "kill -9 $$\n", ""}) {
    LinuxDiskUtility utility({lsblk(script)});
    EXPECT_THAT(utility.mountedRemovableMedia(), IsEmpty()) << script;
    EXPECT_THAT(utility.mountedLocalVolumePaths(), IsEmpty()) << script;
    EXPECT_FALSE(utility.info("/")) << script;
  }
  LinuxDiskUtility nothing({folder_.path() / "not-there"});
  EXPECT_THAT(nothing.mountedLocalVolumePaths(), IsEmpty());
}

TEST_F(LinuxDiskUtilityTest, TheMountTableNamesAFileSystemThatLsblkDoesNotKnow) {
  const fs::path table = folder_.path() / "mountinfo";
  test::write_file(table,
                   "36 35 8:17 / /media/stick rw - vfat /dev/sdb1 rw\n"
                   "37 35 8:1 / / rw - ext4 /dev/sda1 rw\n");
  const std::string known = R"({"kname":"sda1","fstype":"xfs","mountpoints":["/"]})";
  LinuxDiskUtility utility({lsblk(answer(known + "," + stick_))}, table);
  EXPECT_EQ(utility.info("/media/stick")->text("FilesystemUserVisibleName"), u"MS-DOS (FAT)");
  EXPECT_EQ(utility.info("/")->text("FilesystemUserVisibleName"), u"XFS");
  EXPECT_EQ(utility.info("/elsewhere"), std::nullopt);
  LinuxDiskUtility without_table({lsblk(answer(stick_))}, folder_.path() / "not-there");
  EXPECT_EQ(without_table.info("/media/stick")->text("FilesystemUserVisibleName"), std::nullopt);
}

// The identifiers of the drive list.
std::vector<Text> listed(DiskUtility& utility, bool USE_HARD_DISK) {
  DriveList list(utility, USE_HARD_DISK);
  list.Reload_Drive_list_Function();
  std::vector<Text> identifiers;
  for (const MyDataObject& row : list.nsMutaryOfDataObject()) {
    identifiers.push_back(row.nsStrDiskIdentifier);
  }
  return identifiers;
}

TEST_F(LinuxDiskUtilityTest, AStickThatIsMountedOverAFixedDiskIsListedByEveryEdition) {
  const fs::path table = folder_.path() / "mountinfo";
  const std::string disk = R"({"kname":"sda1","maj:min":"8:1","tran":"sata",)"
                           R"("mountpoints":["/media/stick"]})";
  const std::string stick = R"({"kname":"sdb1","maj:min":"8:17","tran":"usb",)"
                            R"("mountpoints":["/media/stick"]})";
  test::write_file(table,
                   "36 35 8:1 / /media/stick rw - ext4 /dev/sda1 rw\n"
                   "37 36 8:17 / /media/stick rw - vfat /dev/sdb1 rw\n");
  // lsblk goes by the devices and not by what lies above.
  for (const std::string& devices : {disk + "," + stick, stick + "," + disk}) {
    LinuxDiskUtility utility({lsblk(answer(devices))}, table);
    EXPECT_THAT(listed(utility, false), ElementsAre(u"sdb1"));
    EXPECT_THAT(listed(utility, true), ElementsAre(u"sdb1"));
  }
}

TEST_F(LinuxDiskUtilityTest, AVolumeIsListedOnceForAnyOfItsMountPathsThatMayBe) {
  const std::string card = R"({"kname":"sdb1","tran":"usb","mountpoints":)"
                           R"(["/home/ann/private/card","/media/ann/CARD","/srv/card"]})";
  LinuxDiskUtility utility({lsblk(answer(card))});
  EXPECT_THAT(listed(utility, false), ElementsAre(u"sdb1"));
}

TEST_F(LinuxDiskUtilityTest, ALsblkThatDoesNotEndIsNotWaitedForBeyondItsTime) {
  LinuxDiskUtility utility({lsblk("exec sleep 300\n")}, folder_.path() / "not-there",
                           std::chrono::milliseconds(300));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THAT(utility.mountedRemovableMedia(), IsEmpty());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST_F(LinuxDiskUtilityTest, EndlessOutputIsNoAnswer) {
  LinuxDiskUtility utility({lsblk("exec yes '{'\n")});
  EXPECT_THAT(utility.mountedLocalVolumePaths(), IsEmpty());
}

}  // namespace
}  // namespace norvo
