// The drive list with its notice and disk images, and the choice of the search type.
#include "wizard/DriveScreen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class DriveScreenTest : public testing::Test {
 protected:
  fs::path image(const std::string& name, std::size_t bytes) const {
    write_file(folder_.path() / name, std::string(bytes, 'i'));
    return folder_.path() / name;
  }

  std::vector<std::string> identifiers() const {
    std::vector<std::string> found;
    for (const MyDataObject& row : bench_.drives.nsMutaryOfDataObject()) {
      found.push_back(utf8_from_text(row.nsStrDiskIdentifier));
    }
    return found;
  }

  TemporaryFolder folder_;
  WizardHarness bench_;
};

TEST_F(DriveScreenTest, ShowsTheNoticeWhileTheListIsRebuilt) {
  bench_.drive_screen.Reload_Drive_list_Function();
  EXPECT_THAT(bench_.happened(), ElementsAre("show_LoadDrive", "enumerate drives",
                                             "reload idTableView", "hide_LoadDrive"));
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1"));
}

TEST_F(DriveScreenTest, TheRefreshButtonTakesInWhatHasChanged) {
  bench_.open();
  bench_.disks.unplug_all();
  bench_.disks.add_volume(u"sdz9", u"NEW", u"FAT32", 1024);
  bench_.drive_screen.rebresh_drives();
  EXPECT_THAT(identifiers(), ElementsAre("sdz9"));
  EXPECT_THAT(bench_.happened(), ElementsAre("show_LoadDrive", "enumerate drives",
                                             "reload idTableView", "hide_LoadDrive"));
}

TEST_F(DriveScreenTest, ADiskImageIsARowAfterTheDrives) {
  bench_.open();
  const fs::path path = image("card.img", 2000);
  EXPECT_TRUE(bench_.drive_screen.open_disk_image(path));
  EXPECT_THAT(bench_.happened(),
              ElementsAre("reload idTableView", "select 2 in idTableView", "focus idTableView"));
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1", path.string()));
  const MyDataObject& row = bench_.drives.nsMutaryOfDataObject().back();
  EXPECT_EQ(row.nsStrVolName, u"card.img");
  EXPECT_EQ(row.nsStrFileSystem, u"Disk Image");
  EXPECT_EQ(row.nsStrSize, u"1.95  KB ");
  EXPECT_EQ(row.nsStrSectors, u"3") << "whole sectors";
}

TEST_F(DriveScreenTest, DiskImagesFollowTheDrivesAfterEveryReload) {
  const fs::path first = image("b.img", 512);
  const fs::path second = image("a.img", 1024);
  bench_.open();
  bench_.drive_screen.open_disk_image(first);
  bench_.drive_screen.open_disk_image(second);
  bench_.drive_screen.rebresh_drives();
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1", first.string(), second.string()));
}

TEST_F(DriveScreenTest, ADiskImageThatIsGoneLeavesTheListAtAReload) {
  const fs::path path = image("card.img", 1024);
  bench_.open();
  bench_.drive_screen.open_disk_image(path);
  fs::remove(path);
  bench_.drive_screen.rebresh_drives();
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1"));
  image("card.img", 4096);
  bench_.drive_screen.rebresh_drives();
  EXPECT_EQ(bench_.drives.nsMutaryOfDataObject().back().nsStrSectors, u"8");
}

TEST_F(DriveScreenTest, ADiskImageThatWasGoneAndIsBackCanBeOpenedAgain) {
  const fs::path path = image("card.img", 1024);
  bench_.open();
  bench_.drive_screen.open_disk_image(path);
  fs::remove(path);
  bench_.drive_screen.rebresh_drives();
  image("card.img", 1024);
  bench_.log.clear();
  EXPECT_TRUE(bench_.drive_screen.open_disk_image(path));
  EXPECT_THAT(bench_.happened(),
              ElementsAre("reload idTableView", "select 2 in idTableView", "focus idTableView"));
  bench_.drive_screen.rebresh_drives();
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1", path.string())) << "once";
}

TEST_F(DriveScreenTest, ADiskImageIsListedOnceAndSelectedAgain) {
  const fs::path path = image("card.img", 1024);
  bench_.open();
  EXPECT_TRUE(bench_.drive_screen.open_disk_image(path));
  bench_.view.person_selects(Control::idTableView, 0);
  EXPECT_TRUE(bench_.drive_screen.open_disk_image(path));
  EXPECT_EQ(bench_.drives.numberOfRows(), 3U);
  EXPECT_EQ(bench_.view.selected_row(Control::idTableView), 2U);
}

TEST_F(DriveScreenTest, WhatIsNoDiskImageIsRefused) {
  bench_.open();
  EXPECT_FALSE(bench_.drive_screen.open_disk_image(folder_.path()));
  EXPECT_FALSE(bench_.drive_screen.open_disk_image(folder_.path() / "missing.img"));
  EXPECT_FALSE(bench_.drive_screen.open_disk_image(image("small.img", 511)));
  EXPECT_FALSE(bench_.drive_screen.open_disk_image(image("strange\xFF.img", 1024)));
  EXPECT_TRUE(bench_.drive_screen.open_disk_image(image("one.img", 512)));
  EXPECT_EQ(bench_.drives.numberOfRows(), 3U);
}

TEST_F(DriveScreenTest, AnImageThatThePersonMayNotReadIsRefused) {
  const fs::path path = image("secret.img", 1024);
  fs::permissions(path, fs::perms::none);
  bench_.open();
  // Root reads everything, so it becomes somebody else meanwhile.
  constexpr uid_t nobody = 65534;
  const bool root = geteuid() == 0;
  if (root) {
    fs::permissions(folder_.path(), fs::perms::owner_all | fs::perms::others_exec);
    ASSERT_EQ(seteuid(nobody), 0);
  }
  const bool opened = bench_.drive_screen.open_disk_image(path);
  if (root) {
    ASSERT_EQ(seteuid(0), 0);
  }
  EXPECT_FALSE(opened);
  EXPECT_THAT(identifiers(), ElementsAre("sdb1", "sdc1"));
}

TEST_F(DriveScreenTest, EachRadioSetsItsSearchTypeAndTurnsTheOthersOff) {
  constexpr std::array radios{Control::rec_mode_Photo, Control::rec_mode_Video,
                              Control::rec_mode_RawFile, Control::rec_mode_Audio};
  for (const std::int32_t mode : {3, 1, 0, 2}) {
    bench_.choose_mode(mode);
    EXPECT_EQ(bench_.state.Recovery_MODE, mode);
    for (std::size_t i = 0; i < radios.size(); ++i) {
      EXPECT_EQ(bench_.view.is_on(radios.at(i)), i == static_cast<std::size_t>(mode));
    }
  }
}

TEST_F(DriveScreenTest, ARadioDoesNothingElse) {
  bench_.choose_mode(2);
  EXPECT_THAT(bench_.happened(), ElementsAre("on _rec_mode_RawFile", "off _rec_mode_Photo",
                                             "off _rec_mode_Video", "off _rec_mode_Audio"));
  EXPECT_EQ(bench_.state.screen_counter, 0);
}

}  // namespace
}  // namespace norvo::test
