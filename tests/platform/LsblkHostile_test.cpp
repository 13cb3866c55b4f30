// What lsblk should never write, and what strangers can make it write.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/LsblkSample.h"
#include "platform/linux/LsblkReport.h"
#include "storage/DriveList.h"

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string nested(int levels) {
  std::string text = R"({"blockdevices":[)";
  for (int i = 0; i < levels; ++i) {
    text += R"({"kname":"d)" + std::to_string(i) + R"(","mountpoints":["/)" + std::to_string(i) +
            R"("],"children":[)";
  }
  for (int i = 0; i < levels; ++i) text += "]}";
  return text + "]}";
}

TEST(LsblkHostile, TextsThatAreNoReportAreRefused) {
  for (const char* text :
       {"", " ", "lsblk: unknown column: FOO\n", "null", "[]", "3", "\"blockdevices\"", "{}",
        R"({"blockdevices":null})", R"({"blockdevices":{}})", R"({"blockdevices":[)",
        R"({"blockdevices":[]}x)", R"({"blockdevices":[{"kname":"sda","size":1e999}]})",
        R"({"blockdevices":[{"kname":"\ud800"}]})"}) {
    EXPECT_FALSE(LsblkReport::parse(text)) << text;
  }
}

TEST(LsblkHostile, EveryCutReportIsRefused) {
  for (std::size_t size = 0; size < test::laptop_lsblk.size(); ++size) {
    ASSERT_FALSE(LsblkReport::parse(test::laptop_lsblk.substr(0, size))) << size;
  }
  EXPECT_TRUE(LsblkReport::parse(test::laptop_lsblk));
}

TEST(LsblkHostile, AReportWithoutDevicesIsEmpty) {
  const auto report = LsblkReport::parse(R"({"blockdevices":[]})");
  ASSERT_TRUE(report);
  EXPECT_THAT(report->mount_paths(), IsEmpty());
}

TEST(LsblkHostile, ValuesOfTheWrongTypeCountAsNotThere) {
  const auto report = LsblkReport::parse(
      R"({"blockdevices":[null,3,"sda",[],{},{"kname":7,"mountpoints":["/a"]},
          {"kname":"","mountpoints":["/b"]},
          {"kname":"sdb","pkname":1,"type":[],"size":-5,"rm":"yes","hotplug":[],"tran":{},
           "vendor":1,"model":true,"label":[1],"fstype":{},"fsver":0,"path":null,
           "mountpoints":[1,null,[],"relative","/ok",{}],"children":"none"},
          {"kname":"sdc","size":1.5,"mountpoints":"/d"},
          {"kname":"sdd","mountpoints":{"a":"/e"},"mountpoint":7}]})");
  ASSERT_TRUE(report);
  EXPECT_THAT(report->mount_paths(), ElementsAre("/ok"));
  EXPECT_THAT(report->removable_mount_paths(), IsEmpty());
  DiskReport expected;
  expected.set("DeviceIdentifier", u"sdb");
  expected.set("ParentWholeDisk", u"sdb");
  EXPECT_EQ(report->info("/ok"), expected);
}

TEST(LsblkHostile, NestingBeyondEverySetUpIsRefused) {
  EXPECT_TRUE(LsblkReport::parse(nested(20)));
  EXPECT_FALSE(LsblkReport::parse(nested(100)));
  EXPECT_FALSE(LsblkReport::parse(nested(20000)));
  EXPECT_FALSE(LsblkReport::parse(R"({"blockdevices":)" + std::string(1000000, '[')));
  EXPECT_FALSE(LsblkReport::parse(R"({"blockdevices":[],"x":)" + std::string(1000, '[') +
                                  std::string(1000, ']') + "}"));
}

TEST(LsblkHostile, TooLongAReportIsRefused) {
  std::string text = R"({"blockdevices":[]})";
  text.resize(lsblk_output_limit, ' ');
  EXPECT_TRUE(LsblkReport::parse(text));
  text += ' ';
  EXPECT_FALSE(LsblkReport::parse(text));
}

TEST(LsblkHostile, ParentsInACircleEndSomewhere) {
  const auto report = LsblkReport::parse(
      R"({"blockdevices":[{"kname":"a","pkname":"b","mountpoints":["/a"]},
          {"kname":"b","pkname":"a"},{"kname":"c","pkname":"c","mountpoints":["/c"]}]})");
  ASSERT_TRUE(report);
  EXPECT_TRUE(report->info("/a")->text("ParentWholeDisk"));
  EXPECT_EQ(report->info("/c")->text("ParentWholeDisk"), u"c");
}

TEST(LsblkHostile, ManyDevicesTakeNoTimeToSpeakOf) {
  std::string text = R"({"blockdevices":[)";
  for (int i = 0; i < 20000; ++i) {
    text += (i == 0 ? "" : ",") + std::string(R"({"kname":"s)") + std::to_string(i) +
            R"(","mountpoints":["/m)" + std::to_string(i) + "\"]}";
  }
  const auto report = LsblkReport::parse(text + "]}");
  ASSERT_TRUE(report);
  EXPECT_EQ(report->mount_paths().size(), 20000U);
  EXPECT_EQ(report->info("/m19999")->text("DeviceIdentifier"), u"s19999");
}

TEST(LsblkHostile, BytesInAnotherEncodingDoNotHideTheOtherDrives) {
  const auto report = LsblkReport::parse(
      "{\"blockdevices\":[{\"kname\":\"sda\",\"label\":\"K\xE4se\",\"mountpoints\":[\"/a\"]},"
      "{\"kname\":\"sdb\",\"label\":\"K\xC3\xA4se\",\"mountpoints\":[\"/K\xC3\xA4se\"]}]}");
  ASSERT_TRUE(report);
  EXPECT_EQ(report->info("/a")->text("VolumeName"), u"K\uFFFDse");
  EXPECT_EQ(report->info("/K\xC3\xA4se")->text("VolumeName"), u"K\u00E4se");
}

// The drive list asks this report.
class ReportedDrives final : public DiskUtility {
 public:
  explicit ReportedDrives(LsblkReport report) : report_(std::move(report)) {}
  std::vector<std::filesystem::path> mountedRemovableMedia() override {
    return report_.removable_mount_paths();
  }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override {
    return report_.mount_paths();
  }
  std::optional<DiskReport> info(const std::filesystem::path& path) override {
    return report_.info(path);
  }

 private:
  LsblkReport report_;
};

TEST(LsblkHostile, AHostileNameIsShownWithoutWhatSteersADisplay) {
  ReportedDrives drives(*LsblkReport::parse(
      R"({"blockdevices":[{"kname":"sdb1","tran":"usb","label":"\u001b[31m\u202egpj.exe\n",
          "mountpoints":["/media/x"]}]})"));
  DriveList list(drives, false);
  list.Reload_Drive_list_Function();
  EXPECT_EQ(list.objectValue(u"Collumn2", 0), u"\uFFFD[31m\uFFFDgpj.exe\uFFFD");
}

TEST(LsblkHostile, TheLaptopsDrivesAreWhatEachEditionMayOffer) {
  ReportedDrives drives(*LsblkReport::parse(test::laptop_lsblk));
  DriveList removable(drives, false);
  removable.Reload_Drive_list_Function();
  EXPECT_THAT(
      removable.nsMutaryOfDataObject(),
      ElementsAre(MyDataObject::initWithString1(u"sdb1", u"HOLIDAY", u"ExFAT", u"14.91  GB ",
                                                u"sdb", u"31264768"),
                  MyDataObject::initWithString1(u"mmcblk0p1", u"Untitled", u"MS-DOS (FAT16)",
                                                u"29.72  GB ", u"mmcblk0", u"62325760")));
  DriveList all(drives, true);
  all.Reload_Drive_list_Function();
  std::vector<Text> identifiers;
  for (const MyDataObject& row : all.nsMutaryOfDataObject()) {
    identifiers.push_back(row.nsStrDiskIdentifier);
  }
  EXPECT_THAT(identifiers, ElementsAre(u"sda1", u"dm-0", u"sdb1", u"mmcblk0p1", u"nvme0n1p2"));
}

}  // namespace
}  // namespace norvo
