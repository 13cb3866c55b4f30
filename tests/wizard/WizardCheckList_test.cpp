// The check list of file types, and the start of the searches that have one.
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

class EachSearch : public testing::TestWithParam<std::int32_t> {
 protected:
  std::vector<std::string> types() const {
    std::vector<std::string> names;
    for (const FileTypeEntry& row : bench_.check_list.rows()) {
      names.push_back(utf8_from_text(row.Extension) + (row.State ? "+" : "-"));
    }
    return names;
  }

  WizardHarness bench_;
};

INSTANTIATE_TEST_SUITE_P(VideoRawFileAudio, EachSearch, testing::Values(1, 2, 3));

TEST_P(EachSearch, NextOnTheSettingsShowsTheCheckList) {
  bench_.go_to_settings(GetParam());
  bench_.view.type(Control::path_Sig, u"/out");
  bench_.wizard.Next_btn();
  EXPECT_THAT(bench_.happened(),
              ElementsAre("on _Thro_Mode_Chk_SIG", "on _select_unselect_Chk",
                          hidden(signature_settings()), "stop_now = 0", "reload idCheckTableView",
                          text_set("_help_info", file_types_help), shown(check_list_screen),
                          "reload idCheckTableView"));
  EXPECT_EQ(bench_.view.visible(), check_list_screen + search_type_label);
  EXPECT_EQ(bench_.state.screen_counter, 2);
  EXPECT_TRUE(bench_.view.is_enabled(Control::next_btn));
  EXPECT_TRUE(bench_.view.is_enabled(Control::back_btn));
  EXPECT_FALSE(bench_.host.started);
}

TEST_P(EachSearch, TheCheckListHasTheTypesOfTheSearch) {
  bench_.go_to_screen_3(GetParam());
  if (GetParam() == 1) {
    EXPECT_THAT(types(), ElementsAre("AVI+", "mkv+", "MOV+"));
  }
  if (GetParam() == 2) {
    EXPECT_THAT(types(), ElementsAre("NEF+"));
  }
  if (GetParam() == 3) {
    EXPECT_THAT(types(), ElementsAre("MP3+"));
  }
}

TEST_P(EachSearch, NextStartsTheSearch) {
  bench_.go_to_screen_3(GetParam());
  bench_.wizard.Next_btn();
  EXPECT_THAT(bench_.happened(),
              ElementsAre("hand over selection", "reload idSigTableView", hidden(check_list_screen),
                          shown(file_scan_screen), "disable _next_btn", "disable _back_btn",
                          "check permissions of sdb1", "start search"));
  EXPECT_EQ(bench_.view.visible(), file_scan_screen + search_type_label);
  EXPECT_EQ(bench_.state.screen_counter, 3);
  EXPECT_EQ(bench_.host.started->Recovery_MODE, GetParam());
}

TEST_P(EachSearch, NextDoesNothingDuringIt) {
  bench_.go_to_file_scan(GetParam());
  bench_.wizard.Next_btn();
  EXPECT_THAT(bench_.happened(), IsEmpty());
  EXPECT_EQ(bench_.state.screen_counter, 3);
}

TEST_P(EachSearch, NextWantsAtLeastOneType) {
  bench_.go_to_screen_3(GetParam());
  bench_.check_list.Select_Unselect_Check(false);
  bench_.wizard.Next_btn();
  EXPECT_THAT(bench_.happened(), ElementsAre("hand over selection", "reload idSigTableView",
                                             told("Please select atleast one extension type."),
                                             "focus idCheckTableView"));
  EXPECT_EQ(bench_.view.visible(), check_list_screen + search_type_label);
  EXPECT_EQ(bench_.state.screen_counter, 2);
  EXPECT_FALSE(bench_.host.started);
}

TEST(WizardCheckList, AnEmptyOneIsRefusedToo) {
  WizardHarness bench;
  bench.tables = {};
  bench.go_to_screen_3(3);
  bench.wizard.Next_btn();
  EXPECT_THAT(bench.happened(), ElementsAre("hand over selection", "reload idSigTableView",
                                            told("Please select atleast one extension type."),
                                            "focus idCheckTableView"));
}

TEST(WizardCheckList, OneTickedTypeIsEnough) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.check_list.Select_Unselect_Check(false);
  bench.wizard.tick(2, true);
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.state.screen_counter, 3);
}

TEST(WizardCheckList, TicksAreLostWhenItIsReachedAgain) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.wizard.tick(0, false);
  bench.wizard.Back_btn();
  bench.wizard.Next_btn();
  EXPECT_TRUE(bench.check_list.all_selected());
  EXPECT_TRUE(bench.view.is_on(Control::select_unselect_Chk));
}

TEST(WizardCheckList, IsShownEmptyBeforeItIsShownFilled) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.wizard.Back_btn();
  std::vector<std::size_t> rows;
  bench.view.on_reload = [&](Control) { rows.push_back(bench.check_list.rows().size()); };
  bench.wizard.Next_btn();
  EXPECT_THAT(rows, ElementsAre(0U, 3U));
}

TEST(WizardCheckList, TheSelectAllBoxFollowsTheRows) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.wizard.tick(1, false);
  EXPECT_FALSE(bench.check_list.rows()[1].State);
  EXPECT_THAT(bench.happened(), ElementsAre("off _select_unselect_Chk"));
  bench.wizard.tick(0, false);
  EXPECT_THAT(bench.happened(), ElementsAre("off _select_unselect_Chk"));
  bench.wizard.tick(0, true);
  EXPECT_THAT(bench.happened(), ElementsAre("off _select_unselect_Chk"));
  bench.wizard.tick(1, true);
  EXPECT_THAT(bench.happened(), ElementsAre("on _select_unselect_Chk"));
}

TEST(WizardCheckList, TheSelectAllBoxTicksAllRowsOrNone) {
  WizardHarness bench;
  bench.go_to_screen_3(1);
  bench.view.turn(Control::select_unselect_Chk, false);
  bench.wizard.Select_Unselect_Check_btn();
  EXPECT_FALSE(bench.check_list.Check_For_One_Extension_Selection());
  EXPECT_THAT(bench.happened(), ElementsAre("reload idCheckTableView"));
  bench.view.turn(Control::select_unselect_Chk, true);
  bench.wizard.Select_Unselect_Check_btn();
  EXPECT_TRUE(bench.check_list.all_selected());
}

}  // namespace
}  // namespace norvo::test
