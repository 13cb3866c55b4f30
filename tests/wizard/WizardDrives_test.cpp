// The first screen: the drive list, and what Next makes of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(WizardSetUp, ShowsTheFirstScreenAndBuildsTheDriveList) {
  WizardHarness bench;
  bench.wizard.set_up();
  EXPECT_THAT(
      bench.happened(),
      ElementsAre(text_set("_help_info", drives_help), "on _rec_mode_Photo", "off _rec_mode_Video",
                  "off _rec_mode_RawFile", "off _rec_mode_Audio", shown(drive_screen),
                  "title \"Norvo Long Name\"", "disable _back_btn", "show_LoadDrive",
                  "enumerate drives", "reload idTableView", "hide_LoadDrive"));
  EXPECT_EQ(bench.view.visible(), drive_screen);
  EXPECT_TRUE(bench.view.is_enabled(Control::next_btn));
  EXPECT_EQ(bench.state.screen_counter, 0);
  EXPECT_EQ(bench.state.Recovery_MODE, 0);
  EXPECT_EQ(bench.drives.numberOfRows(), 2U);
}

TEST(WizardDrives, NextAsksForADriveWhenNoneIsSelected) {
  WizardHarness bench;
  bench.open();
  bench.wizard.Next_btn();
  EXPECT_THAT(bench.happened(), ElementsAre(told("Please select a storage media from list.")));
  EXPECT_EQ(bench.state.screen_counter, 0);
  EXPECT_EQ(bench.view.visible(), drive_screen);
}

TEST(WizardDrives, NextAsksForADriveWhenThereAreNone) {
  WizardHarness bench;
  bench.disks.unplug_all();
  bench.open();
  bench.wizard.Next_btn();
  EXPECT_THAT(bench.happened(), ElementsAre(told("Please select a storage media from list.")));
}

TEST(WizardDrives, NextDoesNothingWithARowThatIsGone) {
  WizardHarness bench;
  bench.open();
  bench.view.person_selects(Control::idTableView, 2);
  bench.wizard.Next_btn();
  EXPECT_THAT(bench.happened(), IsEmpty());
  EXPECT_EQ(bench.state.screen_counter, 0);
}

TEST(WizardDrives, BackDoesNothing) {
  WizardHarness bench;
  bench.open();
  bench.wizard.Back_btn();
  EXPECT_THAT(bench.happened(), IsEmpty());
  EXPECT_EQ(bench.state.screen_counter, 0);
}

// The range of a page, as Next sets it.
std::vector<std::string> range_reset(const std::string& suffix, const std::string& sectors) {
  const auto text = [&](const std::string& name, const std::string& value) {
    return text_set(name + suffix, value);
  };
  return {"range _Start_Slider" + suffix + " 0 to " + sectors,
          "value _Start_Slider" + suffix + " 0",
          text("_Start_Sec_Min_val", "0"),
          text("_Start_Sec_Max_val", sectors),
          text("_Start_slider_val", "0"),
          "range _End_Slider" + suffix + " 0 to " + sectors,
          "value _End_Slider" + suffix + " " + sectors,
          text("_End_Sec_Min_val", "0"),
          text("_End_Sec_Max_val", sectors),
          text("_End_slider_val", sectors)};
}

// The choice and the range of either page, and the labels of the page of the search type.
std::vector<std::string> drive_taken(const std::string& suffix) {
  const auto text = [&](const std::string& name, const std::string& value) {
    return text_set(name + suffix, value);
  };
  std::vector<std::string> steps{text_set("_help_info", entire_disk_help),
                                 text("_path", ""),
                                 text("_destination_hint", ""),
                                 "on _entire_disk_rd",
                                 "off _sector_range_rd",
                                 "on _entire_disk_rd_Sig",
                                 "off _sector_range_rd_Sig",
                                 text_set("_disk_identifier", "sdb1"),
                                 text("_disk_val", "sdb1"),
                                 text_set("_sectors_val", "1000"),
                                 text("_vol_name_val", "HOLIDAY"),
                                 text("_file_system_val", "FAT32"),
                                 text("_size_val", "500.00  KB "),
                                 text("_start_sector_entire_val", "0"),
                                 text("_end_sector_entire_val", "1000")};
  for (const char* page : {"", "_Sig"}) {
    const auto reset = range_reset(page, "1000");
    steps.insert(steps.end(), reset.begin(), reset.end());
  }
  return steps;
}

TEST(WizardDrives, NextGoesToThePhotoSettings) {
  WizardHarness bench;
  bench.open();
  bench.view.person_selects(Control::idTableView, 0);
  bench.wizard.Next_btn();
  std::vector<std::string> steps = drive_taken("");
  for (const std::string& step :
       {std::string("on _Thro_Mode_Chk"), text_set("_Search_Type", "Search Type : Recover Photo"),
        shown(search_type_label), std::string("enable _back_btn"), hidden(drive_screen),
        std::string("title \"Norvo Long Name - Photo Search\""), shown(photo_settings())}) {
    steps.push_back(step);
  }
  EXPECT_THAT(bench.happened(), ElementsAreArray(steps));
  EXPECT_EQ(bench.view.visible(), photo_settings() + search_type_label);
  EXPECT_EQ(bench.state.screen_counter, 1);
}

struct SignatureSearch {
  std::int32_t mode;
  const char* label;
  const char* title;
};

class EachSignatureSearch : public testing::TestWithParam<SignatureSearch> {};

INSTANTIATE_TEST_SUITE_P(
    Each, EachSignatureSearch,
    testing::Values(SignatureSearch{1, "Search Type : Recover Video", "Video Search"},
                    SignatureSearch{2, "Search Type : Recover Raw File", "File Search"},
                    SignatureSearch{3, "Search Type : Audio File", "Audio File Search"}));

TEST_P(EachSignatureSearch, NextGoesToItsOwnSettingsPage) {
  WizardHarness bench;
  bench.open();
  bench.choose_mode(GetParam().mode);
  bench.log.clear();
  bench.view.person_selects(Control::idTableView, 0);
  bench.wizard.Next_btn();
  std::vector<std::string> steps = drive_taken("_Sig");
  for (const std::string& step :
       {text_set("_Search_Type", GetParam().label), shown(search_type_label),
        std::string("enable _back_btn"), hidden(drive_screen),
        "title \"Norvo Long Name - " + std::string(GetParam().title) + "\"",
        shown(signature_settings())}) {
    steps.push_back(step);
  }
  EXPECT_THAT(bench.happened(), ElementsAreArray(steps));
  EXPECT_EQ(bench.view.visible(), signature_settings() + search_type_label);
  EXPECT_EQ(bench.state.screen_counter, 1);
}

// The warning was about a folder that the field does not name any more.
TEST(WizardDrives, TheEmptyPathHasNoWarning) {
  for (const std::int32_t mode : {0, 1}) {
    WizardHarness bench;
    bench.go_to_settings(mode);
    bench.facts.on_drive = true;
    bench.notices.chosen_folder = "/out";
    bench.destination.Browse_Path();
    bench.wizard.Back_btn();
    bench.choose_mode(mode);
    bench.wizard.Next_btn();
    EXPECT_EQ(bench.state.screen_counter, 1);
    EXPECT_FALSE(bench.view.visible().contains("_destination_hint"));
    EXPECT_FALSE(bench.view.visible().contains("_destination_hint_Sig"));
  }
}

TEST(WizardDrives, TheOtherPageKeepsItsPath) {
  WizardHarness bench;
  bench.open();
  bench.view.type(Control::path, u"/photos");
  bench.view.type(Control::path_Sig, u"/videos");
  bench.choose_mode(1);
  bench.view.person_selects(Control::idTableView, 1);
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.view.text(Control::path), u"/photos");
  EXPECT_EQ(bench.view.text(Control::path_Sig), u"");
}

TEST(WizardDrives, ALargeDriveHasAllItsSectors) {
  WizardHarness bench;
  bench.open();
  bench.view.person_selects(Control::idTableView, 1);
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.view.text(Control::sectors_val), u"8589934592");
  EXPECT_EQ(bench.view.text(Control::size_val), u"4.00  TB ");
  EXPECT_EQ(bench.view.maximum(Control::End_Slider), 8589934592.0);
  EXPECT_EQ(bench.view.value(Control::End_Slider), 8589934592.0);
  EXPECT_EQ(bench.view.text(Control::End_slider_val), u"8589934592");
}

TEST(WizardDrives, NamesOfStrangersCannotSteerTheLabels) {
  WizardHarness bench;
  bench.disks.unplug_all();
  bench.disks.add_volume(u"sdd1", u"CAR\u202ED\n", u"F\u0007AT", 5120);
  bench.open();
  bench.view.person_selects(Control::idTableView, 0);
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.view.text(Control::vol_name_val), u"CAR\uFFFDD\uFFFD");
  EXPECT_EQ(bench.view.text(Control::file_system_val), u"F\uFFFDAT");
}

}  // namespace
}  // namespace norvo::test
