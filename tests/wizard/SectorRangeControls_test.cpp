// The two choices of the settings page, and how sliders and texts follow each other.
#include "wizard/SectorRangeControls.h"

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

const std::string about_range =
    "Only the sectors from the start up to, not including, the end are searched. A sector is 512 "
    "bytes.";
const std::string about_far_sectors =
    " Sectors beyond 2147483647 can only be typed: there the sliders write 2147483647.";

struct RangePage {
  std::int32_t mode;
  SettingsPage page;
  std::string suffix;
};

class RangeControls : public testing::TestWithParam<RangePage> {
 protected:
  RangeControls() { bench_.go_to_settings(GetParam().mode); }

  static Control on(Control control) { return on_page(control, page()); }
  static SettingsPage page() { return GetParam().page; }
  static std::string named(const std::string& name) { return name + GetParam().suffix; }
  static std::string text(const std::string& name, const std::string& value) {
    return text_set(named(name), value);
  }
  static Names disk_information() {
    return drive_lines(GetParam().suffix) + entire_disk_lines(GetParam().suffix);
  }

  void type(Control field, TextView typed) {
    bench_.view.type(on(field), typed);
    bench_.range.controlTextDidChange(on(field));
  }
  void drag(Control slider, double value) {
    bench_.view.move(on(slider), value);
    if (slider == Control::Start_Slider) bench_.range.DO_Start_slider(page());
    if (slider == Control::End_Slider) bench_.range.DO_End_slider(page());
  }
  double slider(Control control) const { return bench_.view.value(on(control)); }
  Text field(Control control) const { return bench_.view.text(on(control)); }

  WizardHarness bench_;
};

INSTANTIATE_TEST_SUITE_P(Both, RangeControls,
                         testing::Values(RangePage{0, SettingsPage::photo, ""},
                                         RangePage{2, SettingsPage::signature, "_Sig"}));

TEST_P(RangeControls, ChoosingARangeResetsAndShowsIt) {
  bench_.range.Sector_Range_Radio(page());
  EXPECT_THAT(
      bench_.happened(),
      ElementsAre(text_set("_help_info", sector_range_help), "off " + named("_entire_disk_rd"),
                  "on " + named("_sector_range_rd"), hidden(disk_information()),
                  "range " + named("_Start_Slider") + " 0 to 1000",
                  "value " + named("_Start_Slider") + " 0", text("_Start_Sec_Min_val", "0"),
                  text("_Start_Sec_Max_val", "1000"), text("_Start_slider_val", "0"),
                  "range " + named("_End_Slider") + " 0 to 1000",
                  "value " + named("_End_Slider") + " 1000", text("_End_Sec_Min_val", "0"),
                  text("_End_Sec_Max_val", "1000"), text("_End_slider_val", "1000"),
                  text("_Sector_Range_Info", about_range), shown(range_lines(GetParam().suffix))));
}

TEST_P(RangeControls, ChoosingTheEntireDiskHidesTheRangeAndLeavesItAlone) {
  bench_.range.Sector_Range_Radio(page());
  type(Control::Start_slider_val, u"10");
  bench_.log.clear();
  bench_.range.Entire_Disk_Radio(page());
  EXPECT_THAT(bench_.happened(),
              ElementsAre(text_set("_help_info", entire_disk_help),
                          "on " + named("_entire_disk_rd"), "off " + named("_sector_range_rd"),
                          shown(disk_information()), hidden(range_lines(GetParam().suffix))));
  EXPECT_EQ(field(Control::Start_slider_val), u"10");
  EXPECT_EQ(slider(Control::Start_Slider), 10);
}

TEST_P(RangeControls, ChoosingARangeAgainLosesTheTypedOne) {
  bench_.range.Sector_Range_Radio(page());
  type(Control::Start_slider_val, u"10");
  type(Control::End_slider_val, u"20");
  bench_.range.Sector_Range_Radio(page());
  EXPECT_EQ(field(Control::Start_slider_val), u"0");
  EXPECT_EQ(field(Control::End_slider_val), u"1000");
  EXPECT_EQ(slider(Control::Start_Slider), 0);
  EXPECT_EQ(slider(Control::End_Slider), 1000);
}

TEST_P(RangeControls, TheChoiceOfOnePageLeavesTheOtherAlone) {
  const SettingsPage other =
      page() == SettingsPage::photo ? SettingsPage::signature : SettingsPage::photo;
  bench_.range.Sector_Range_Radio(page());
  EXPECT_TRUE(bench_.view.is_on(on_page(Control::entire_disk_rd, other)));
  EXPECT_FALSE(bench_.view.is_on(on_page(Control::sector_range_rd, other)));
  EXPECT_TRUE(bench_.view.is_hidden(on_page(Control::Start_Slider, other)));
}

TEST_P(RangeControls, OnlyADriveWithSectorsThatNoSliderReachesIsSaidToHaveThem) {
  const auto said_of = [this](TextView sectors) {
    bench_.view.type(on(Control::end_sector_entire_val), Text(sectors));
    bench_.range.Sector_Range_Radio(page());
    return utf8_from_text(field(Control::Sector_Range_Info));
  };
  EXPECT_EQ(said_of(u"2147483647"), about_range);
  EXPECT_EQ(said_of(u"2147483648"), about_range + about_far_sectors);
  EXPECT_EQ(said_of(u"8589934592"), about_range + about_far_sectors);
  EXPECT_EQ(said_of(u"1000"), about_range) << "another drive was chosen";
}

TEST_P(RangeControls, TheTextFollowsItsSlider) {
  drag(Control::Start_Slider, 12.9);
  drag(Control::End_Slider, 500);
  EXPECT_EQ(field(Control::Start_slider_val), u"12");
  EXPECT_EQ(field(Control::End_slider_val), u"500");
  drag(Control::Start_Slider, 0);
  EXPECT_EQ(field(Control::Start_slider_val), u"0");
}

TEST_P(RangeControls, TheTextSticksWhereThirtyTwoBitsEnd) {
  drag(Control::End_Slider, 2147483647.0);
  EXPECT_EQ(field(Control::End_slider_val), u"2147483647");
  drag(Control::End_Slider, 2147483648.0);
  EXPECT_EQ(field(Control::End_slider_val), u"2147483647");
  drag(Control::Start_Slider, 1e18);
  EXPECT_EQ(field(Control::Start_slider_val), u"2147483647");
}

TEST_P(RangeControls, TheSliderFollowsItsText) {
  type(Control::Start_slider_val, u"12");
  type(Control::End_slider_val, u"999");
  EXPECT_EQ(slider(Control::Start_Slider), 12);
  EXPECT_EQ(slider(Control::End_Slider), 999);
  type(Control::End_slider_val, u"1000");
  EXPECT_EQ(slider(Control::End_Slider), 1000);
}

TEST_P(RangeControls, TheSliderStaysForATextBeyondTheDrive) {
  type(Control::Start_slider_val, u"12");
  for (const TextView large : {u"1001", u"99999999999999999999999", u"1e999"}) {
    type(Control::Start_slider_val, large);
    EXPECT_EQ(slider(Control::Start_Slider), 12) << utf8_from_text(large);
    EXPECT_EQ(field(Control::Start_slider_val), large);
  }
}

TEST_P(RangeControls, JunkCountsAsZeroAndIsNotCorrected) {
  for (const TextView junk : {u"", u"abc", u"x5", u"-", u".", u"inf", u"nan", u"0x10"}) {
    type(Control::End_slider_val, u"500");
    type(Control::End_slider_val, junk);
    EXPECT_EQ(slider(Control::End_Slider), 0) << utf8_from_text(junk);
    EXPECT_EQ(field(Control::End_slider_val), junk);
  }
}

TEST_P(RangeControls, TextsAreReadAsFloatingPointNumbers) {
  type(Control::Start_slider_val, u"12.5");
  EXPECT_EQ(slider(Control::Start_Slider), 12.5);
  type(Control::Start_slider_val, u" 7 sectors");
  EXPECT_EQ(slider(Control::Start_Slider), 7);
  type(Control::Start_slider_val, u"-5");
  EXPECT_EQ(slider(Control::Start_Slider), 0) << "the slider ends there";
}

TEST_P(RangeControls, ASliderOnlyFollowsItsOwnText) {
  bench_.log.clear();
  type(Control::Start_slider_val, u"12");
  EXPECT_THAT(bench_.happened(), ElementsAre("value " + named("_Start_Slider") + " 12"));
}

TEST(RangeTexts, BeyondThirtyTwoBitsCanBeTyped) {
  WizardHarness bench;
  bench.open();
  bench.view.person_selects(Control::idTableView, 1);
  bench.wizard.Next_btn();
  bench.view.type(Control::Start_slider_val, u"8589934591");
  bench.range.controlTextDidChange(Control::Start_slider_val);
  EXPECT_EQ(bench.view.value(Control::Start_Slider), 8589934591.0);
}

TEST(RangeTexts, OtherFieldsMoveNothing) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.view.type(Control::path, u"5");
  for (const Control field : {Control::path, Control::path_Sig, Control::help_info}) {
    bench.range.controlTextDidChange(field);
  }
  EXPECT_THAT(bench.happened(), IsEmpty());
}

TEST(RangeTexts, WithoutADriveNothingIsFollowed) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.wizard.Back_btn();
  bench.log.clear();
  bench.view.type(Control::Start_slider_val, u"5");
  bench.range.controlTextDidChange(Control::Start_slider_val);
  EXPECT_THAT(bench.happened(), IsEmpty());
}

TEST(RangeGuidance, IsThatOfTheOneChoiceThatIsOn) {
  WizardHarness bench;
  for (const bool entire_disk : {true, false}) {
    for (const bool sector_range : {true, false}) {
      bench.view.turn(Control::entire_disk_rd, entire_disk);
      bench.view.turn(Control::sector_range_rd, sector_range);
      bench.log.clear();
      bench.range.show_guidance(SettingsPage::photo);
      if (entire_disk == sector_range) {
        EXPECT_THAT(bench.happened(), IsEmpty());
      } else {
        EXPECT_THAT(bench.happened(),
                    ElementsAre(text_set("_help_info",
                                         entire_disk ? entire_disk_help : sector_range_help)));
      }
    }
  }
}

}  // namespace
}  // namespace norvo::test
