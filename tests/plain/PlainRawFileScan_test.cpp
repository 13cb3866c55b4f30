#include <gtest/gtest.h>

#include "PlainTestKit.h"

namespace plain {
namespace {

using Names = std::vector<std::string>;

const std::string kVideoFolder = "/d/R/Video Search/General Recovery Results";

Bytes video_of(const Outcome& outcome, const std::string& path) {
  return file_of(outcome, kVideoFolder + "/" + path);
}

bool starts_video(const Bytes& sector, const Text& header, const Text& offset, const Text& gate) {
  return starts_file(1, sector, header, offset, gate);
}

Search video_search(const std::vector<Bytes>& sectors, const Text& maximum = u"100000") {
  Search search = search_of(1, sectors);
  add_record(search.general, u"MOV", maximum, u"AABB", u"1", u"170");
  search.row_types = {u"MOV"};
  return search;
}

TEST(PlainRawFileScan, EndsAFileAtTheNextHeaderOrAtTheEndOfTheRange) {
  const Outcome outcome = run(video_search({kHeader, kOther, zero_sector(), kHeader, kThird}));
  EXPECT_EQ(video_of(outcome, "MOV/MOV00001.MOV"),
            joined({kHeader, kOther, zero_sector(), kHeader}));
  EXPECT_EQ(video_of(outcome, "MOV/MOV00002.MOV"), joined({kHeader, kThird, kThird}));
  const std::string path = kVideoFolder + "/MOV/MOV00002.MOV";
  EXPECT_EQ(outcome.rows, (std::vector<Row>{{"MOV", "2", "MOV00002.MOV", path, "MOV"}}));
  EXPECT_EQ(outcome.events.at(2), (Event{.kind = EventKind::kReport,
                                         .path = path,
                                         .name = "MOV00002.MOV",
                                         .uid = "MOV00002.MOV"}));
}

TEST(PlainRawFileScan, NamesItsFolderAfterTheMode) {
  for (const auto& [mode, folder] :
       {std::pair{1, "Video Search"}, {2, "File Search"}, {3, "Audio File Search"}}) {
    Search search = search_of(mode, {});
    search.thorough = true;
    const std::string root = std::string("/d/R/") + folder;
    EXPECT_EQ(run(search).folders,
              (std::set<std::string>{"/d/R", root, root + "/General Recovery Results",
                                     root + "/Omitted (recovered by Thorough Scan)"}));
  }
}

TEST(PlainRawFileScan, EndsAFileAtItsOwnMaximum) {
  Search search = video_search({kHeader, kOther, kOther, kOther}, u"1024");
  add_record(search.general, u"MP4", u"99999", u"CC", u"1", u"204");
  EXPECT_EQ(video_of(run(search), "MOV/MOV00001.MOV"), joined({kHeader, kOther}));
  search = video_search({kHeader, kOther, kOther, kOther}, u"1025");
  EXPECT_EQ(video_of(run(search), "MOV/MOV00001.MOV"), joined({kHeader, kOther, kOther}));
}

TEST(PlainRawFileScan, WritesTheHeaderSectorTwiceWhenItReachesTheMaximum) {
  for (const char16_t* maximum : {u"512", u"1", u"0", u""}) {
    const Outcome outcome = run(video_search({kHeader, kOther}, maximum));
    EXPECT_EQ(video_of(outcome, "MOV/MOV00001.MOV"), joined({kHeader, kHeader}));
  }
}

TEST(PlainRawFileScan, TakesANegativeMaximumForAHugeOne) {
  const Outcome outcome = run(video_search({kHeader, kOther}, u"-512"));
  EXPECT_EQ(video_of(outcome, "MOV/MOV00001.MOV"), joined({kHeader, kOther, kOther}));
}

TEST(PlainRawFileScan, FindsHeadersByTheirRule) {
  EXPECT_TRUE(starts_video(sector_with({0xAA}, 0, 506), u"AA", u"507", u"170"));
  EXPECT_FALSE(starts_video(sector_with({0xAA}, 0, 507), u"AA", u"508", u"170"));
  EXPECT_FALSE(starts_video(sector_with({1, 0, 0}, 0, 506), u"01000000000000", u"507", u"1"));
  EXPECT_FALSE(starts_video(kHeader, u"AA", u"0", u"170"));
  EXPECT_FALSE(starts_video(kHeader, u"", u"nn", u"170"));
  EXPECT_FALSE(starts_video(sector_with({}, 0xAA), u"A", u"nn", u"170"));
  EXPECT_FALSE(starts_video(zero_sector(), u"00", u"1", u"0"));
  EXPECT_FALSE(starts_video(sector_with({0x41, 0x42}, 0x40, 100), u"4142", u"nn", u"65"));
  EXPECT_TRUE(starts_video(sector_with({0x41, 0x42, 0x41, 0x42, 0x43}), u"414243", u"nn", u"65"));
  EXPECT_FALSE(starts_video(sector_with({0x41, 0x41, 0x41, 0x42}), u"414142", u"nn", u"65"));
  EXPECT_TRUE(starts_video(sector_with({0x42}, 0x41, 511), u"4142", u"nn", u"65"));
  EXPECT_FALSE(starts_video(sector_with({}, 0x41), u"4142", u"nn", u"65"));
}

TEST(PlainRawFileScan, OpensAFileForEveryTypeOfTheHeader) {
  Search search = search_of(1, {kHeader, kOther});
  add_record(search.general, u"A", u"9999", u"BB", u"1", u"187");      // before the match
  add_record(search.general, u"B", u"9999", u"AABB", u"1", u"170");    // the match
  add_record(search.general, u"C", u"9999", u"BB", u"7", u"187");      // part of it
  add_record(search.general, u"D", u"9999", u"AABBCC", u"1", u"170");  // holds it, same rule
  add_record(search.general, u"E", u"9999", u"AABBCC", u"nn", u"170");
  add_record(search.general, u"F", u"9999", u"aabb", u"1", u"170");
  add_record(search.general, u"G", u"9999", u"", u"1", u"170");
  const Outcome outcome = run(search);
  EXPECT_EQ(reported_names(outcome), (Names{"B00001.B", "C00002.C", "D00003.D"}));
  for (const std::string path : {"B/B00001.B", "C/C00002.C", "D/D00003.D"}) {
    EXPECT_EQ(video_of(outcome, path), joined({kHeader, kOther, kOther})) << path;
  }
}

TEST(PlainRawFileScan, KeepsTheOthersOpenWhenOneReachesItsMaximum) {
  Search search = video_search({kHeader, kOther, kThird}, u"1024");
  add_record(search.general, u"MP4", u"99999", u"AABB", u"1", u"170");
  add_record(search.general, u"M4V", u"1024", u"AABB", u"1", u"170");
  const Outcome outcome = run(search);
  EXPECT_EQ(reported_names(outcome), (Names{"MOV00001.MOV", "M4V00003.M4V", "MP400002.MP4"}));
  EXPECT_EQ(video_of(outcome, "M4V/M4V00003.M4V"), joined({kHeader, kOther}));
  EXPECT_EQ(video_of(outcome, "MP4/MP400002.MP4"), joined({kHeader, kOther, kThird, kThird}));
}

TEST(PlainRawFileScan, SharesOnePathBetweenTwoRecordsOfOneType) {
  Search search = video_search({kHeader, kOther, kThird, kOther}, u"1024");
  add_record(search.general, u"MOV", u"2048", u"AABB", u"1", u"170");
  const Outcome outcome = run(search);
  EXPECT_EQ(reported_names(outcome), (Names{"MOV00001.MOV", "MOV00001.MOV"}));
  EXPECT_EQ(video_of(outcome, "MOV/MOV00001.MOV"), joined({kHeader, kOther, kThird, kOther}));
  EXPECT_EQ(outcome.rows.at(0).NoOfFile, "2");
  search.row_types.clear();
  EXPECT_EQ(reported_names(run(search)), (Names{"MOV00001.MOV", "MOV00002.MOV"}));
}

TEST(PlainRawFileScan, LeavesOutTypesBeyondThirtySlotsButMakesTheirFolders) {
  Search search = search_of(1, {kHeader, kHeader});
  for (char16_t type = u'A'; type <= u'Z'; ++type) {
    add_record(search.general, Text(1, type), u"9999", u"AABB", u"1", u"170");
  }
  for (char16_t type = u'a'; type <= u'f'; ++type) {
    add_record(search.general, Text(1, type), u"9999", u"AABB", u"1", u"170");
  }
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 60U);
  EXPECT_EQ(video_of(outcome, "d/d00030.d"), joined({kHeader, kHeader}));
  EXPECT_EQ(video_of(outcome, "A/A00031.A"), joined({kHeader, kHeader}));
  EXPECT_TRUE(outcome.folders.contains(kVideoFolder + "/e"));
  EXPECT_TRUE(outcome.folders.contains(kVideoFolder + "/f"));
}

TEST(PlainRawFileScan, GivesATypeWithAFullStopTheSameNameAgain) {
  Search search = search_of(1, {kHeader, kOther, kHeader, kThird});
  add_record(search.general, u"TAR.GZ", u"9999", u"AABB", u"1", u"170");
  search.row_types = {u"TAR.GZ"};
  const Outcome outcome = run(search);
  EXPECT_EQ(reported_names(outcome), (Names{"TAR.GZ00001.TAR.GZ", "TAR.GZ00001.TAR.GZ"}));
  EXPECT_EQ(video_of(outcome, "TAR.GZ/TAR.GZ00001.TAR.GZ"), joined({kHeader, kThird, kThird}));
  EXPECT_EQ(outcome.rows.at(0).NoOfFile, "0");
}

TEST(PlainRawFileScan, OverwritesAFileWhoseReportFoundTheWindowFull) {
  Search search = video_search({kHeader, kOther, kHeader});
  add_record(search.general, u"MP4", u"9999", u"AABB", u"1", u"170");
  search.row_types.push_back(u"MP4");
  search.initial_shown_item_count = 1999;
  const Outcome outcome = run(search);
  // The clearing comes after the reports and after the new names are made.
  EXPECT_EQ(kinds_of(outcome),
            (std::vector<EventKind>{EventKind::kModeLabel, EventKind::kReport, EventKind::kReport,
                                    EventKind::kClearing, EventKind::kReport, EventKind::kReport,
                                    EventKind::kFinalScreen}));
  EXPECT_EQ(reported_names(outcome),
            (Names{"MOV00001.MOV", "MP400001.MP4", "MOV00002.MOV", "MP400001.MP4"}));
  EXPECT_EQ(video_of(outcome, "MP4/MP400001.MP4"), joined({kHeader, kHeader}));
  EXPECT_EQ(outcome.events.at(3).text,
            "To maintain the speed of recovery, file window is cleared after every 2000 files.");
  EXPECT_EQ(outcome.shown_item_count, 2U);
  EXPECT_EQ(outcome.rows.at(1).NoOfFile, "1");
}

TEST(PlainRawFileScan, ReportsOpenFilesOnAStopWithoutWritingThem) {
  Search search = video_search({kHeader, kOther, kThird, kThird}, u"1024");
  add_record(search.general, u"MP4", u"9999", u"AABB", u"1", u"170");
  search.stop_after_reports = 1;
  const Outcome outcome = run(search);
  EXPECT_FALSE(outcome.general_result);
  EXPECT_EQ(reported_names(outcome), (Names{"MOV00001.MOV", "MP400002.MP4"}));
  EXPECT_EQ(video_of(outcome, "MP4/MP400002.MP4"), joined({kHeader, kOther}));
}

TEST(PlainRawFileScan, NumbersAgainFromOneInTheThoroughPassWithoutARow) {
  Search search = video_search({kHeader, kHeader}, u"512");
  search.thorough = true;
  search.thorough_table = search.general;
  EXPECT_EQ(reported_names(run(search)),
            (Names{"MOV00001.MOV", "MOV00002.MOV", "MOV00003.MOV", "MOV00004.MOV"}));
  search.row_types.clear();
  EXPECT_EQ(reported_names(run(search)),
            (Names{"MOV00001.MOV", "MOV00002.MOV", "MOV00001.MOV", "MOV00002.MOV"}));
}

TEST(PlainRawFileScan, TakesTheBufferForFillerOnceThePositionIsRefused) {
  Search search = video_search({kOther, kHeader});
  search.sectors_val = 5;
  search.device.seek_past_end_fails = true;
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 2U);
  EXPECT_EQ(video_of(outcome, "MOV/MOV00002.MOV"), joined({kHeader, kHeader, kHeader, kHeader}));
}

TEST(PlainRawFileScan, LeavesFilesAsTheyAreWhenARecordIsIncomplete) {
  Search search = video_search({kHeader, kOther});
  search.general.push_back(u"MP4");
  search.thorough = true;
  const Outcome outcome = run(search);
  EXPECT_TRUE(outcome.general_result);
  EXPECT_EQ(video_of(outcome, "MOV/MOV00001.MOV"), kHeader);
  // The entry of the file outlives the pass, its stream does not.
  EXPECT_EQ(kinds_of(outcome),
            (std::vector<EventKind>{EventKind::kModeLabel, EventKind::kModeLabel,
                                    EventKind::kReport, EventKind::kFinalScreen}));
  search.thorough = false;
  EXPECT_TRUE(reported_names(run(search)).empty());
}

TEST(PlainRawFileScan, ReadsAnEntryOnlyWhenItNeedsIt) {
  Search search = video_search({kHeader, zero_sector(), kOther});
  for (const char16_t* entry : {u"MP4", u"99", u"CC"}) {
    search.general.push_back(entry);
  }
  EXPECT_EQ(video_of(run(search), "MOV/MOV00001.MOV"), joined({kHeader, zero_sector()}));
  search.general.back() = u"BB";  // a part of the header, so its rule is not asked for
  const Outcome outcome = run(search);
  EXPECT_EQ(video_of(outcome, "MP4/MP400002.MP4"), joined({kHeader, kHeader}));
  EXPECT_EQ(reported_names(outcome), Names{"MP400002.MP4"});
}

TEST(PlainRawFileScan, PutsFile50001IntoTheNextFolder) {
  const Outcome outcome = run(video_search(std::vector<Bytes>(50001, kHeader)));
  EXPECT_EQ(outcome.files.size(), 50001U);
  EXPECT_EQ(video_of(outcome, "MOV_001/MOV50001.MOV"), joined({kHeader, kHeader}));
  EXPECT_EQ(outcome.rows.at(0).NoOfFile, "50001");
}

}  // namespace
}  // namespace plain
