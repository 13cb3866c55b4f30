// What cannot be saved ends the pass, with one message, and is not reported.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "PhotoSearch.h"
#include "support/FileSizeLimit.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;

const std::vector<Recorded> saving_failure_end{
    MessageBox{u"Unable to continue saving recovered data.\n\nEither Destination Drive is "
               u"inaccessible or there is no free space available in drive to save recovered "
               u"data."},
    FinalScreenPosted{}};

// Runs a General pass that must fail to save; its state is looked at while the box is shown.
void expect_saving_failure(PhotoSearch& search, const SignatureTable& table) {
  int boxes = 0;
  search.recorder.on_message = [&] {
    ++boxes;
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.pFile_Disk, nullptr);
    EXPECT_FALSE(search.state.pFile_op.is_open());
    EXPECT_EQ(search.state.stop_screen_already_show, 0);
  };
  EXPECT_FALSE(search.run(Pass::general, table));
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(search.state.outcome, SearchOutcome::save_failed);
}

TEST(PhotoScan, APassFolderThatCannotBeMadeIsASavingFailureDuringTheSetUp) {
  PhotoSearch search("JJ");
  make_file(search.folder.path() / "Norvo Birch Results", "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  // The second sector label of the set-up is not reached.
  EXPECT_EQ(search.recorded_from(general_set_up_entries - 1), saving_failure_end);
  EXPECT_EQ(search.medium.opened, 1U);
  EXPECT_EQ(search.medium.block_reads, 0U);
  EXPECT_EQ(read_file(search.folder.path() / "Norvo Birch Results"), "in the way");
}

TEST(PhotoScan, APlainFileAtThePassFoldersOwnPathCountsAsMadeUntilAFileIsFound) {
  PhotoSearch dull("aa");
  make_file(dull.pass_path(Pass::general), "in the way");
  EXPECT_TRUE(dull.run(Pass::general, table_of({jpeg()})));
  PhotoSearch search("aJ");
  make_file(search.pass_path(Pass::general), "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.recorded_from(general_set_up_entries), saving_failure_end);
}

TEST(PhotoScan, ATypeFolderThatCannotBeMadeIsASavingFailure) {
  PhotoSearch search("aJ");
  make_file(search.pass_path(Pass::general) / "JPG", "in the way");
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.recorded_from(general_set_up_entries), saving_failure_end);
  EXPECT_EQ(search.state.GND_Image_number, 1U);
}

TEST(PhotoScan, AFileThatCannotBeOpenedIsASavingFailureAfterThePreviousOneWasReported) {
  PhotoSearch search("JaJa");
  fs::create_directories(search.pass_path(Pass::general) / "JPG/GND00002.JPG");
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.reported(), (std::vector<std::string>{"JPG/GND00001.JPG"}));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 2"}}));
  EXPECT_EQ(search.recorded_from(general_set_up_entries + 1), saving_failure_end);
}

TEST(PhotoScan, AWriteThatFailsIsASavingFailureAndTheFileIsNotReported) {
  PhotoSearch search("JaJaaaa");
  const FileSizeLimit limit(3 * sector_size);
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.reported(), (std::vector<std::string>{"JPG/GND00001.JPG"}));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 2"}, {"JPG/GND00002.JPG", "2 3 4"}}));
  EXPECT_EQ(search.recorded_from(general_set_up_entries + 1), saving_failure_end);
}

TEST(PhotoScan, AWriteThatFailsAtTheNextHeaderIsASavingFailureBeforeTheNextFileIsMade) {
  PhotoSearch search("JaaJ");
  const FileSizeLimit limit(3 * sector_size);
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 2"}}));
  EXPECT_EQ(search.recorded_from(general_set_up_entries), saving_failure_end);
}

TEST(PhotoScan, AWriteThatFailsBeforeAHeaderKeepsThatHeaderFromClearingTheGallery) {
  PhotoSearch search("JJaaJ");
  for (int i = 0; i < 1999; ++i) {
    search.recorder.gallery.addImageWithPath("/earlier", u"earlier", u"earlier");
  }
  const FileSizeLimit limit(2 * sector_size);  // sector 3 has no room in the second file
  EXPECT_FALSE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 2000U);
  EXPECT_EQ(search.recorded_from(thorough_set_up_entries + 1), saving_failure_end);
}

TEST(PhotoScan, AWriteThatFailsWithTheSectorThatReachesTheLimitIsASavingFailure) {
  PhotoSearch search("Jaaa");
  const FileSizeLimit limit(2 * sector_size);
  expect_saving_failure(search, table_of({jpeg(u"1536")}));
  EXPECT_TRUE(search.reported().empty());
}

TEST(PhotoScan, AWriteThatFailsAtTheEndOfTheRangeIsASavingFailure) {
  PhotoSearch search("Ja");
  const FileSizeLimit limit(2 * sector_size);  // the repeated last sector has no room
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1"}}));
  EXPECT_TRUE(search.reported().empty());
}

TEST(PhotoScan, AWriteThatFailsWhileAStopIsCarriedOutIsASavingFailure) {
  PhotoSearch search("JJaa");
  std::optional<FileSizeLimit> limit;
  search.recorder.on_report = [&](const Report&) {
    search.state.stop_now = 1;
    limit.emplace(0);
  };
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.reported(), (std::vector<std::string>{"JPG/GND00001.JPG"}));
}

TEST(PhotoScan, ASavingFailureTakesAStopRequestBack) {
  PhotoSearch search("JJJ");
  fs::create_directories(search.pass_path(Pass::general) / "JPG/GND00002.JPG");
  search.recorder.on_report = [&search](const Report&) { search.state.stop_now = 1; };
  expect_saving_failure(search, table_of({jpeg()}));
  EXPECT_EQ(search.state.stop_now, 0);
}

TEST(PhotoScan, AnExistingFileOfTheSameNameIsOverwritten) {
  PhotoSearch search("Ja");
  make_file(search.pass_path(Pass::general) / "JPG/GND00001.JPG", std::string(5000, 'x'));
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0 1 1"}}));
}

TEST(PhotoScan, ASecondSearchIntoTheSameDestinationOverwritesTheFirst) {
  PhotoSearch search("JaaJ");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"1536")})));
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"512")})));
  EXPECT_EQ(search.found(), (Found{{"JPG/GND00001.JPG", "0"}, {"JPG/GND00002.JPG", "3"}}));
}

TEST(PhotoScan, AMissingDestinationIsMade) {
  PhotoSearch search("Ja");
  search.request.destination = search.folder.path() / "new" / "place";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_TRUE(fs::exists(search.request.destination / PhotoSearch::search_root /
                         "General Recovery Results/JPG/GND00001.JPG"));
}

TEST(PhotoScan, AThoroughPassMakesTheGeneralFolderToo) {
  PhotoSearch search("JP");
  EXPECT_TRUE(search.run(Pass::thorough, table_of({png()})));
  EXPECT_EQ(
      entries_below(search.folder.path() / PhotoSearch::search_root),
      (std::set<std::string>{"General Recovery Results/", "Omitted (recovered by Thorough Scan)/",
                             "Omitted (recovered by Thorough Scan)/PNG/",
                             "Omitted (recovered by Thorough Scan)/PNG/THD00001.PNG"}));
}

TEST(PhotoScan, AGeneralPassThatFindsNothingLeavesItsEmptyFolder) {
  PhotoSearch search("aa");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(entries_below(search.folder.path() / PhotoSearch::search_root),
            (std::set<std::string>{"General Recovery Results/"}));
}

TEST(PhotoScan, APlantedLinkInTheTreeIsASavingFailureAndNothingIsWrittenThere) {
  for (const char* link : {"Norvo Birch Results", "Norvo Birch Results/Photo Search",
                           "Norvo Birch Results/Photo Search/General Recovery Results",
                           "Norvo Birch Results/Photo Search/General Recovery Results/JPG"}) {
    const TemporaryFolder elsewhere;
    PhotoSearch search("aJ");
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
