// What cannot be saved ends the pass, with one message; files that were open then are not reported.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "RawFileSearch.h"
#include "support/FileSizeLimit.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

const std::vector<Recorded> saving_failure_end{
    MessageBox{u"Unable to continue saving recovered data.\n\nEither Destination Drive is "
               u"inaccessible or there is no free space available in drive to save recovered "
               u"data."},
    FinalScreenPosted{}};

// Runs a pass that must fail to save; its state is looked at while the box is shown.
void expect_saving_failure(RawFileSearch& search, const SignatureTable& table,
                           Pass pass = Pass::general) {
  int boxes = 0;
  search.recorder.on_message = [&] {
    ++boxes;
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.pFile_Disk, nullptr);
    EXPECT_EQ(search.state.stop_screen_already_show, 0);
  };
  EXPECT_FALSE(search.run(pass, table));
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(RawFileScan, APassFolderThatCannotBeMadeIsASavingFailureDuringTheSetUp) {
  RawFileSearch search("JJ");
  make_file(search.folder.path() / "Norvo Birch Results", "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  // The second sector label of the set-up is not reached.
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries - 1), saving_failure_end);
  EXPECT_EQ(search.medium.opened, 1U);
  EXPECT_EQ(search.medium.block_reads, 0U);
}

TEST(RawFileScan, AThoroughPassThatCannotMakeItsFoldersIsASavingFailureDuringTheSetUp) {
  RawFileSearch search("JJ");
  make_file(search.folder.path() / RawFileSearch::search_root, "in the way");
  expect_saving_failure(search, table_of({jpeg()}), Pass::thorough);
  EXPECT_EQ(search.recorded_from(thorough_file_set_up_entries - 1), saving_failure_end);
}

TEST(RawFileScan, APlainFileInThePlaceOfThePassFolderCountsAsMadeUntilATypeFolderIsNeeded) {
  RawFileSearch dull("aa");
  make_file(dull.pass_path(Pass::general), "in the way");
  EXPECT_TRUE(dull.run(Pass::general, table_of({jpeg()})));
  RawFileSearch search("aJ");
  make_file(search.pass_path(Pass::general), "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), saving_failure_end);
}

TEST(RawFileScan, ATypeFolderThatCannotBeMadeIsASavingFailure) {
  RawFileSearch search("aJ");
  make_file(search.pass_path(Pass::general) / "JPG", "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), saving_failure_end);
}

TEST(RawFileScan, TheTypeFolderOfATypeWithoutASlotMustBeMadeToo) {
  std::vector<TypeRow> rows(30, jpeg());
  rows.push_back({Text(300, u'X'), no_limit, u"FFD8FF"});  // too long for a name
  RawFileSearch search("aJ");
  expect_saving_failure(search, table_of(rows));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), saving_failure_end);
  EXPECT_EQ(search.found().size(), 30U);
}

TEST(RawFileScan, AFileThatCannotBeOpenedIsASavingFailureAfterThePreviousFilesWereReported) {
  RawFileSearch search("JaJa");
  const SignatureTable table = table_of({jpeg(), jfif()});
  search.add_rows(table);
  fs::create_directories(search.pass_path(Pass::general) / "JFI/JFI00002.JFI");
  expect_saving_failure(search, table);
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JFI/JFI00001.JFI"}));
  // The file that was opened beside it keeps its header sector and is not reported.
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 2"},
                                   {"JFI/JFI00001.JFI", "0 1 2"},
                                   {"JPG/JPG00002.JPG", "2"}}));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries + 2), saving_failure_end);
}

TEST(RawFileScan, AWriteThatFailsIsASavingFailureAndNoOpenFileIsReported) {
  for (const std::size_t entries : {1U, 2U}) {
    RawFileSearch search("JaJaaaa");
    const FileSizeLimit limit(3 * sector_size);
    std::vector<TypeRow> rows{jpeg(), jfif()};
    rows.resize(entries);
    expect_saving_failure(search, table_of(rows));
    EXPECT_EQ(search.reported().size(), entries);
    EXPECT_EQ(search.recorded_from(general_file_set_up_entries + entries), saving_failure_end);
    const Found files = search.found();
    EXPECT_EQ(files.size(), 2 * entries);
    EXPECT_EQ(files.at("JPG/JPG00001.JPG"), "0 1 2");
    EXPECT_EQ(files.at(entries == 1 ? "JPG/JPG00002.JPG" : "JPG/JPG00003.JPG"), "2 3 4");
  }
}

TEST(RawFileScan, AHeaderSectorThatCannotBeWrittenIsASavingFailure) {
  RawFileSearch search("aJ");
  const FileSizeLimit limit(0);
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", ""}}));
  EXPECT_TRUE(search.reported().empty());
}

TEST(RawFileScan, AWriteThatFailsAtTheNextHeaderIsASavingFailureBeforeTheNextFileIsMade) {
  RawFileSearch search("JaaJ");
  const FileSizeLimit limit(3 * sector_size);
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 2"}}));
  EXPECT_EQ(search.recorded_from(general_file_set_up_entries), saving_failure_end);
}

TEST(RawFileScan, AWriteThatFailsWithTheSectorThatReachesTheMaximumIsASavingFailure) {
  RawFileSearch search("Jaaa");
  const FileSizeLimit limit(2 * sector_size);
  expect_saving_failure(search, table_of({jpeg(u"1536")}));
  EXPECT_TRUE(search.reported().empty());
}

TEST(RawFileScan, AWriteThatFailsAtTheEndOfTheRangeIsASavingFailure) {
  RawFileSearch search("Ja");
  const FileSizeLimit limit(2 * sector_size);  // the repeated last sector has no room
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1"}}));
  EXPECT_TRUE(search.reported().empty());
}

TEST(RawFileScan, AWriteThatFailsWhileAStopIsCarriedOutIsASavingFailure) {
  RawFileSearch search("JJaa");
  std::optional<FileSizeLimit> limit;
  search.recorder.on_report = [&](const Report&) {
    search.state.stop_now = 1;
    limit.emplace(0);
  };
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG"}));
}

TEST(RawFileScan, ASavingFailureTakesAStopRequestBack) {
  RawFileSearch search("JJJ");
  fs::create_directories(search.pass_path(Pass::general) / "JPG/JPG00002.JPG");
  search.recorder.on_report = [&search](const Report&) { search.state.stop_now = 1; };
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.state.stop_now, 0);
}

TEST(RawFileScan, ASavingFailureInvalidatesTheProgressTimer) {
  RawFileSearch search("Ja");
  search.request.destination = "/dev/null/nowhere";
  EXPECT_TRUE(
      search.timer_ends([&] { EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()}))); }));
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(RawFileScan, AMissingDestinationIsMade) {
  RawFileSearch search("Ja");
  search.request.destination = search.folder.path() / "new" / "place";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_TRUE(fs::exists(search.request.destination / RawFileSearch::search_root /
                         "General Recovery Results/JPG/JPG00001.JPG"));
}

TEST(RawFileScan, APlantedLinkInTheTreeIsASavingFailureAndNothingIsWrittenThere) {
  for (const char* link : {"Norvo Birch Results", "Norvo Birch Results/Video Search",
                           "Norvo Birch Results/Video Search/General Recovery Results",
                           "Norvo Birch Results/Video Search/General Recovery Results/JPG"}) {
    const TemporaryFolder elsewhere;
    RawFileSearch search("aJ");
    const fs::path at = search.folder.path() / link;
    fs::create_directories(at.parent_path());
    fs::create_directory_symlink(elsewhere.path(), at);
    SCOPED_TRACE(link);
    expect_saving_failure(search, table_of({jpeg()}));
    EXPECT_TRUE(entries_below(elsewhere.path()).empty());
  }
}

}  // namespace
}  // namespace norvo::test
