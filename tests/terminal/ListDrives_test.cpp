// --list-drives of the program, with the drives of a test.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "terminal/ProgramOnImage.h"

namespace norvo {
namespace {

using test::lines_of;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class ListDrivesTest : public test::ProgramOnImage {
 protected:
  ListDrivesTest() {
    disk_utility_.removable = {"/media/card"};
    disk_utility_.local = {"/", "/media/card"};
    disk_utility_.reports["/"] = test::card_report(u"sda1", u"ROOT");
    disk_utility_.reports["/media/card"] = test::card_report(u"sdb1", u"CARD");
  }
};

TEST_F(ListDrivesTest, AnEditionForHardDisksListsAllMountedVolumes) {
  EXPECT_EQ(run({"--list-drives"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(StartsWith("Identifier  Volume"), StartsWith("sda1        ROOT"),
                          StartsWith("sdb1        CARD")));
  EXPECT_EQ(err_.str(), "");
}

TEST_F(ListDrivesTest, OtherEditionsListRemovableMediaOnly) {
  EXPECT_EQ(run({"--list-drives", "--edition", "Norvo Birch"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(StartsWith("Identifier"), StartsWith("sdb1        CARD")));
}

TEST_F(ListDrivesTest, WithJsonEachDriveIsAnEvent) {
  EXPECT_EQ(run({"--list-drives", "--json"}), 0);
  EXPECT_THAT(lines_of(out_.str()), ElementsAre(HasSubstr("\"identifier\":\"sda1\""),
                                                HasSubstr("\"identifier\":\"sdb1\"")));
}

TEST_F(ListDrivesTest, AnEmptyListIsNoFailure) {
  disk_utility_.removable.clear();
  EXPECT_EQ(run({"--list-drives", "--edition", "Norvo Birch"}), 0);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("No removable drive is mounted"));
}

TEST_F(ListDrivesTest, ANameWithoutAKeywordIsRefused) {
  EXPECT_EQ(run({"--list-drives", "--edition", "Norvo Oak"}), 2);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("Norvo Oak"));
}

TEST_F(ListDrivesTest, TheSearchTypeDoesNotMatterAsLongAsThereIsOne) {
  ASSERT_EQ(run({"--list-drives"}), 0);
  const std::string drives = out_.str();
  for (const char* mode : {"video", "raw", "audio"}) {
    EXPECT_EQ(run({"--list-drives", "--mode", mode}), 0) << mode;
    EXPECT_EQ(out_.str(), drives) << mode;
  }
  EXPECT_EQ(run({"--list-drives", "--mode", "music"}), 2);
  EXPECT_EQ(out_.str(), "");
}

TEST_F(ListDrivesTest, ASearchDoesNotAskForDrives) {
  EXPECT_EQ(search({"--quiet"}), 0);
  EXPECT_TRUE(disk_utility_.asked.empty());
}

}  // namespace
}  // namespace norvo
