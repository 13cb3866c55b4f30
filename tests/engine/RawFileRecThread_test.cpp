// What a search for videos, raw files or audio makes of its passes.
#include <gtest/gtest.h>

#include <cerrno>

#include "RawFileSearch.h"
#include "engine/ScanWorker.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

SelectedTables both_tables() {
  return {table_of({jpeg()}), table_of({png()})};
}

std::vector<Pass> passes_of(const RawFileSearch& search) {
  std::vector<Pass> passes;
  for (const auto& begin : search.recorder.all<operation::BeginPass>()) {
    passes.push_back(begin.pass);
  }
  return passes;
}

std::size_t final_screens(const RawFileSearch& search) {
  return search.recorder.all<FinalScreenPosted>().size();
}

const std::vector<Pass> general_only{Pass::general};
const std::vector<Pass> both{Pass::general, Pass::thorough};

TEST(RawFileRecThread, RunsBothPassesWithTheirOwnTablesAndThenShowsTheFinalScreen) {
  RawFileSearch search("JaPa");
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0 1 2 3 3"}}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"PNG/PNG00001.PNG", "2 3 3"}}));
  EXPECT_EQ(final_screens(search), 1U);
  EXPECT_EQ(search.recorder.recorded().back(), Recorded(FinalScreenPosted{}));
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  EXPECT_EQ(search.state.stop_now, 0);
}

TEST(RawFileRecThread, APassHasTheStreamsFromItsStartToItsEnd) {
  RawFileSearch search("JaPa");
  std::vector<bool> running;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const bool told =
        std::holds_alternative<Report>(entry) || std::holds_alternative<FinalScreenPosted>(entry);
    if (told) running.push_back(search.state.pass_running);
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(running, (std::vector<bool>{true, true, false})) << "a file of each pass, the end";
}

TEST(RawFileRecThread, RunsNoThoroughPassWhenItIsNotWanted) {
  RawFileSearch search("JaPa");
  search.request.thorough = false;
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(RawFileRecThread, EachPassMayHaveNothingToLookFor) {
  RawFileSearch search("JaPa");
  Raw_File_Rec_Thread(search.context(), {{}, table_of({png()})});
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"PNG/PNG00001.PNG", "2 3 3"}}));
  RawFileSearch other("JaPa");
  Raw_File_Rec_Thread(other.context(), {table_of({jpeg()}), {}});
  EXPECT_EQ(passes_of(other), both);
  EXPECT_EQ(other.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0 1 2 3 3"}}));
}

TEST(RawFileRecThread, ADialogOnTheMainWindowGetsAStopRequestInsteadOfTheFinalScreen) {
  for (const bool thorough : {false, true}) {
    RawFileSearch search("JaPa");
    search.request.thorough = thorough;
    search.recorder.window_is_modal = true;
    Raw_File_Rec_Thread(search.context(), both_tables());
    EXPECT_EQ(passes_of(search), thorough ? both : general_only);
    EXPECT_EQ(final_screens(search), 0U);
    EXPECT_EQ(search.state.stop_now, 1);
    EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  }
}

TEST(RawFileRecThread, ADialogGetsAStopRequestEvenWhenTheFinalScreenWasShownAlready) {
  RawFileSearch search("JaJ");
  search.recorder.window_is_modal = true;
  search.recorder.on_report = [&search](const Report&) {
    search.state.stop_screen_already_show = 1;
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(search.state.stop_now, 1);
  EXPECT_EQ(final_screens(search), 0U);
}

TEST(RawFileRecThread, ADialogDoesNotMatterWhenTheGeneralPassWasStopped) {
  RawFileSearch search("JJaa");
  search.recorder.window_is_modal = true;
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"JPG00001.JPG") search.state.stop_now = 1;
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 2U);
  EXPECT_EQ(search.state.stop_now, 0);
}

TEST(RawFileRecThread, AStopInTheGeneralPassEndsTheSearchWithoutAThoroughPass) {
  RawFileSearch search("JJaa");
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"JPG00001.JPG") search.state.stop_now = 1;
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  // The pass asked for the final screen, and as it has not been shown yet, the worker does again.
  EXPECT_EQ(final_screens(search), 2U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
}

TEST(RawFileRecThread, DoesNotAskAgainForAFinalScreenThatWasShownAlready) {
  RawFileSearch search("JJaa");
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"JPG00001.JPG") search.state.stop_now = 1;
  };
  search.recorder.on_entry = [&search](const Recorded& entry) {
    if (std::holds_alternative<FinalScreenPosted>(entry)) {
      search.state.stop_screen_already_show = 1;
    }
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(RawFileRecThread, AStopInTheThoroughPassEndsTheSearch) {
  RawFileSearch search("JaPPaa");
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"PNG00001.PNG") search.state.stop_now = 1;
  };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
  EXPECT_EQ(final_screens(search), 2U);
}

TEST(RawFileRecThread, ASavingFailureInEitherPassEndsTheSearch) {
  for (const bool in_thorough : {false, true}) {
    RawFileSearch search("JaPa");
    const Pass pass = in_thorough ? Pass::thorough : Pass::general;
    make_file(search.pass_path(pass) / (in_thorough ? "PNG" : "JPG"), "in the way");
    Raw_File_Rec_Thread(search.context(), both_tables());
    EXPECT_EQ(passes_of(search), in_thorough ? both : general_only);
    EXPECT_EQ(search.recorder.all<MessageBox>().size(), 1U);
    EXPECT_EQ(final_screens(search), 2U);
    EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
  }
}

TEST(RawFileRecThread, ADeviceThatCannotBeOpenedEndsTheSearchWithoutAFinalScreen) {
  RawFileSearch search("Ja");
  search.medium.open_error = ENOENT;
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 0U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
}

TEST(RawFileRecThread, ADeviceThatCannotBeOpenedForTheThoroughPassAlsoSparesTheFinalScreen) {
  RawFileSearch search("JaJ");
  search.recorder.on_report = [&search](const Report&) { search.medium.open_error = EACCES; };
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.recorder.all<PermissionAlert>().size(), 1U);
  EXPECT_EQ(final_screens(search), 0U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
}

TEST(RawFileRecThread, ABrokenGeneralTableRunsTheThoroughPassWhichReportsWhatWasLeftOpen) {
  RawFileSearch search("JaPa");
  SelectedTables tables = both_tables();
  tables.CheckListHeader_Array = cut_off({jpeg()}, gif(), 4);
  Raw_File_Rec_Thread(search.context(), tables);
  EXPECT_EQ(passes_of(search), both);
  EXPECT_TRUE(search.recorder.all<MessageBox>().empty());
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/JPG00001.JPG", "0"}}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"PNG/PNG00001.PNG", "2 3 3"}}));
  std::vector<Text> names;
  for (const Report& report : search.recorder.all<Report>()) names.push_back(report.name);
  EXPECT_EQ(names, (std::vector<Text>{u"JPG00001.JPG", u"PNG00001.PNG"}));
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(RawFileRecThread, TheFlagAndOutcomeOfThePreviousSearchAreForgotten) {
  RawFileSearch search("JaPa");
  search.state.stop_screen_already_show = 1;
  search.state.outcome = SearchOutcome::open_failed;
  Raw_File_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(final_screens(search), 1U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
}

}  // namespace
}  // namespace norvo::test
