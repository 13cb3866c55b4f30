// What a stop does to the files that are being carved.
#include <gtest/gtest.h>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

using Paths = std::vector<std::string>;

// Stops while the first file's report is given.
void stop_at_first_report(RawFileSearch& search) {
  search.recorder.on_report = [&search](const Report&) {
    if (search.recorder.all<Report>().size() == 1) search.state.stop_now = 1;
  };
}

TEST(RawFileScan, AStopKeepsWhatWasWrittenAndReportsAllOpenFilesInTheirOrder) {
  for (const std::size_t block_sectors : {1U, 2U, 3U, 7U, 512U}) {
    RawFileSearch search("aJaJaa");
    const SignatureTable table = table_of({jpeg(), jfif()});
    search.add_rows(table);
    stop_at_first_report(search);
    EXPECT_FALSE(search.run(Pass::general, table, block_sectors));
    // The stop comes while sector 3 is dealt with, which still starts its files.
    EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "1 2 3"},
                                     {"JFI/JFI00001.JFI", "1 2 3"},
                                     {"JPG/JPG00002.JPG", "3"},
                                     {"JFI/JFI00002.JFI", "3"}}));
    EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JFI/JFI00001.JFI", "JPG/JPG00002.JPG",
                                        "JFI/JFI00002.JFI"}));
    EXPECT_EQ(search.counted(u"JFI"), u"2");
    EXPECT_EQ(search.state.for_index, 4U);
    EXPECT_EQ(search.state.outcome, SearchOutcome::stopped);
  }
}

TEST(RawFileScan, AStopWritesNothingMoreToFilesThatAreStillCarved) {
  for (const std::size_t block_sectors : {1U, 2U, 3U, 7U, 512U}) {
    RawFileSearch search("Jaaaaa");
    stop_at_first_report(search);
    EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(), jfif(u"1536")}), block_sectors));
    EXPECT_EQ(search.found(),
              (Found{{"JPG/JPG00001.JPG", "0 1 2"}, {"JFI/JFI00002.JFI", "0 1 2"}}));
    EXPECT_EQ(search.reported(), (Paths{"JFI/JFI00002.JFI", "JPG/JPG00001.JPG"}));
    EXPECT_EQ(search.state.for_index, 3U);
  }
}

TEST(RawFileScan, AStopTakesTheRequestBackAndClosesDeviceAndFilesBeforeItReports) {
  RawFileSearch search("JaJa");
  stop_at_first_report(search);
  std::vector<std::string> seen;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const auto* report = std::get_if<Report>(&entry);
    if (report != nullptr && report->name == u"JPG00001.JPG") return;
    if (report != nullptr) {
      for (const char* file : {"JFI/JFI00002.JFI", "EXT/EXT00003.EXT"}) {
        seen.push_back(search.card.describe(bytes_of(search.pass_path(Pass::general) / file)));
      }
    } else if (std::holds_alternative<FinalScreenPosted>(entry)) {
      seen.emplace_back("final screen");
    } else {
      return;
    }
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.pFile_Disk, nullptr);
  };
  const TypeRow extended{u"EXT", no_limit, u"FFD8FFE05A"};
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(u"1024"), jfif(), extended})));
  EXPECT_EQ(seen, (std::vector<std::string>{"0 1", "0 1", "0 1", "0 1", "final screen"}));
  EXPECT_EQ(search.recorder.recorded().back(), Recorded(FinalScreenPosted{}));
}

TEST(RawFileScan, AStopBetweenTwoFilesReportsNothingMore) {
  RawFileSearch search("JaaaJa");
  stop_at_first_report(search);
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(u"1024")})));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1"}}));
  EXPECT_EQ(search.reported().size(), 1U);
  EXPECT_EQ(search.state.for_index, 2U);
}

TEST(RawFileScan, AStopBeforeTheFirstSectorReadsNothing) {
  RawFileSearch search("JJ");
  search.state.stop_now = 1;
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.medium.block_reads + search.medium.sector_reads, 0U);
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries),
            (std::vector<Recorded>{FinalScreenPosted{}}));
  EXPECT_EQ(search.state.stop_now, 0);
  EXPECT_EQ(search.state.pFile_Disk, nullptr);
}

TEST(RawFileScan, AStopWhileTheLastSectorIsDealtWithComesTooLate) {
  RawFileSearch search("JaJ");
  stop_at_first_report(search);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 2"}, {"JPG/JPG00002.JPG", "2 2"}}));
  EXPECT_EQ(search.state.stop_now, 1);
  EXPECT_TRUE(search.recorder.all<FinalScreenPosted>().empty());
}

TEST(RawFileScan, OnlyTheValueOneOfTheStopFlagStops) {
  RawFileSearch search("Ja");
  search.state.stop_now = 2;
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 1"}}));
}

TEST(RawFileScan, AStopInTheThoroughPassLeavesTheGeneralPassesFilesAlone) {
  RawFileSearch search("JaJa");
  const SignatureTable table = table_of({jpeg()});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  search.recorder.on_report = [&search](const Report&) { search.state.stop_now = 1; };
  EXPECT_FALSE(search.run(Pass::thorough, table));
  EXPECT_EQ(search.found(Pass::general),
            (Found{{"JPG/JPG00001.JPG", "0 1 2"}, {"JPG/JPG00002.JPG", "2 3 3"}}));
  EXPECT_EQ(search.found(Pass::thorough),
            (Found{{"JPG/JPG00003.JPG", "0 1 2"}, {"JPG/JPG00004.JPG", "2"}}));
}

TEST(RawFileScan, ANormalEndLeavesTheProgressTimerRunning) {
  RawFileSearch search("Ja");
  EXPECT_TRUE(
      search.timer_survives([&] { EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()}))); }));
}

TEST(RawFileScan, AStopInvalidatesTheProgressTimer) {
  RawFileSearch search("JJaa");
  stop_at_first_report(search);
  EXPECT_TRUE(
      search.timer_ends([&] { EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()}))); }));
}

}  // namespace
}  // namespace norvo::test
