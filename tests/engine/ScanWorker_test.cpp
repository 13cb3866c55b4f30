// What a photo search makes of its passes, and its threads.
#include "engine/ScanWorker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "PhotoSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

SignatureTables both_tables() {
  SignatureTables tables;
  tables.Ext_Array = table_of({jpeg()});
  tables.Adv_Ext_Array = table_of({png()});
  return tables;
}

std::vector<Pass> passes_of(const PhotoSearch& search) {
  std::vector<Pass> passes;
  for (const auto& begin : search.recorder.all<operation::BeginPass>()) {
    passes.push_back(begin.pass);
  }
  return passes;
}

std::size_t final_screens(const PhotoSearch& search) {
  return search.recorder.all<FinalScreenPosted>().size();
}

const std::vector<Pass> general_only{Pass::general};
const std::vector<Pass> both{Pass::general, Pass::thorough};

TEST(PhotoRecThread, RunsBothPassesWithTheirOwnTablesAndThenShowsTheFinalScreen) {
  PhotoSearch search("JaPa");
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0 1 2 3 3"}}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"PNG/THD00001.PNG", "2 3 3"}}));
  EXPECT_EQ(final_screens(search), 1U);
  EXPECT_EQ(search.recorder.recorded().back(), Recorded(FinalScreenPosted{}));
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
}

TEST(PhotoRecThread, APassHasTheStreamsFromItsStartToItsEnd) {
  PhotoSearch search("JaPa");
  std::vector<bool> running;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const bool told =
        std::holds_alternative<Report>(entry) || std::holds_alternative<FinalScreenPosted>(entry);
    if (told) running.push_back(search.state.pass_running);
  };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(running, (std::vector<bool>{true, true, false})) << "a file of each pass, the end";
}

TEST(PhotoRecThread, RunsNoThoroughPassWhenItIsNotWanted) {
  PhotoSearch search("JaPa");
  search.request.thorough = false;
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(PhotoRecThread, AStopInTheGeneralPassEndsTheSearchWithoutAThoroughPass) {
  PhotoSearch search("JJaa");
  search.recorder.on_report = [&search](const Report&) { search.state.stop_now = 1; };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  // The pass asked for the final screen, and as it has not been shown yet, the worker does again.
  EXPECT_EQ(final_screens(search), 2U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
}

TEST(PhotoRecThread, DoesNotAskAgainForAFinalScreenThatWasShownAlready) {
  PhotoSearch search("JJaa");
  search.recorder.on_report = [&search](const Report&) { search.state.stop_now = 1; };
  search.recorder.on_entry = [&search](const Recorded& entry) {
    if (std::holds_alternative<FinalScreenPosted>(entry)) {
      search.state.stop_screen_already_show = 1;
    }
  };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(PhotoRecThread, AStopAtTheVeryEndOfTheGeneralPassEndsTheThoroughPassAtItsStart) {
  PhotoSearch search("JaJ");
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"GND00002.JPG") search.state.stop_now = 1;
  };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.state.for_index, 0U);
  EXPECT_EQ(search.state.stop_now, 0);
  EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
  EXPECT_EQ(final_screens(search), 2U);
}

TEST(PhotoRecThread, ASavingFailureInTheGeneralPassEndsTheSearch) {
  PhotoSearch search("Ja");
  make_file(search.folder.path() / "Norvo Birch Results", "in the way");
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(search.recorder.all<MessageBox>().size(), 1U);
  EXPECT_EQ(final_screens(search), 2U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(PhotoRecThread, ASavingFailureInTheThoroughPassEndsTheSearchToo) {
  PhotoSearch search("JaPa");
  make_file(search.pass_path(Pass::thorough) / "PNG", "in the way");
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.reported(), (std::vector<std::string>{"JPG/GND00001.JPG"}));
  EXPECT_EQ(search.recorder.all<MessageBox>().size(), 1U);
  EXPECT_EQ(final_screens(search), 2U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(PhotoRecThread, ADeviceThatCannotBeOpenedEndsTheSearchWithoutAFinalScreen) {
  PhotoSearch search("Ja");
  search.medium.open_error = ENOENT;
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 0U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
}

TEST(PhotoRecThread, ADeviceThatCannotBeOpenedForTheThoroughPassAlsoSparesTheFinalScreen) {
  PhotoSearch search("JaJ");
  search.recorder.on_report = [&search](const Report&) { search.medium.open_error = EACCES; };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.recorder.all<PermissionAlert>().size(), 1U);
  EXPECT_EQ(final_screens(search), 0U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
}

TEST(PhotoRecThread, AFinalScreenShownDuringTheGeneralPassSparesThoroughPassAndPost) {
  PhotoSearch search("JaJ");
  search.recorder.on_report = [&search](const Report& report) {
    if (report.name == u"GND00002.JPG") search.state.stop_screen_already_show = 1;
  };
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), general_only);
  EXPECT_EQ(final_screens(search), 0U);
}

TEST(PhotoRecThread, ABrokenGeneralTableDoesNotKeepTheThoroughPassFromRunning) {
  PhotoSearch search("JaPa");
  SignatureTables tables = both_tables();
  tables.Ext_Array.emplace_back(u"GIF");
  Photo_Rec_Thread(search.context(), tables);
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.recorder.all<MessageBox>().size(), 1U);
  EXPECT_EQ(search.found(Pass::general), (Found{{"JPG/GND00001.JPG", "0"}}));
  EXPECT_EQ(search.found(Pass::thorough), (Found{{"PNG/THD00001.PNG", "2 3 3"}}));
}

TEST(PhotoRecThread, AnEmptyDeviceRunsBothPassesAndCompletes) {
  PhotoSearch search("");
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  EXPECT_EQ(final_screens(search), 1U);
}

TEST(PhotoRecThread, TheFlagAndOutcomeOfThePreviousSearchAreForgotten) {
  PhotoSearch search("JaPa");
  search.state.stop_screen_already_show = 1;
  search.state.outcome = SearchOutcome::open_failed;
  Photo_Rec_Thread(search.context(), both_tables());
  EXPECT_EQ(passes_of(search), both);
  EXPECT_EQ(final_screens(search), 1U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
}

TEST(ScanWorker, RunsTheWorkOnAThreadOfItsOwnAndWaitsForIt) {
  PhotoSearch search("Ja");
  std::thread::id worker_thread;
  ScanWorker worker;
  worker.start(search.context(), [&] { worker_thread = std::this_thread::get_id(); });
  worker.wait();
  EXPECT_NE(worker_thread, std::thread::id());
  EXPECT_NE(worker_thread, std::this_thread::get_id());
  worker.wait();  // nothing to wait for any more
}

TEST(ScanWorker, IsWaitedForWhenItIsDestroyed) {
  PhotoSearch search("Ja");
  std::atomic<bool> ended{false};
  {
    ScanWorker worker;
    worker.start(search.context(), [&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      ended = true;
    });
  }
  EXPECT_TRUE(ended);
}

// Waits up to a minute for a refresh after the first `before` ones.
bool refreshes_after(const PhotoSearch& search, std::size_t before) {
  for (int waited = 0; waited < 600; ++waited) {
    if (search.recorder.all<operation::SetSectorLabel>().size() > before) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

TEST(ScanWorker, AfterANormalEndTheTimerGoesOnShowingOneHundredPercent) {
  PhotoSearch search("aaaa", 1000);
  ScanWorker worker;
  const SignatureTables tables = both_tables();
  worker.start(search.context(), [&] { Photo_Rec_Thread(search.context(), tables); });
  worker.wait();
  const std::size_t shown = search.recorder.all<operation::SetSectorLabel>().size();
  EXPECT_TRUE(refreshes_after(search, shown));
  search.timer.invalidate();
  EXPECT_EQ(search.recorder.all<operation::SetSectorLabel>().back().text,
            u"Sectors 1004 of 1004   ( Completed 100% )");
}

TEST(ScanWorker, APassThatFailsAtOnceLeavesNoTimerBehind) {
  PhotoSearch search("aaaa");
  search.medium.open_error = ENOENT;
  ScanWorker worker;
  const SignatureTables tables = both_tables();
  worker.start(search.context(), [&] { Photo_Rec_Thread(search.context(), tables); });
  worker.wait();
  const std::size_t entries = search.recorder.recorded().size();
  std::this_thread::sleep_for(std::chrono::milliseconds(1200));
  EXPECT_EQ(search.recorder.recorded().size(), entries);
}

}  // namespace
}  // namespace norvo::test
