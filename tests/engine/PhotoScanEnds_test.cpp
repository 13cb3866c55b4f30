// How a pass ends: at the end of its range, stopped, or by a table that is cut off.
#include <gtest/gtest.h>

#include "PhotoSearch.h"

namespace norvo::test {
namespace {

TEST(PhotoScan, AFileStillOpenAtTheEndOfTheRangeGetsItsLastSectorTwice) {
  expect_found({.drawing = "Jaa", .table = table_of({jpeg()})}, {{"JPG/GND00001.JPG", "0 1 2 2"}});
  expect_found({.drawing = "Jaz", .table = table_of({jpeg()})}, {{"JPG/GND00001.JPG", "0 1 z z"}});
  expect_found({.drawing = "aaJ", .table = table_of({jpeg()})}, {{"JPG/GND00001.JPG", "2 2"}});
}

TEST(PhotoScan, AFileThatReachesItsLimitWithTheLastSectorOfTheRangeGetsItOnce) {
  expect_found({.drawing = "Jaa", .table = table_of({jpeg(u"1536")})},
               {{"JPG/GND00001.JPG", "0 1 2"}});
}

TEST(PhotoScan, ANormalEndClosesTheDeviceAndLeavesTheFinalScreenToTheWorker) {
  PhotoSearch search("aJa");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.state.pFile_Disk, nullptr);
  EXPECT_FALSE(search.state.pFile_op.is_open());
  EXPECT_EQ(search.state.for_index, 3U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  const Report report{search.pass_path(Pass::general) / "JPG/GND00001.JPG", u"GND00001.JPG",
                      u"GND00001.JPG"};
  EXPECT_EQ(search.recorded_from(general_set_up_entries), (std::vector<Recorded>{report}));
}

// Stops while the first file's report is given.
void stop_at_first_report(PhotoSearch& search) {
  search.recorder.on_report = [&search](const Report&) {
    if (search.recorder.all<Report>().size() == 1) search.state.stop_now = 1;
  };
}

TEST(PhotoScan, AStopKeepsWhatWasWrittenAndReportsIt) {
  for (const std::size_t block_sectors : {1U, 2U, 3U, 7U, 512U}) {
    PhotoSearch search("JaJaaa");
    stop_at_first_report(search);
    EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()}), block_sectors));
    // The stop comes while sector 2 is dealt with; it is not written a second time.
    EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 2"}, {"JPG/GND00002.JPG", "2"}}));
    EXPECT_EQ(search.reported(),
              (std::vector<std::string>{"JPG/GND00001.JPG", "JPG/GND00002.JPG"}));
    EXPECT_EQ(search.state.for_index, 3U);
    EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
  }
}

TEST(PhotoScan, AStopTakesTheRequestBackAndClosesTheDeviceBeforeItReports) {
  PhotoSearch search("JJa");
  stop_at_first_report(search);
  std::vector<std::string> seen;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const auto* report = std::get_if<Report>(&entry);
    const bool second = report != nullptr && report->name == u"GND00002.JPG";
    if (!second && !std::holds_alternative<FinalScreenPosted>(entry)) return;
    seen.emplace_back(second ? "report" : "final screen");
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.pFile_Disk, nullptr);
    EXPECT_FALSE(search.state.pFile_op.is_open());
  };
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(seen, (std::vector<std::string>{"report", "final screen"}));
  EXPECT_EQ(search.recorder.recorded().back(), Recorded(FinalScreenPosted{}));
}

TEST(PhotoScan, AStopBetweenTwoFilesReportsNothingMore) {
  PhotoSearch search("JaaaJa");
  stop_at_first_report(search);
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(u"1024")})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1"}}));
  EXPECT_EQ(search.reported().size(), 1U);
  EXPECT_EQ(search.state.for_index, 2U);
}

TEST(PhotoScan, AStopBeforeTheFirstSectorReadsNothing) {
  PhotoSearch search("JJ");
  search.state.stop_now = 1;
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.medium.block_reads + search.medium.sector_reads, 0U);
  EXPECT_EQ(search.recorded_from(general_set_up_entries),
            (std::vector<Recorded>{FinalScreenPosted{}}));
  EXPECT_EQ(search.state.stop_now, 0);
}

TEST(PhotoScan, AStopWhileTheLastSectorIsDealtWithComesTooLate) {
  PhotoSearch search("JaJ");
  stop_at_first_report(search);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 2"}, {"JPG/GND00002.JPG", "2 2"}}));
  EXPECT_EQ(search.state.stop_now, 1);
  EXPECT_TRUE(search.recorder.all<FinalScreenPosted>().empty());
}

TEST(PhotoScan, OnlyTheValueOneOfTheStopFlagStops) {
  PhotoSearch search("Ja");
  search.state.stop_now = 2;
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 1"}}));
}

TEST(PhotoScan, AnEmptyTableEndsNormallyThoughAStopIsRequested) {
  PhotoSearch search("JJ");
  search.state.stop_now = 1;
  EXPECT_TRUE(search.run(Pass::general, {}));
  EXPECT_EQ(search.state.stop_now, 1);
}

TEST(PhotoScan, AnEmptyRangeEndsNormally) {
  PhotoSearch search("JJ");
  search.request.end_slider_val = u"0";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), Found{});
  EXPECT_EQ(search.state.total_sector, 0U);
  EXPECT_TRUE(search.recorder.all<operation::SetSectorLabel>().empty());
}

TEST(PhotoScan, ARunningNumberGoesOnFromPassToPassWhileFileNamesRestart) {
  PhotoSearch search("JJJ");
  const SignatureTable table = table_of({jpeg(u"512")});
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_TRUE(search.run(Pass::thorough, table));
  EXPECT_TRUE(search.run(Pass::general, table));
  std::vector<std::pair<Text, Text>> names;
  for (const Report& report : search.recorder.all<Report>()) {
    names.emplace_back(report.name, report.uid);
  }
  EXPECT_EQ(names, (std::vector<std::pair<Text, Text>>{{u"GND00001.JPG", u"GND00001.JPG"},
                                                       {u"GND00002.JPG", u"GND00002.JPG"},
                                                       {u"GND00003.JPG", u"GND00003.JPG"},
                                                       {u"THD00001.JPG", u"THD00001.JPG"},
                                                       {u"THD00002.JPG", u"THD00002.JPG"},
                                                       {u"THD00003.JPG", u"THD00003.JPG"},
                                                       {u"GND00001.JPG", u"GND00004.JPG"},
                                                       {u"GND00002.JPG", u"GND00005.JPG"},
                                                       {u"GND00003.JPG", u"GND00006.JPG"}}));
  EXPECT_EQ(search.state.GND_Image_number, 6U);
  EXPECT_EQ(search.state.THD_Image_number, 3U);
}

// Runs the General pass of `search`, however it ends.
std::function<void()> pass_of(PhotoSearch& search) {
  return [&search] { static_cast<void>(search.run(Pass::general, table_of({jpeg()}))); };
}

TEST(PhotoScan, ANormalEndLeavesTheProgressTimerRunning) {
  PhotoSearch search("Ja");
  EXPECT_TRUE(search.timer_survives(pass_of(search)));
}

TEST(PhotoScan, AStopInvalidatesTheProgressTimer) {
  PhotoSearch search("JJaa");
  stop_at_first_report(search);
  EXPECT_TRUE(search.timer_ends(pass_of(search)));
}

TEST(PhotoScan, ASavingFailureInvalidatesTheProgressTimer) {
  PhotoSearch search("Ja");
  search.request.destination = "/dev/null/nowhere";
  EXPECT_TRUE(search.timer_ends(pass_of(search)));
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(PhotoScan, ADeviceThatCannotBeOpenedInvalidatesTheProgressTimer) {
  PhotoSearch search("Ja");
  search.medium.open_error = ENOENT;
  EXPECT_TRUE(search.timer_ends(pass_of(search)));
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
}

}  // namespace
}  // namespace norvo::test
