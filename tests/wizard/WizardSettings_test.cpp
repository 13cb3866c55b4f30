// Next on the settings screen: the checks, and where it leads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string no_path = "Please select valid destination path.";
const std::string bad_start = "Please enter valid Start Sector value.";
const std::string bad_end = "Please enter valid End Sector value.";
const std::string bad_order = "End Sector should be greater than Start Sector.";

// Either settings page; the search type that brings it.
struct Page {
  std::int32_t mode;
  SettingsPage page;
  std::string suffix;
};

class EitherPage : public testing::TestWithParam<Page> {
 protected:
  EitherPage() {
    bench_.go_to_settings(GetParam().mode);
    bench_.view.type(on(Control::path), u"/out");
  }

  static Control on(Control control) { return on_page(control, GetParam().page); }
  std::string focus(const std::string& name) const { return "focus " + name + GetParam().suffix; }

  void choose_range(TextView start, TextView end) {
    bench_.range.Sector_Range_Radio(GetParam().page);
    bench_.view.type(on(Control::Start_slider_val), start);
    bench_.view.type(on(Control::End_slider_val), end);
    bench_.log.clear();
  }

  // Next tells `message` and moves the focus; nothing else changes.
  void expect_refused(const std::string& message, const std::string& focused) {
    const Names before = bench_.view.visible();
    bench_.wizard.Next_btn();
    EXPECT_THAT(bench_.happened(), ElementsAre(told(message), focus(focused)));
    EXPECT_EQ(bench_.view.visible(), before);
    EXPECT_EQ(bench_.state.screen_counter, 1);
    EXPECT_FALSE(bench_.host.started);
  }

  void expect_accepted() {
    bench_.wizard.Next_btn();
    EXPECT_EQ(bench_.state.screen_counter, 2);
  }

  WizardHarness bench_;
};

INSTANTIATE_TEST_SUITE_P(Both, EitherPage,
                         testing::Values(Page{0, SettingsPage::photo, ""},
                                         Page{1, SettingsPage::signature, "_Sig"}));

TEST_P(EitherPage, NextWantsADestination) {
  bench_.view.type(on(Control::path), u"");
  expect_refused(no_path, "_browse_path");
}

TEST_P(EitherPage, ADestinationOfTheOtherPageDoesNotCount) {
  const Control other = GetParam().page == SettingsPage::photo ? Control::path_Sig : Control::path;
  bench_.view.type(on(Control::path), u"");
  bench_.view.type(other, u"/out");
  expect_refused(no_path, "_browse_path");
}

TEST_P(EitherPage, OnlyAnEmptyDestinationIsRefused) {
  bench_.view.type(on(Control::path), u" ");
  expect_accepted();
}

TEST_P(EitherPage, TheDestinationIsCheckedBeforeTheRange) {
  choose_range(u"x", u"y");
  bench_.view.type(on(Control::path), u"");
  expect_refused(no_path, "_browse_path");
}

TEST_P(EitherPage, TheStartIsCheckedBeforeTheEnd) {
  choose_range(u"x", u"y");
  expect_refused(bad_start, "_Start_slider_val");
}

TEST_P(EitherPage, ABadEndIsToldOfAfterAGoodStart) {
  choose_range(u"0", u"1001");
  expect_refused(bad_end, "_End_slider_val");
}

TEST_P(EitherPage, AnEndThatIsNotBehindTheStartIsRefused) {
  choose_range(u"5", u"5");
  expect_refused(bad_order, "_End_slider_val");
}

TEST_P(EitherPage, BlanksAndSignsAreRefused) {
  for (const TextView text : {u" 5", u"-5", u"+5", u""}) {
    choose_range(text, u"9");
    expect_refused(bad_start, "_Start_slider_val");
    choose_range(u"0", text);
    expect_refused(bad_end, "_End_slider_val");
  }
}

TEST_P(EitherPage, LeadingZerosAreAcceptedUpToTheLengthOfTheSectorCount) {
  choose_range(u"00100", u"1000");
  expect_refused(bad_start, "_Start_slider_val");
  choose_range(u"0100", u"1000");
  expect_accepted();
}

TEST_P(EitherPage, ARangeOfTheWholeDriveIsAccepted) {
  choose_range(u"0", u"1000");
  expect_accepted();
}

TEST_P(EitherPage, TextsOfTheRangeAreIgnoredWithTheEntireDisk) {
  choose_range(u"x", u"");
  bench_.range.Entire_Disk_Radio(GetParam().page);
  expect_accepted();
}

TEST_P(EitherPage, NothingIsCheckedWithoutAChoice) {
  choose_range(u"x", u"");
  bench_.view.turn(on(Control::sector_range_rd), false);
  expect_accepted();
}

TEST_P(EitherPage, NothingIsCheckedWithBothChoices) {
  choose_range(u"x", u"");
  bench_.view.turn(on(Control::entire_disk_rd), true);
  expect_accepted();
}

TEST(WizardSettings, NextStartsThePhotoSearch) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.view.type(Control::path, u"/out");
  bench.wizard.Next_btn();
  EXPECT_THAT(
      bench.happened(),
      ElementsAre("on _Thro_Mode_Chk_SIG", "on _select_unselect_Chk", hidden(photo_settings()),
                  "stop_now = 0", shown(photo_scan_screen), "disable _next_btn",
                  "disable _back_btn", "check permissions of sdb1", "start search"));
  EXPECT_EQ(bench.view.visible(), photo_scan_screen + search_type_label);
  EXPECT_EQ(bench.state.screen_counter, 2);
}

TEST(WizardSettings, APhotoSearchTakesThePhotoPage) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.range.Sector_Range_Radio(SettingsPage::photo);
  bench.view.type(Control::Start_slider_val, u"010");
  bench.view.type(Control::End_slider_val, u"20");
  bench.view.type(Control::path, u"/out");
  bench.view.type(Control::path_Sig, u"/elsewhere");
  bench.view.turn(Control::Thro_Mode_Chk, false);
  bench.wizard.Next_btn();
  ASSERT_TRUE(bench.host.started);
  EXPECT_EQ(*bench.host.started, (SearchSettings{.Recovery_MODE = 0,
                                                 .disk_identifier = u"sdb1",
                                                 .sectors_val = u"1000",
                                                 .entire_disk = false,
                                                 .sector_range = true,
                                                 .start_slider_val = u"010",
                                                 .end_slider_val = u"20",
                                                 .thorough = false,
                                                 .destination = "/out"}));
}

TEST(WizardSettings, AVideoSearchTakesTheOtherPageAndItsOwnThoroughBox) {
  WizardHarness bench;
  bench.go_to_settings(1);
  bench.range.Sector_Range_Radio(SettingsPage::signature);
  bench.view.type(Control::Start_slider_val_Sig, u"1");
  bench.view.type(Control::End_slider_val_Sig, u"2");
  bench.view.type(Control::path_Sig, u"/out");
  bench.view.turn(Control::Thro_Mode_Chk, false);
  bench.wizard.Next_btn();
  bench.wizard.Next_btn();
  ASSERT_TRUE(bench.host.started);
  EXPECT_EQ(*bench.host.started, (SearchSettings{.Recovery_MODE = 1,
                                                 .disk_identifier = u"sdb1",
                                                 .sectors_val = u"1000",
                                                 .entire_disk = false,
                                                 .sector_range = true,
                                                 .start_slider_val = u"1",
                                                 .end_slider_val = u"2",
                                                 .thorough = true,
                                                 .destination = "/out"}));
}

TEST(WizardSettings, AVideoSearchWithoutItsThoroughBoxHasOnePass) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  EXPECT_TRUE(bench.view.is_on(Control::Thro_Mode_Chk_SIG));
  bench.view.turn(Control::Thro_Mode_Chk_SIG, false);
  bench.view.turn(Control::Thro_Mode_Chk, true);
  bench.wizard.Next_btn();
  ASSERT_TRUE(bench.host.started);
  EXPECT_FALSE(bench.host.started->thorough);
}

TEST(WizardSettings, WithoutTouchingTheRangeTheEntireDiskIsSearched) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  ASSERT_TRUE(bench.host.started);
  EXPECT_TRUE(bench.host.started->entire_disk);
  EXPECT_FALSE(bench.host.started->sector_range);
  EXPECT_TRUE(bench.host.started->thorough);
}

TEST(WizardSettings, NextDoesNothingDuringAPhotoSearch) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  bench.wizard.Next_btn();
  EXPECT_THAT(bench.happened(), IsEmpty());
  EXPECT_EQ(bench.state.screen_counter, 2);
}

TEST(WizardSettings, NextLeavesTheRangeChoiceWithItsControls) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.view.type(Control::path, u"/out");
  bench.range.Sector_Range_Radio(SettingsPage::photo);
  const Names range_page = settings_controls("") + range_lines("") + thorough_lines;
  EXPECT_EQ(bench.view.visible(), range_page + search_type_label);
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.view.visible(), photo_scan_screen + search_type_label);
}

}  // namespace
}  // namespace norvo::test
