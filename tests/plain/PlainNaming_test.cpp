#include "PlainNaming.h"

#include <gtest/gtest.h>

#include "PlainController.h"
#include "PlainTestKit.h"

namespace plain {
namespace {

TEST(PlainNames, ArePaddedToFiveDigits) {
  EXPECT_EQ(Generate_File_Name(0, {}, 7, u"GND", u"jpg"), u"GND00007.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 9, u"GND", u"jpg"), u"GND00009.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 10, u"GND", u"jpg"), u"GND00010.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 100, u"GND", u"jpg"), u"GND00100.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 9999, u"GND", u"jpg"), u"GND09999.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 99999, u"GND", u"jpg"), u"GND99999.jpg");
  EXPECT_EQ(Generate_File_Name(0, {}, 100000, u"GND", u"jpg"), u"GND100000.jpg");
  EXPECT_EQ(Generate_File_UID_Num(123456, false, u"jpg"), u"GND123456.jpg");
  EXPECT_EQ(Generate_File_UID_Num(12, true, u"jpg"), u"THD00012.jpg");
}

TEST(PlainNames, FollowTheFirstRowOfTheTypeOutsideAPhotoSearch) {
  const std::vector<Row> rows = {
      {"A", "5", "", "", "A"}, {"B", "41", "", "", "B"}, {"B", "7", "", "", "B"}};
  EXPECT_EQ(Generate_File_Name(1, rows, 3, u"B", u"B"), u"B00042.B");
  EXPECT_EQ(Generate_File_Name(1, rows, 3, u"b", u"b"), u"b00003.b");
  EXPECT_EQ(Generate_File_Name(0, rows, 3, u"B", u"B"), u"B00003.B");
}

TEST(PlainFolders, ReadAsManyTrailingCharactersAsTheStemIsLong) {
  EXPECT_EQ(next_folder_name(u"jpg"), u"jpg_001");
  EXPECT_EQ(next_folder_name(u"jpg_001"), u"jpg_002");
  EXPECT_EQ(next_folder_name(u"jpg_009"), u"jpg_010");
  EXPECT_EQ(next_folder_name(u"jpg_099"), u"jpg_100");
  EXPECT_EQ(next_folder_name(u"jpg_999"), u"");
  EXPECT_EQ(next_folder_name(u"jpeg_001"), u"jpeg_001");
  EXPECT_EQ(next_folder_name(u"gz_001"), u"gz_002");
  EXPECT_EQ(next_folder_name(u"gz_099"), u"gz_100");
  EXPECT_EQ(next_folder_name(u"gz_100"), u"gz_001");  // reads the last two digits, 00
  EXPECT_EQ(next_folder_name(u"mpegx_001"), u"mpegx_001");
  EXPECT_EQ(next_folder_name(u"_A"), u"_001");
  EXPECT_EQ(next_folder_name(u"a_b"), u"a_001");
}

TEST(PlainFolders, HoldFiftyThousandFiles) {
  const Search search = search_of(0, {});
  const Controller controller(search);
  std::vector<FolderCounter> counters = make_folder_counters(
      {u"jpg", u"", u"", u"", u"", u"", u"", u"jpeg", u"", u"", u"", u"", u"", u"", u"jpg"});
  ASSERT_EQ(counters.size(), 2U);
  FolderCounter& jpg = counter_of(counters, u"jpg");
  for (int i = 0; i < 50000; ++i) {
    ASSERT_FALSE(controller.count_file(jpg));
  }
  EXPECT_EQ(jpg.folder, u"jpg");
  EXPECT_TRUE(controller.count_file(jpg));
  EXPECT_EQ(jpg.folder, u"jpg_001");
  EXPECT_EQ(jpg.count, 0);
  for (int i = 0; i < 49999; ++i) {
    ASSERT_FALSE(controller.count_file(jpg));
  }
  EXPECT_TRUE(controller.count_file(jpg));
  EXPECT_EQ(jpg.folder, u"jpg_002");
}

TEST(PlainFolders, StayWhenThereIsNoNextName) {
  const Search search = search_of(0, {});
  const Controller controller(search);
  FolderCounter counter{u"jpg", 49999, u"jpg_999"};
  EXPECT_FALSE(controller.count_file(counter));
  EXPECT_EQ(counter.count, 50000);
  EXPECT_EQ(counter.folder, u"jpg_999");
}

}  // namespace
}  // namespace plain
