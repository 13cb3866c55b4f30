#include "storage/DriveList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "storage/FakeDiskUtility.h"
#include "util/Numbers.h"

namespace norvo {
namespace {

using test::card_report;
using testing::ElementsAre;
using testing::IsEmpty;

class DriveListTest : public testing::Test {
 protected:
  void mount(const std::filesystem::path& path, const DiskReport& report) {
    utility_.removable.push_back(path);
    utility_.reports[path] = report;
  }

  // The only row after a volume with this report was mounted and listed.
  MyDataObject row_of(const DiskReport& report) {
    mount("/Volumes/X", report);
    list_.Reload_Drive_list_Function();
    EXPECT_EQ(list_.numberOfRows(), 1U);
    return list_.numberOfRows() == 1 ? list_.nsMutaryOfDataObject().front() : MyDataObject();
  }

  void expect_not_listed(const DiskReport& report) {
    mount("/Volumes/X", report);
    list_.Reload_Drive_list_Function();
    EXPECT_THAT(list_.nsMutaryOfDataObject(), IsEmpty());
  }

  std::vector<Text> identifiers(const DriveList& list) const {
    std::vector<Text> found;
    for (const MyDataObject& row : list.nsMutaryOfDataObject()) {
      found.push_back(row.nsStrDiskIdentifier);
    }
    return found;
  }

  test::FakeDiskUtility utility_;
  DriveList list_{utility_, false};
};

TEST_F(DriveListTest, IsEmptyBeforeTheFirstReload) {
  mount("/Volumes/CARD", card_report());
  EXPECT_EQ(list_.numberOfRows(), 0U);
  EXPECT_THAT(utility_.asked, IsEmpty());
}

TEST_F(DriveListTest, ARowHoldsWhatTheReportSays) {
  EXPECT_EQ(row_of(card_report()),
            MyDataObject::initWithString1(u"disk2s1", u"CARD", u"MS-DOS (FAT32)", u"14.91  GB ",
                                          u"disk2", u"31266816"));
}

TEST_F(DriveListTest, RowsStandInTheOrderOfTheirVolumes) {
  mount("/Volumes/B", card_report(u"disk3s1"));
  mount("/Volumes/A", card_report(u"disk2s1"));
  list_.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"disk3s1", u"disk2s1"));
  EXPECT_THAT(utility_.asked, ElementsAre("/Volumes/B", "/Volumes/A"));
}

TEST_F(DriveListTest, ReloadingAgainDoesNotDoubleTheList) {
  mount("/Volumes/B", card_report(u"disk3s1"));
  mount("/Volumes/A", card_report(u"disk2s1"));
  list_.Reload_Drive_list_Function();
  const auto rows = list_.nsMutaryOfDataObject();
  list_.Reload_Drive_list_Function();
  EXPECT_EQ(list_.nsMutaryOfDataObject(), rows);
  utility_.removable.pop_back();
  list_.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"disk3s1"));
}

TEST_F(DriveListTest, EnumeratingAloneAppends) {
  mount("/Volumes/A", card_report());
  list_.getVolumeToFSGetInfo();
  list_.getVolumeToFSGetInfo();
  EXPECT_EQ(list_.numberOfRows(), 2U);
}

TEST_F(DriveListTest, AVolumeWithSeveralMountPathsHasOneRow) {
  mount("/home/ann/private/card", card_report(u"disk2s1"));
  mount("/media/card", card_report(u"disk2s1"));
  mount("/media/other", card_report(u"disk3s1"));
  mount("/srv/card", card_report(u"disk2s1"));
  list_.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"disk2s1", u"disk3s1"));
}

TEST_F(DriveListTest, OnlyAnEditionForHardDisksListsFixedVolumes) {
  mount("/Volumes/CARD", card_report());
  utility_.local = {"/", "/Volumes/CARD"};
  utility_.reports["/"] = card_report(u"disk1s1");
  list_.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"disk2s1"));

  DriveList all(utility_, true);
  all.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(all), ElementsAre(u"disk1s1", u"disk2s1"));
}

TEST_F(DriveListTest, ADiskImageIsNeverListed) {
  DiskReport report = card_report();
  report.set("BusProtocol", u"Disk Image");
  expect_not_listed(report);
}

TEST_F(DriveListTest, OnlyTheWholeNameMeansADiskImage) {
  DiskReport report = card_report();
  report.set("BusProtocol", u"Disk Image Reader");
  row_of(report);
}

TEST_F(DriveListTest, ACdIsNeverListed) {
  DiskReport report = card_report();
  report.set("OpticalDeviceType", u"DVD-ROM, CD-ROM");
  expect_not_listed(report);
}

TEST_F(DriveListTest, AnOpticalDriveThatIsNoCdIsListed) {
  DiskReport report = card_report();
  report.set("OpticalDeviceType", u"DVD-ROM, cd");
  EXPECT_EQ(row_of(report).nsStrDiskIdentifier, u"disk2s1");
}

TEST_F(DriveListTest, HiddenPlacesAreNotEvenAskedAbout) {
  for (const char* path : {"/private/var/vm", "/Volumes/private/x", "/System/Volumes/Data",
                           "/Volumes/System/Volumes/Data"}) {
    mount(path, card_report());
  }
  utility_.local = utility_.removable;
  list_.Reload_Drive_list_Function();
  DriveList all(utility_, true);
  all.Reload_Drive_list_Function();
  EXPECT_THAT(utility_.asked, IsEmpty());
  EXPECT_EQ(list_.numberOfRows() + all.numberOfRows(), 0U);
}

TEST_F(DriveListTest, PlacesThatOnlyResembleHiddenOnesAreListed) {
  for (const char* path : {"/private", "/Volumes/private", "/Private/x", "/Volumes/my private/x",
                           "/System/Volumes", "/system/volumes/x"}) {
    mount(path, card_report(u"disk" + decimal(utility_.removable.size())));
  }
  list_.Reload_Drive_list_Function();
  EXPECT_EQ(utility_.asked, utility_.removable);
  EXPECT_EQ(list_.numberOfRows(), 6U);
}

TEST_F(DriveListTest, AVolumeWithAnEmptyNameIsUntitled) {
  EXPECT_EQ(row_of(card_report(u"disk2s1", u"")).nsStrVolName, u"Untitled");
}

TEST_F(DriveListTest, ABlankIsAName) {
  EXPECT_EQ(row_of(card_report(u"disk2s1", u" ")).nsStrVolName, u" ");
}

TEST_F(DriveListTest, CellsOfAbsentTextsAreEmpty) {
  DiskReport report;
  report.set("DeviceIdentifier", u"disk2s1");
  EXPECT_EQ(row_of(report),
            MyDataObject::initWithString1(u"disk2s1", u"", u"", u"0.00 bytes ", u"", u"0"));
  EXPECT_EQ(list_.objectValue(u"Collumn2", 0), u"");
}

TEST_F(DriveListTest, VolumesWithoutAnIdentifierAreNotListed) {
  DiskReport report;
  report.set("VolumeName", u"CARD");
  report.set("IOKitSize", std::uint64_t{1024});
  expect_not_listed(report);
  report.set("DeviceIdentifier", u"");
  expect_not_listed(report);
  report.set("DeviceIdentifier", std::uint64_t{2});
  expect_not_listed(report);
}

TEST_F(DriveListTest, AVolumeAboutWhichNothingCanBeToldIsLeftOut) {
  utility_.removable = {"/Volumes/GONE"};
  mount("/Volumes/CARD", card_report());
  list_.Reload_Drive_list_Function();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"disk2s1"));
  EXPECT_EQ(utility_.asked.size(), 2U);
}

TEST_F(DriveListTest, ABrokenSectorAtTheEndDoesNotCount) {
  for (const auto& [bytes, sectors] : {std::pair<std::uint64_t, TextView>{0, u"0"},
                                       {511, u"0"},
                                       {512, u"1"},
                                       {1000, u"1"},
                                       {1024, u"2"},
                                       {1ULL << 45, u"68719476736"}}) {
    DiskReport report = card_report();
    report.set("IOKitSize", bytes);
    utility_ = {};
    EXPECT_EQ(row_of(report).nsStrSectors, sectors);
  }
}

// The size is read back as a signed number, which stops at its limit.
TEST_F(DriveListTest, SectorsOfImpossibleSizesStopAtTheSignedLimit) {
  DiskReport report = card_report();
  report.set("IOKitSize", ~std::uint64_t{0});
  EXPECT_EQ(row_of(report).nsStrSectors, u"18014398509481983");
  EXPECT_EQ(list_.nsMutaryOfDataObject().front().nsStrSize, u"16777216.00  TB ");
}

TEST_F(DriveListTest, AWholeDiskFillsItsSizeAndName) {
  DiskReport disk;
  disk.set("IOKitSize", std::uint64_t{16008609792});
  disk.set("MediaName", u"Card Reader");
  disk.set("BusProtocol", u"Disk Image");
  utility_.reports["disk2"] = disk;
  list_.find_disk_info_PARENT("disk2");
  EXPECT_EQ(list_.Parent_Disk_Size(), u"16008609792");
  EXPECT_EQ(list_.Parent_Media_Name(), u"Card Reader");
  EXPECT_EQ(list_.numberOfRows(), 0U);

  list_.find_disk_info_PARENT("disk9");
  EXPECT_EQ(list_.Parent_Disk_Size(), u"0");
  EXPECT_EQ(list_.Parent_Media_Name(), u"");
}

TEST_F(DriveListTest, EveryVolumeQueryEmptiesTheWholeDisksSizeAndName) {
  EXPECT_EQ(list_.Parent_Disk_Size(), u"");
  EXPECT_EQ(list_.Parent_Media_Name(), u"");
  DiskReport disk;
  disk.set("IOKitSize", std::uint64_t{512});
  disk.set("MediaName", u"Card Reader");
  utility_.reports["disk2"] = disk;
  list_.find_disk_info_PARENT("disk2");
  list_.find_disk_info("/Volumes/GONE");
  EXPECT_EQ(list_.Parent_Disk_Size(), u"");
  EXPECT_EQ(list_.Parent_Media_Name(), u"");
}

TEST_F(DriveListTest, ACellShowsTheFieldOfItsColumn) {
  list_.addRow(MyDataObject::initWithString1(u"1", u"2", u"3", u"4", u"5", u"6"));
  list_.addRow(MyDataObject::initWithString1(u"a", u"b", u"c", u"d", u"e", u"f"));
  const std::vector<Text> columns{u"Collumn1", u"Collumn2", u"Collumn3",
                                  u"Collumn4", u"Collumn5", u"Collumn6"};
  Text first;
  Text second;
  for (const Text& column : columns) {
    first += list_.objectValue(column, 0).value_or(u"-");
    second += list_.objectValue(column, 1).value_or(u"-");
  }
  EXPECT_EQ(first, u"123456");
  EXPECT_EQ(second, u"abcdef");
}

TEST_F(DriveListTest, OtherColumnsAndRowsShowNothing) {
  list_.addRow(MyDataObject::initWithString1(u"1", u"2", u"3", u"4", u"5", u"6"));
  for (const TextView column :
       {u"Column1", u"Collumn0", u"Collumn7", u"collumn1", u"Collumn1 ", u""}) {
    EXPECT_EQ(list_.objectValue(column, 0), std::nullopt);
  }
  EXPECT_EQ(list_.objectValue(u"Collumn1", 1), std::nullopt);
}

TEST_F(DriveListTest, ACellShowsNoCharactersThatSteerADisplay) {
  list_.addRow(MyDataObject::initWithString1(u"sdb1", u"\x1B[2J\u202Ecod.exe", u"", u"", u"", u""));
  EXPECT_EQ(list_.objectValue(u"Collumn2", 0), u"\uFFFD[2J\uFFFDcod.exe");
  EXPECT_EQ(list_.nsMutaryOfDataObject().front().nsStrVolName, u"\x1B[2J\u202Ecod.exe");
}

TEST_F(DriveListTest, ColumnsHaveAHeadingForEachField) {
  std::vector<Text> headings;
  for (const DriveColumn& column : drive_columns) headings.emplace_back(column.heading);
  EXPECT_THAT(headings, ElementsAre(u"Identifier", u"Volume", u"File System", u"Size",
                                    u"Parent Disk", u"Sectors"));
}

class DriveRowsTest : public DriveListTest {
 protected:
  DriveRowsTest() {
    for (const TextView identifier : {u"a", u"b", u"c"}) {
      list_.addRow(MyDataObject::initWithString1(Text(identifier), u"", u"", u"", u"", u""));
    }
  }
};

TEST_F(DriveRowsTest, AnAddedRowIsTheLast) {
  EXPECT_THAT(identifiers(list_), ElementsAre(u"a", u"b", u"c"));
}

TEST_F(DriveRowsTest, TheSelectedRowIsDeleted) {
  list_.deleteSelectedRow(1);
  EXPECT_THAT(identifiers(list_), ElementsAre(u"a", u"c"));
}

TEST_F(DriveRowsTest, WithoutASelectedRowNothingIsDeleted) {
  list_.deleteSelectedRow(std::nullopt);
  list_.deleteSelectedRow(3);
  EXPECT_EQ(list_.numberOfRows(), 3U);
}

TEST_F(DriveRowsTest, AddingAtTheSelectedRowDoesNothing) {
  list_.addAtSelectedRow();
  EXPECT_THAT(identifiers(list_), ElementsAre(u"a", u"b", u"c"));
}

}  // namespace
}  // namespace norvo
