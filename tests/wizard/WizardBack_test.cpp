// The Back button, from every screen.
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

// What a finished photo search leaves on its screen.
void finish_photo_search(WizardHarness& bench) {
  for (const Control gone :
       {Control::Mode_label, Control::Progress_Horz, Control::sector_label, Control::stop_scan}) {
    bench.view.set_hidden(gone, true);
  }
  for (const Control left : {Control::zoom_label, Control::zoom_slider, Control::open_folder,
                             Control::ClearThumbnail_Label}) {
    bench.view.set_hidden(left, false);
  }
  bench.view.set_enabled(Control::back_btn, true);
  bench.log.clear();
}

class BackFromSettings : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(EachSearchType, BackFromSettings, testing::Values(0, 1, 2, 3));

TEST_P(BackFromSettings, ReturnsToTheDrivesAndToPhotos) {
  WizardHarness bench;
  bench.go_to_settings(GetParam());
  bench.wizard.Back_btn();
  std::vector<std::string> steps{hidden(search_type_label), text_set("_help_info", drives_help),
                                 text_set("_sectors_val", "<None>"),
                                 text_set("_disk_identifier", "<None>")};
  for (const std::string suffix : {"", "_Sig"}) {
    for (const std::string name : {"_disk_val", "_vol_name_val", "_file_system_val", "_size_val",
                                   "_start_sector_entire_val", "_end_sector_entire_val"}) {
      steps.push_back(text_set(name + suffix, "<None>"));
    }
  }
  for (const std::string& step :
       {std::string("disable _back_btn"), shown(drive_screen),
        std::string("title \"Norvo Long Name\""),
        hidden(GetParam() == 0 ? photo_settings() : signature_settings()),
        std::string("on _rec_mode_Photo"), std::string("off _rec_mode_Video"),
        std::string("off _rec_mode_RawFile"), std::string("off _rec_mode_Audio"),
        std::string("show_LoadDrive"), std::string("enumerate drives"),
        std::string("reload idTableView"), std::string("hide_LoadDrive")}) {
    steps.push_back(step);
  }
  EXPECT_THAT(bench.happened(), ElementsAreArray(steps));
  EXPECT_EQ(bench.view.visible(), drive_screen);
  EXPECT_EQ(bench.state.screen_counter, 0);
  EXPECT_EQ(bench.state.Recovery_MODE, 0);
}

TEST(BackFromThePhotoScan, ReturnsToItsSettings) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  finish_photo_search(bench);
  bench.gallery.addImageWithPath("/out/a.jpg", u"a.jpg", u"a.jpg");
  bench.wizard.Back_btn();
  EXPECT_THAT(
      bench.happened(),
      ElementsAre(text_set("_help_info", entire_disk_help), "value _zoom_slider 0.5",
                  "value imageBrowser 0.55", "reload imageBrowser", "reload imageBrowser_2",
                  hidden({"_ClearThumbnail_Label", "_zoom_label", "_zoom_slider"}),
                  shown(photo_settings()), hidden({"imageBrowser"}), "enable _next_btn",
                  hidden({"_open_folder"}), "stop_now = 0", text_set("_destination_hint", "")));
  EXPECT_EQ(bench.view.visible(), photo_settings() + search_type_label);
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
  EXPECT_EQ(bench.gallery.size(), 0U);
  EXPECT_EQ(bench.state.screen_counter, 1);
}

TEST(BackFromThePhotoScan, KeepsTheRangeAndItsGuidance) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.range.Sector_Range_Radio(SettingsPage::photo);
  bench.view.type(Control::Start_slider_val, u"10");
  bench.view.type(Control::End_slider_val, u"20");
  bench.view.type(Control::path, u"/out");
  bench.view.turn(Control::Thro_Mode_Chk, false);
  bench.wizard.Next_btn();
  bench.wizard.Back_btn();
  EXPECT_EQ(utf8_from_text(bench.view.text(Control::help_info)), sector_range_help);
  EXPECT_EQ(bench.view.text(Control::Start_slider_val), u"10");
  EXPECT_EQ(bench.view.text(Control::End_slider_val), u"20");
  EXPECT_EQ(bench.view.text(Control::path), u"/out");
  EXPECT_FALSE(bench.view.is_on(Control::Thro_Mode_Chk));
  const Names visible = bench.view.visible();
  for (const std::string& name : range_lines("") + settings_controls("") + thorough_lines) {
    EXPECT_TRUE(visible.contains(name)) << name;
  }
  for (const std::string& name : entire_disk_lines("")) EXPECT_FALSE(visible.contains(name));
}

class BackFromTheCheckList : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(EachSearchType, BackFromTheCheckList, testing::Values(1, 2, 3));

TEST_P(BackFromTheCheckList, ReturnsToTheSettings) {
  WizardHarness bench;
  bench.go_to_screen_3(GetParam());
  bench.wizard.Back_btn();
  EXPECT_THAT(bench.happened(),
              ElementsAre(text_set("_help_info", entire_disk_help), "value _zoom_slider 0.5",
                          "value imageBrowser 0.55", "reload imageBrowser", "reload imageBrowser_2",
                          shown(signature_settings()), hidden(check_list_screen), "stop_now = 0",
                          text_set("_destination_hint_Sig", "")));
  EXPECT_EQ(bench.view.visible(), signature_settings() + search_type_label);
  EXPECT_EQ(bench.state.screen_counter, 1);
  EXPECT_EQ(bench.state.Recovery_MODE, GetParam());
}

TEST_P(BackFromTheCheckList, ShowsTheGuidanceOfTheRange) {
  WizardHarness bench;
  bench.go_to_screen_3(GetParam());
  bench.view.turn(Control::entire_disk_rd_Sig, false);
  bench.view.turn(Control::sector_range_rd_Sig, true);
  bench.wizard.Back_btn();
  EXPECT_EQ(utf8_from_text(bench.view.text(Control::help_info)), sector_range_help);
}

TEST_P(BackFromTheCheckList, ReturnsFromTheScanToTheCheckList) {
  WizardHarness bench;
  bench.go_to_file_scan(GetParam());
  for (const Control gone :
       {Control::Mode_label, Control::Progress_Horz, Control::sector_label, Control::stop_scan}) {
    bench.view.set_hidden(gone, true);
  }
  bench.view.set_hidden(Control::ClearThumbnail_Label, false);
  bench.view.set_enabled(Control::back_btn, true);
  bench.gallery.addImageWithPath_2("/out/a.mov", u"a.mov", u"a.mov");
  bench.log.clear();
  bench.wizard.Back_btn();
  Names left = file_scan_screen;
  for (const std::string& name : progress_lines) left.erase(name);
  left.erase("_open_folder_Sig");
  EXPECT_THAT(bench.happened(),
              ElementsAre(hidden({"_ClearThumbnail_Label"}), "reload imageBrowser_2",
                          hidden({"_open_folder_Sig"}), text_set("_help_info", file_types_help),
                          hidden(left), "enable _next_btn", "clear preview",
                          shown(check_list_screen), "stop_now = 0"));
  EXPECT_EQ(bench.view.visible(), check_list_screen + search_type_label);
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
  EXPECT_EQ(bench.gallery.size(), 0U);
  EXPECT_EQ(bench.state.screen_counter, 2);
}

// A movie that was previewed must not stand over the check list.
TEST(BackFromTheFileScan, TakesAShownMovieAway) {
  WizardHarness bench;
  bench.go_to_file_scan(1);
  bench.view.set_hidden(Control::QuickLook_View, true);
  bench.view.set_hidden(Control::mMovieView, false);
  bench.wizard.Back_btn();
  EXPECT_EQ(bench.view.visible(), check_list_screen + search_type_label);
}

TEST(BackFromAScan, TakesTheTimeLeftAway) {
  for (const std::int32_t mode : {0, 1}) {
    WizardHarness bench;
    mode == 0 ? bench.go_to_screen_3(mode) : bench.go_to_file_scan(mode);
    bench.view.set_hidden(Control::time_left, false);
    bench.wizard.Back_btn();
    EXPECT_TRUE(bench.view.is_hidden(Control::time_left)) << mode;
  }
}

TEST(BackFromTheFileScan, TicksSurviveIt) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.wizard.tick(0, false);
  bench.wizard.Next_btn();
  bench.wizard.Back_btn();
  EXPECT_FALSE(bench.check_list.rows()[0].State);
  EXPECT_TRUE(bench.check_list.rows()[1].State);
}

TEST(BackAndNext, AnotherSearchCanBeStarted) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  finish_photo_search(bench);
  bench.wizard.Back_btn();
  bench.host.started.reset();
  bench.log.clear();
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.view.visible(), photo_scan_screen + search_type_label);
  EXPECT_TRUE(bench.host.started);
  EXPECT_FALSE(bench.view.is_enabled(Control::back_btn));
}

TEST(BackAndNext, LeavingTheDrivesAgainResetsTheRangesOfBothPages) {
  WizardHarness bench;
  bench.go_to_settings(0);
  for (const SettingsPage page : {SettingsPage::photo, SettingsPage::signature}) {
    bench.range.Sector_Range_Radio(page);
    bench.view.type(on_page(Control::Start_slider_val, page), u"10");
    bench.view.type(on_page(Control::End_slider_val, page), u"20");
  }
  bench.wizard.Back_btn();
  EXPECT_EQ(bench.view.text(Control::Start_slider_val), u"10");
  bench.view.person_selects(Control::idTableView, 1);
  bench.wizard.Next_btn();
  for (const SettingsPage page : {SettingsPage::photo, SettingsPage::signature}) {
    EXPECT_EQ(bench.view.text(on_page(Control::Start_slider_val, page)), u"0");
    EXPECT_EQ(bench.view.text(on_page(Control::End_slider_val, page)), u"8589934592");
    EXPECT_TRUE(bench.view.is_on(on_page(Control::entire_disk_rd, page)));
    EXPECT_FALSE(bench.view.is_on(on_page(Control::sector_range_rd, page)));
  }
}

}  // namespace
}  // namespace norvo::test
