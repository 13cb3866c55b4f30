#include "platform/terminal/DriveReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "platform/System.h"
#include "storage/FakeDiskUtility.h"
#include "terminal/QuotedJson.h"

namespace norvo {
namespace {

using testing::HasSubstr;
using testing::Not;

class DriveReportTest : public testing::Test {
 protected:
  void report(bool USE_HARD_DISK, bool json) {
    report_drives(list_, USE_HARD_DISK, json, out_, err_);
  }

  test::FakeDiskUtility utility_;
  DriveList list_{utility_, false};
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(DriveReportTest, HeadingsNameTheSixFields) {
  EXPECT_EQ(drive_table(list_), "Identifier  Volume  File System  Size  Parent Disk  Sectors\n");
}

TEST_F(DriveReportTest, ColumnsAreAsWideAsTheirWidestCell) {
  list_.addRow(MyDataObject::initWithString1(u"sdb1", u"HOLIDAY", u"ExFAT", u"14.91  GB ", u"sdb",
                                             u"31264768"));
  list_.addRow(MyDataObject::initWithString1(u"mmcblk0p1", u"A\u00E4", u"MS-DOS (FAT32)",
                                             u"500.00 bytes ", u"mmcblk0", u"0"));
  EXPECT_EQ(drive_table(list_),
            "Identifier  Volume   File System              Size  Parent Disk   Sectors\n"
            "sdb1        HOLIDAY  ExFAT              14.91  GB   sdb          31264768\n"
            "mmcblk0p1   A\xC3\xA4       MS-DOS (FAT32)  500.00 bytes   mmcblk0             0\n");
}

TEST_F(DriveReportTest, ColumnsStandBelowEachOtherForWideAndCombinedLetters) {
  list_.addRow(MyDataObject::initWithString1(u"sdb1", u"\u5199\u771F", u"ExFAT", u"1.00 bytes ",
                                             u"sdb", u"1"));
  list_.addRow(MyDataObject::initWithString1(u"sdc1", u"Ao\u0308\U0001F4F7", u"ExFAT",
                                             u"1.00 bytes ", u"sdc", u"1"));
  EXPECT_EQ(
      drive_table(list_),
      "Identifier  Volume  File System         Size  Parent Disk  Sectors\n"
      "sdb1        \xE5\x86\x99\xE7\x9C\x9F    ExFAT        1.00 bytes   sdb                1\n"
      "sdc1        Ao\xCC\x88\xF0\x9F\x93\xB7    ExFAT        1.00 bytes   sdc                1\n");
}

TEST_F(DriveReportTest, NamesDoNotSteerTheTerminal) {
  list_.addRow(
      MyDataObject::initWithString1(u"sdb1", u"\x1B]0;x\a\u202E\n", u"\x9B", u"", u"", u""));
  const std::string table = drive_table(list_);
  for (const char* hostile : {"\x1B", "\a", "\xE2\x80\xAE", "\xC2\x9B"}) {
    EXPECT_THAT(table, Not(HasSubstr(hostile)));
  }
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 2);
}

TEST_F(DriveReportTest, ADriveIsAnEventWithItsNode) {
  list_.addRow(MyDataObject::initWithString1(u"sdb1", u"A \"B\"\x1B", u"ExFAT", u"14.91  GB ",
                                             u"sdb", u"31264768"));
  report(false, true);
  EXPECT_EQ(
      out_.str(),
      "{\"event\":\"drive\",\"device\":\"" + raw_node(u"sdb1").string() +
          "\",\"identifier\":\"sdb1\",\"volume\":\"A \\\"B\\\"\\u001b\",\"file_system\":"
          "\"ExFAT\",\"size\":\"14.91  GB \",\"parent_disk\":\"sdb\",\"sectors\":31264768}\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(DriveReportTest, AnEventDoesNotSteerTheTerminalAndKeepsTheName) {
  list_.addRow(MyDataObject::initWithString1(u"sdb1", u"\u009B2J\u202Ecod\u007F\u00E4\U0001F600",
                                             u"", u"", u"", u""));
  report(false, true);
  EXPECT_THAT(out_.str(),
              HasSubstr("\"volume\":\"\\u009b2J\\u202ecod\\u007f\\u00e4\\ud83d\\ude00\""));
}

TEST_F(DriveReportTest, AnEmptyListSaysWhatToDo) {
  report(false, false);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("No removable drive is mounted"));
  EXPECT_THAT(err_.str(), HasSubstr("--device"));
  err_.str("");
  report(true, true);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("No drive is mounted."));
}

}  // namespace
}  // namespace norvo
