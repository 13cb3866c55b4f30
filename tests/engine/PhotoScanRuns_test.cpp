// What a photo search tells a witness: where each file's bytes lie on the device.
#include <gtest/gtest.h>

#include <cstring>

#include "PhotoSearch.h"
#include "support/FileSizeLimit.h"

namespace norvo::test {
namespace {

void expect_runs(const std::string& drawing, const SignatureTable& table, const Runs& wanted) {
  for (const Alignment& where : alignments(true)) {
    SCOPED_TRACE(where.text());
    PhotoSearch search(drawing, where.start);
    search.medium.blocks_fail_whole = where.blocks_fail_whole;
    search.read_with_helper = where.helper;
    RunCollector collector;
    search.witnesses = &collector;
    EXPECT_TRUE(search.run(Pass::general, table, where.block_sectors));
    EXPECT_EQ(runs_of(collector, where.start), wanted);
    search.expect_runs_give_the_files(collector);
  }
}

TEST(PhotoScanRuns, AFileGoesOnToTheNextHeaderAndTheLastOneHasItsLastSectorTwice) {
  expect_runs("aaJaazPaa", table_of({jpeg(), png()}),
              {{"GND00001.JPG", "2-6"}, {"GND00002.PNG", "6-8 8"}});
}

TEST(PhotoScanRuns, AFileEndsAtItsLimit) {
  expect_runs("Jaaaaaaa", table_of({jpeg(u"1536")}), {{"GND00001.JPG", "0-2"}});
}

TEST(PhotoScanRuns, UnreadableSectorsAreNamedAsRepetitionsOfTheSectorBefore) {
  expect_runs("aJaaxaaa", table_of({jpeg()}), {{"GND00001.JPG", "1-3 !3x2 5-6 6"}});
  expect_runs("Jaxxxaaa", table_of({jpeg()}), {{"GND00001.JPG", "0-1 !1x4 5-6 6"}});
}

TEST(PhotoScanRuns, AnUnreadableLastSectorIsRepeatedOnceMoreAtTheEnd) {
  expect_runs("Jax", table_of({jpeg()}), {{"GND00001.JPG", "0-1 !1x2"}});
}

TEST(PhotoScanRuns, AHeaderThatIsDealtWithAgainBeginsAFileOfARepetition) {
  expect_runs(
      "aJxaaa", table_of({jpeg()}),
      {{"GND00001.JPG", "1 !1x1"}, {"GND00002.JPG", "!1x2"}, {"GND00003.JPG", "!1x1 3-4 4"}});
}

TEST(PhotoScanRuns, TheThoroughPassTellsItsOwnFiles) {
  PhotoSearch search("JaPaa", 77);
  RunCollector collector;
  search.witnesses = &collector;
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()}), 2));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({png()}), 2));
  EXPECT_EQ(runs_of(collector, 77), (Runs{{"GND00001.JPG", "0-4 4"}, {"THD00001.PNG", "2-4 4"}}));
  search.expect_runs_give_the_files(collector);
}

TEST(PhotoScanRuns, AStoppedFileEndsWhereTheSearchStopped) {
  PhotoSearch search("JaaPaaJ");
  RunCollector collector;
  search.witnesses = &collector;
  search.recorder.on_report = [&](const Report&) { search.state.stop_now = 1; };
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(), png()}), 2));
  EXPECT_EQ(runs_of(collector, 0), (Runs{{"GND00001.JPG", "0-3"}, {"GND00002.PNG", "3"}}));
  search.expect_runs_give_the_files(collector);
}

TEST(PhotoScanRuns, AFileThatCouldNotBeSavedIsNotFinished) {
  PhotoSearch search("JPaaaaaa");
  RunCollector collector;
  search.witnesses = &collector;
  const FileSizeLimit limit(2 * sector_size);
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg(), png()}), 2));
  EXPECT_EQ(runs_of(collector, 0), (Runs{{"GND00001.JPG", "0-1"}}));
}

TEST(PhotoScanRuns, PartsOfASectorAtTheEndOfADriveAreOfUnknownOrigin) {
  PhotoSearch search("Ja");
  search.medium.sector = nullptr;
  search.medium.bytes.assign(sector_size + 100, 0x22);
  std::memcpy(search.medium.bytes.data(), search.card.sector(0).data(), sector_size);
  RunCollector collector;
  search.witnesses = &collector;
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()}), 2));
  EXPECT_EQ(runs_of(collector, 0), (Runs{{"GND00001.JPG", "0 ?x2"}}));
}

}  // namespace
}  // namespace norvo::test
