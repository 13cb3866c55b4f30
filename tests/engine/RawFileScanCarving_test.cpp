// Where a carved file ends: at the next header, at its own maximum size, or with the range.
#include <gtest/gtest.h>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

TEST(RawFileScan, AFileEndsWithTheSectorOfTheNextHeaderAndTheNextFileBeginsWithIt) {
  expect_carved({.drawing = "aJaPaza", .table = table_of({jpeg(), png()})},
                {{"JPG/JPG00001.JPG", "1 2 3"}, {"PNG/PNG00001.PNG", "3 4 z 6 6"}});
}

TEST(RawFileScan, HeadersInEverySectorMakeFilesThatOverlapByOne) {
  expect_carved(
      {.drawing = "JJJ", .table = table_of({jpeg()})},
      {{"JPG/JPG00001.JPG", "0 1"}, {"JPG/JPG00002.JPG", "1 2"}, {"JPG/JPG00003.JPG", "2 2"}});
}

TEST(RawFileScan, AFileStillOpenAtTheEndOfTheRangeGetsItsLastSectorTwice) {
  expect_carved({.drawing = "Jaa", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "0 1 2 2"}});
  expect_carved({.drawing = "Jaz", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "0 1 z z"}});
  expect_carved({.drawing = "aaJ", .table = table_of({jpeg()})}, {{"JPG/JPG00001.JPG", "2 2"}});
}

TEST(RawFileScan, AllFilesStillOpenAtTheEndOfTheRangeGetItsLastSectorTwice) {
  expect_carved({.drawing = "aJa", .table = table_of({jpeg(), jfif()})},
                {{"JFI/JFI00001.JFI", "1 2 2"}, {"JPG/JPG00001.JPG", "1 2 2"}});
}

TEST(RawFileScan, ZerosInsideAFileAreItsSectorsLikeOthers) {
  expect_carved({.drawing = "zJzzazaa", .table = table_of({jpeg(u"3072")})},
                {{"JPG/JPG00001.JPG", "1 z z 4 z 6"}});
}

TEST(RawFileScan, AFileEndsWithTheWholeSectorThatReachesItsMaximum) {
  const std::vector<std::pair<Text, std::string>> cases{
      {u"513", "0 1"},    {u"1023", "0 1"},   {u"1024", "0 1"},
      {u"1025", "0 1 2"}, {u"1536", "0 1 2"}, {u" +1024 bytes", "0 1"}};
  for (const auto& [maximum, content] : cases) {
    SCOPED_TRACE(utf8_from_text(maximum));
    expect_carved({.drawing = "Jaaaa", .table = table_of({jpeg(maximum)})},
                  {{"JPG/JPG00001.JPG", content}});
  }
}

TEST(RawFileScan, AMaximumOfOneSectorOrLessEndsTheFileInItsHeaderSectorWhichItHoldsTwice) {
  for (const char16_t* maximum : {u"512", u"511", u"1", u"0", u"", u"many"}) {
    SCOPED_TRACE(utf8_from_text(maximum));
    expect_carved({.drawing = "Jaaaa", .table = table_of({jpeg(maximum)})},
                  {{"JPG/JPG00001.JPG", "0 0"}});
  }
}

TEST(RawFileScan, ANegativeMaximumOrOneBeyondAllNumbersNeverEndsAFile) {
  for (const char16_t* maximum : {u"-1", u"-512", u"99999999999999999999999"}) {
    SCOPED_TRACE(utf8_from_text(maximum));
    expect_carved({.drawing = "Jazaa", .table = table_of({jpeg(maximum)})},
                  {{"JPG/JPG00001.JPG", "0 1 z 3 4 4"}});
  }
}

TEST(RawFileScan, FilesOfOneSectorDoNotGetTheNextHeader) {
  expect_carved(
      {.drawing = "JJaJ", .table = table_of({jpeg(u"512")})},
      {{"JPG/JPG00001.JPG", "0 0"}, {"JPG/JPG00002.JPG", "1 1"}, {"JPG/JPG00003.JPG", "3 3"}});
}

TEST(RawFileScan, AFileThatReachesItsMaximumWithTheLastSectorOfTheRangeGetsItOnce) {
  expect_carved({.drawing = "Jaa", .table = table_of({jpeg(u"1536")})},
                {{"JPG/JPG00001.JPG", "0 1 2"}});
}

TEST(RawFileScan, AMaximumThatTheNextHeaderReachesMakesNoDifference) {
  expect_carved({.drawing = "JaJaa", .table = table_of({jpeg(u"1536")})},
                {{"JPG/JPG00001.JPG", "0 1 2"}, {"JPG/JPG00002.JPG", "2 3 4"}});
}

TEST(RawFileScan, TheSizeCountsFromTheNewHeaderOn) {
  expect_carved({.drawing = "JaJaaaa", .table = table_of({jpeg(u"2048")})},
                {{"JPG/JPG00001.JPG", "0 1 2"}, {"JPG/JPG00002.JPG", "2 3 4 5"}});
}

TEST(RawFileScan, TheSectorsAfterTheLastOpenFileBelongToNoneAndAreNotCounted) {
  expect_carved({.drawing = "JaaaaPaaaa", .table = table_of({jpeg(u"1024"), png(u"1536")})},
                {{"JPG/JPG00001.JPG", "0 1"}, {"PNG/PNG00001.PNG", "5 6 7"}});
}

TEST(RawFileScan, EachOpenFileEndsAtItsOwnMaximum) {
  const TypeRow long_header{u"EXT", u"2560", u"FFD8FFE05A"};
  expect_carved(
      {.drawing = "Jaaaaaaa", .table = table_of({jpeg(u"1536"), jfif(u"512"), long_header})},
      {{"JPG/JPG00001.JPG", "0 1 2"},
       {"JFI/JFI00001.JFI", "0 0"},
       {"EXT/EXT00001.EXT", "0 1 2 3 4"}});
}

TEST(RawFileScan, AFileThatEndedByItsMaximumIsNoLongerThereForTheNextHeader) {
  expect_carved({.drawing = "JaaJaa", .table = table_of({jpeg(u"1024"), jfif()})},
                {{"JPG/JPG00001.JPG", "0 1"},
                 {"JFI/JFI00001.JFI", "0 1 2 3"},
                 {"JPG/JPG00002.JPG", "3 4"},
                 {"JFI/JFI00002.JFI", "3 4 5 5"}});
}

TEST(RawFileScan, AFileOfManySectorsHoldsThemAllInTheirOrder) {
  std::string drawing(700, 'a');
  drawing[3] = 'J';
  std::string wanted;
  for (int sector = 3; sector < 603; ++sector) wanted += std::to_string(sector) + " ";
  wanted.pop_back();
  expect_carved({.drawing = drawing, .table = table_of({jpeg(u"307200")})},
                {{"JPG/JPG00001.JPG", wanted}});
}

// The types of the reports, in their order.
std::string order_of_reports(const std::string& drawing, const SignatureTable& table) {
  RawFileSearch search(drawing);
  EXPECT_TRUE(search.run(Pass::general, table));
  std::string order;
  for (const std::string& path : search.reported()) order += path.substr(0, 3) + " ";
  return order;
}

TEST(RawFileScan, FilesAreReportedInTheOrderInWhichTheyEnd) {
  const auto table = [](const Text& first, const Text& second, const Text& third) {
    return table_of({jpeg(first), jfif(second), {u"EXT", third, u"FFD8FFE05A"}});
  };
  // By size; those that end in one sector in list order.
  EXPECT_EQ(order_of_reports("Jaaaa", table(u"2048", u"1024", u"1536")), "JFI EXT JPG ");
  EXPECT_EQ(order_of_reports("Jaaaa", table(u"1536", u"1024", u"1536")), "JFI JPG EXT ");
  EXPECT_EQ(order_of_reports("Jaaaa", table(u"1024", u"1024", u"1024")), "JPG JFI EXT ");
  EXPECT_EQ(order_of_reports("Jaaaa", table(u"512", u"1024", u"1")), "JPG EXT JFI ");
  // At the next header, and at the end of the range, oldest first.
  EXPECT_EQ(order_of_reports("JaJa", table(no_limit, u"512", no_limit)),
            "JFI JPG EXT JFI JPG EXT ");
}

TEST(RawFileScan, AFileIsCompleteWhenItIsReported) {
  for (const std::size_t block_sectors : {1U, 3U, 512U}) {
    RawFileSearch search("aJaaJaPaaa");
    std::vector<std::string> contents;
    search.recorder.on_report = [&](const Report& report) {
      contents.push_back(search.card.describe(bytes_of(report.path)));
    };
    EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"1536"), png()}), block_sectors));
    EXPECT_EQ(contents, (std::vector<std::string>{"1 2 3", "4 5 6", "6 7 8 9 9"}));
  }
}

TEST(RawFileScan, ANormalEndClosesTheDeviceAndLeavesTheFinalScreenToTheWorker) {
  RawFileSearch search("aJa");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.state.pFile_Disk, nullptr);
  EXPECT_TRUE(search.state.MultiHeader_Array.empty());
  EXPECT_EQ(search.state.for_index, 3U);
  EXPECT_EQ(search.state.outcome, SearchOutcome::completed);
  const Report report{search.pass_path(Pass::general) / "JPG/JPG00001.JPG", u"JPG00001.JPG",
                      u"JPG00001.JPG"};
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), (std::vector<Recorded>{report}));
}

TEST(RawFileScan, AnEmptySelectionEndsAtOnceWithItsFolderMadeAndNothingRead) {
  RawFileSearch search("JJ");
  search.state.stop_now = 1;
  EXPECT_TRUE(search.run(Pass::general, {}));
  EXPECT_EQ(search.medium.block_reads + search.medium.sector_reads, 0U);
  EXPECT_EQ(search.state.for_index, 0U);
  EXPECT_EQ(search.state.stop_now, 1);
  EXPECT_EQ(search.state.pFile_Disk, nullptr);
  EXPECT_TRUE(std::filesystem::is_directory(search.pass_path(Pass::general)));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), std::vector<Recorded>{});
}

TEST(RawFileScan, AnEmptyRangeEndsNormally) {
  RawFileSearch search("JJ");
  search.request.end_slider_val = u"0";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), Found{});
  EXPECT_EQ(search.state.total_sector, 0U);
}

}  // namespace
}  // namespace norvo::test
