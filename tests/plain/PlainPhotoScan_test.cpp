#include <gtest/gtest.h>

#include "PlainTestKit.h"

namespace plain {
namespace {

const std::string kPhotoFolder = "/d/R/Photo Search/General Recovery Results";

Bytes photo_of(const Outcome& outcome, const std::string& path) {
  return file_of(outcome, kPhotoFolder + "/" + path);
}

bool starts_photo(const Bytes& sector, const Text& header, const Text& offset, const Text& gate) {
  return starts_file(0, sector, header, offset, gate);
}

TEST(PlainPhotoScan, FillsAFileToTheEndOfTheRangeAndRepeatsTheLastSector) {
  const Outcome outcome = run(photo_search({kOther, kHeader, kThird, zero_sector()}));
  const std::string path = kPhotoFolder + "/JPG/GND00001.JPG";
  const std::vector<Event> expected = {
      {.kind = EventKind::kModeLabel,
       .pass = "GEN",
       .text = "( Currently performing Search based on: Norvo General Recovery Procedure )"},
      {.kind = EventKind::kReport, .path = path, .name = "GND00001.JPG", .uid = "GND00001.JPG"},
      {.kind = EventKind::kFinalScreen}};
  EXPECT_EQ(outcome.events, expected);
  ASSERT_EQ(outcome.files.size(), 1U);
  EXPECT_EQ(outcome.files.at(path), joined({kHeader, kThird, zero_sector(), zero_sector()}));
  EXPECT_EQ(outcome.folders, (std::set<std::string>{"/d/R", "/d/R/Photo Search", kPhotoFolder,
                                                    kPhotoFolder + "/JPG"}));
  EXPECT_TRUE(outcome.general_result);
  EXPECT_EQ(outcome.thorough_result, std::nullopt);
  EXPECT_EQ(outcome.shown_item_count, 1U);
}

TEST(PlainPhotoScan, GivesAHeaderSectorToBothItsNeighbours) {
  const Outcome outcome = run(photo_search({kHeader, kHeader, kOther}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, kHeader}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00002.JPG"), joined({kHeader, kOther, kOther}));
}

TEST(PlainPhotoScan, EndsAFileOfOneSectorInItsHeaderSector) {
  for (const char16_t* maximum : {u"512", u"1", u"0", u"", u"x"}) {
    const Outcome outcome = run(photo_search({kHeader, kOther, kHeader}, maximum));
    EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), kHeader);
    EXPECT_EQ(photo_of(outcome, "JPG/GND00002.JPG"), kHeader);
  }
}

TEST(PlainPhotoScan, TakesANegativeMaximumForAHugeOne) {
  const Outcome outcome = run(photo_search({kHeader, kOther, kThird}, u"-1"));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, kOther, kThird, kThird}));
}

TEST(PlainPhotoScan, EndsAFileAtTheLimitOfTheLastRecordTried) {
  Search search = photo_search({kHeader, kOther, kOther, kOther, kOther}, u"1024");
  add_record(search.general, u"PNG", u"2048", u"CC", u"1", u"204");
  const Bytes four = joined({kHeader, kOther, kOther, kOther});
  EXPECT_EQ(photo_of(run(search), "JPG/GND00001.JPG"), four);
}

TEST(PlainPhotoScan, KeepsTheLimitOfTheMatchedRecordWhileSectorsAreNotSearched) {
  Search search = photo_search({kHeader, zero_sector(), kOther, kOther}, u"1024");
  add_record(search.general, u"PNG", u"2048", u"CC", u"1", u"204");
  EXPECT_EQ(photo_of(run(search), "JPG/GND00001.JPG"), joined({kHeader, zero_sector()}));
}

TEST(PlainPhotoScan, NeverSearchesASectorOfZeros) {
  EXPECT_FALSE(starts_photo(zero_sector(), u"00", u"1", u"0"));
  EXPECT_TRUE(starts_photo(sector_with({0, 0, 9}), u"00", u"1", u"0"));
}

TEST(PlainPhotoScan, FindsANumericPositionBelow507Only) {
  EXPECT_TRUE(starts_photo(sector_with({0xAA, 0xBB}, 0, 506), u"AABB", u"507", u"170"));
  EXPECT_FALSE(starts_photo(sector_with({0xAA, 0xBB}, 0, 507), u"AABB", u"508", u"170"));
  EXPECT_FALSE(starts_photo(sector_with({0xAA}, 0, 511), u"AA", u"512", u"170"));
  EXPECT_TRUE(starts_photo(sector_with({1, 2, 3, 4, 5, 6}, 0, 506), u"010203040506", u"507", u"1"));
  EXPECT_FALSE(
      starts_photo(sector_with({1, 0, 0, 0, 0, 0}, 0, 506), u"01000000000000", u"507", u"1"));
}

TEST(PlainPhotoScan, ReadsPositionAndGateAsNumbers) {
  EXPECT_TRUE(starts_photo(sector_with({0xAA}, 0, 4), u"AA", u" 5", u" +170x"));
  EXPECT_TRUE(starts_photo(sector_with({0xAA}, 0, 2), u"AA", u"+3", u"170"));
  EXPECT_TRUE(starts_photo(kHeader, u"AA", u"01", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"0", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"NN", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"-2147483648", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"2147483647", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"1", u"426"));
  EXPECT_FALSE(starts_photo(kHeader, u"AA", u"1", u"-86"));
  EXPECT_TRUE(starts_photo(sector_with({0, 7}), u"0007", u"1", u""));
}

TEST(PlainPhotoScan, ComparesPairsOfDigitsWhateverTheyAre) {
  EXPECT_TRUE(starts_photo(kHeader, u"aaBbF", u"1", u"170"));  // the odd digit is left out
  EXPECT_TRUE(starts_photo(sector_with({0x0F, 1}), u"ZFx1", u"1", u"15"));
  EXPECT_FALSE(starts_photo(kHeader, u"AABB", u"1", u"187"));
}

TEST(PlainPhotoScan, MatchesAnEmptyHeaderOnlyAnywhereAndBehindItsGate) {
  EXPECT_TRUE(starts_photo(kHeader, u"", u"nn", u"170"));
  EXPECT_TRUE(starts_photo(kHeader, u"A", u"nn", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"", u"nn", u"171"));
  EXPECT_FALSE(starts_photo(kHeader, u"", u"1", u"170"));
  EXPECT_FALSE(starts_photo(kHeader, u"", u"5", u"34"));
}

TEST(PlainPhotoScan, SearchesAnywhereOnlyAlongARunOfGateBytes) {
  EXPECT_TRUE(starts_photo(sector_with({0x41, 0x41, 0x41, 0x42}), u"4142", u"nn", u"65"));
  EXPECT_FALSE(starts_photo(sector_with({0x41, 0x43, 0x41, 0x42}), u"4142", u"nn", u"65"));
  EXPECT_FALSE(starts_photo(sector_with({0x41, 0x42}, 0x40, 100), u"4142", u"nn", u"65"));
  // A partial match of two bytes moves the next try two bytes on,
  EXPECT_TRUE(starts_photo(sector_with({0x41, 0x42, 0x41, 0x42, 0x43}), u"414243", u"nn", u"65"));
  // also when the header begins in between.
  EXPECT_FALSE(starts_photo(sector_with({0x41, 0x41, 0x41, 0x42}), u"414142", u"nn", u"65"));
  EXPECT_TRUE(starts_photo(sector_with({0x42}, 0x41, 511), u"4142", u"nn", u"65"));
  EXPECT_FALSE(starts_photo(sector_with({}, 0x41), u"4142", u"nn", u"65"));
}

TEST(PlainPhotoScan, LetsTheFirstRecordThatMatchesWin) {
  Search search = search_of(0, {kHeader, kOther});
  add_record(search.general, u"A", u"9999", u"CC", u"1", u"204");
  add_record(search.general, u"B", u"9999", u"AA", u"1", u"170");
  add_record(search.general, u"C", u"9999", u"AABB", u"1", u"170");
  EXPECT_EQ(reported_names(run(search)), std::vector<std::string>{"GND00001.B"});
}

TEST(PlainPhotoScan, SearchesTheRangeOnly) {
  Search search = photo_search({kHeader, kHeader, kOther, kHeader});
  search.entire_disk = false;
  search.range_start = 1;
  search.range_end = 3;
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 1U);
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, kOther, kOther}));
}

TEST(PlainPhotoScan, StaysOneSectorBehindAfterAReadFailure) {
  Search search = photo_search({kHeader, kOther, kHeader, kThird, kOther});
  search.device.unreadable = {2};
  EXPECT_EQ(photo_of(run(search), "JPG/GND00001.JPG"),
            joined({kHeader, kOther, kOther, kOther, kThird, kThird}));
}

TEST(PlainPhotoScan, SearchesTheOldBufferAgainAfterAReadFailure) {
  Search search = photo_search({kHeader, kOther, kOther, kThird});
  search.device.unreadable = {1};
  const Outcome outcome = run(search);
  ASSERT_EQ(outcome.files.size(), 3U);
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, kHeader}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00002.JPG"), joined({kHeader, kHeader}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00003.JPG"), joined({kHeader, kOther, kOther}));
}

TEST(PlainPhotoScan, StopsSearchingTheBufferOnceThePositionIsRefused) {
  Search search = photo_search({kOther, kHeader});
  search.sectors_val = 5;
  search.device.seek_past_end_fails = true;
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 2U);
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, kHeader}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00002.JPG"), joined({kHeader, kHeader, kHeader, kHeader}));
  search.device.seek_past_end_fails = false;
  EXPECT_EQ(run(search).files.size(), 4U);
}

TEST(PlainPhotoScan, MixesAnIncompleteLastSectorWithTheOldBuffer) {
  Search search = photo_search({kHeader, kOther});
  search.device.bytes.resize(612);
  Bytes mixed = kHeader;
  std::fill_n(mixed.begin(), 100, 0x33);
  EXPECT_EQ(photo_of(run(search), "JPG/GND00001.JPG"), joined({kHeader, mixed, mixed}));
}

TEST(PlainPhotoScan, BeginsAtTheFirstSectorWhenTheStartIsRefused) {
  Search search = photo_search({kHeader, kOther});
  search.entire_disk = false;
  search.range_start = 5;
  search.range_end = 7;
  search.device.seek_past_end_fails = true;
  EXPECT_EQ(photo_of(run(search), "JPG/GND00001.JPG"), joined({kHeader, kOther, kOther}));
  search.device.seek_past_end_fails = false;
  EXPECT_TRUE(run(search).files.empty());
}

TEST(PlainPhotoScan, RepeatsTheBufferOfADriveThatIsGone) {
  Search search = photo_search({kHeader, kOther, kOther, kOther});
  search.device.gone_after_sector = 1;
  search.device.seek_past_end_fails = true;
  search.thorough = true;
  search.thorough_table = search.general;
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 1U);
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"),
            joined({kHeader, kHeader, kHeader, kHeader, kHeader}));
  EXPECT_EQ(outcome.thorough_result, true);
}

TEST(PlainPhotoScan, EndsByAMessageWhenARecordIsIncomplete) {
  Search search = photo_search({kHeader, kOther, kHeader});
  search.general.push_back(u"PNG");
  search.general.push_back(u"512");
  const Outcome outcome = run(search);
  EXPECT_TRUE(outcome.general_result);
  EXPECT_EQ(kinds_of(outcome),
            (std::vector<EventKind>{EventKind::kModeLabel, EventKind::kExceptionMessage,
                                    EventKind::kFinalScreen}));
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), kHeader);
}

TEST(PlainPhotoScan, FinishesAFileLeftOpenByAnExceptionInTheNextPass) {
  Search search = photo_search({kHeader, kOther});
  search.general.push_back(u"PNG");
  search.thorough = true;
  const Outcome outcome = run(search);
  EXPECT_EQ(photo_of(outcome, "JPG/GND00001.JPG"), joined({kHeader, zero_sector()}));
  const std::vector<Event> reports = events_of(outcome, EventKind::kReport);
  EXPECT_EQ(reports, std::vector<Event>{{.kind = EventKind::kReport}});
  EXPECT_EQ(outcome.shown_item_count, 0U);

  search.thorough_table = photo_search({}).general;
  const Outcome found = run(search);
  EXPECT_EQ(photo_of(found, "JPG/GND00001.JPG"), kHeader);
  EXPECT_EQ(reported_names(found), std::vector<std::string>{"THD00001.JPG"});
}

TEST(PlainPhotoScan, PutsFile50001IntoTheNextFolder) {
  Search search = photo_search(std::vector<Bytes>(50001, kHeader), u"512");
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.size(), 50001U);
  EXPECT_EQ(photo_of(outcome, "JPG/GND50000.JPG"), kHeader);
  EXPECT_EQ(photo_of(outcome, "JPG_001/GND50001.JPG"), kHeader);
  EXPECT_EQ(events_of(outcome, EventKind::kClearing).size(), 25U);
}

}  // namespace
}  // namespace plain
