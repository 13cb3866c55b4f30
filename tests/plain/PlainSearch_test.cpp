// What both scans share: passes, stops, failures, the list of shown items.
#include "PlainSearch.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "PlainController.h"
#include "PlainTestKit.h"

namespace plain {
namespace {

const std::string kRoot = "/d/R/Photo Search";
const std::string kGeneral = kRoot + "/General Recovery Results";
const std::string kThorough = kRoot + "/Omitted (recovered by Thorough Scan)";

using Kinds = std::vector<EventKind>;
constexpr EventKind kLabel = EventKind::kModeLabel;
constexpr EventKind kReport = EventKind::kReport;
constexpr EventKind kFinal = EventKind::kFinalScreen;

TEST(PlainWorker, RunsTheThoroughPassAfterTheGeneralOne) {
  Search search = photo_search({kHeader, kHeader, kOther}, u"512");
  search.thorough = true;
  add_record(search.thorough_table, u"OLD", u"512", u"33", u"1", u"51");
  const Outcome outcome = run(search);
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kReport, kReport, kLabel, kReport, kFinal}));
  EXPECT_EQ(reported_names(outcome),
            (std::vector<std::string>{"GND00001.JPG", "GND00002.JPG", "THD00001.OLD"}));
  EXPECT_EQ(outcome.files.at(kThorough + "/OLD/THD00001.OLD"), kOther);
  EXPECT_EQ(outcome.events.at(3).pass, "THD");
  EXPECT_EQ(outcome.events.at(3).text,
            "( Currently performing Search based on: Norvo Thorough Scanning Algorithm )");
  EXPECT_EQ(outcome.thorough_result, true);
  EXPECT_EQ(outcome.shown_item_count, 3U);
}

TEST(PlainWorker, EndsAnEmptyTableAtOnceAndLeavesBothPassFolders) {
  Search search = search_of(0, {kHeader});
  search.thorough = true;
  const Outcome outcome = run(search);
  EXPECT_TRUE(outcome.general_result);
  EXPECT_TRUE(outcome.files.empty());
  EXPECT_EQ(outcome.folders, (std::set<std::string>{"/d/R", kRoot, kGeneral, kThorough}));
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kLabel, kFinal}));
}

TEST(PlainWorker, StopsBeforeTheNextSectorAndKeepsWhatIsWritten) {
  Search search = photo_search({kHeader, kHeader, kOther, kHeader});
  search.thorough = true;
  search.stop_after_reports = 1;
  const Outcome outcome = run(search);
  EXPECT_FALSE(outcome.general_result);
  EXPECT_EQ(outcome.thorough_result, std::nullopt);
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kReport, kReport, kFinal, kFinal}));
  EXPECT_EQ(outcome.files.at(kGeneral + "/JPG/GND00001.JPG"), joined({kHeader, kHeader}));
  EXPECT_EQ(outcome.files.at(kGeneral + "/JPG/GND00002.JPG"), kHeader);
}

TEST(PlainWorker, StopsTheThoroughPassAtItsFirstSectorAfterALateStop) {
  Search search = photo_search({kHeader});
  search.thorough = true;
  search.thorough_table = search.general;
  search.stop_after_reports = 1;
  const Outcome outcome = run(search);
  EXPECT_TRUE(outcome.general_result);
  EXPECT_EQ(outcome.thorough_result, false);
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kReport, kLabel, kFinal, kFinal}));
}

TEST(PlainWorker, ShowsWhyTheDeviceDoesNotOpen) {
  for (const int mode : {0, 1}) {
    for (const int error : {EPERM, EACCES, ENOENT, EBUSY}) {
      Search search = search_of(mode, {kHeader});
      search.thorough = true;
      search.initial_shown_item_count = 5;
      search.device.openable = false;
      search.device.open_errno = error;
      const Outcome outcome = run(search);
      EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, EventKind::kDeviceError}));
      EXPECT_EQ(outcome.events.back().error_number, error);
      EXPECT_EQ(outcome.events.back().permission, error == EPERM || error == EACCES);
      EXPECT_TRUE(outcome.folders.empty());
      EXPECT_FALSE(outcome.general_result);
      EXPECT_EQ(outcome.shown_item_count, mode == 0 ? 0U : 5U);
    }
  }
}

TEST(PlainSaving, FailsWhereAFileStandsInTheWayOfAFolder) {
  for (const std::string& path : {kRoot, kGeneral, kGeneral + "/JPG"}) {
    Search search = photo_search({kHeader, kOther});
    search.thorough = true;
    search.existing_files[path] = {1};
    const Outcome outcome = run(search);
    EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, EventKind::kMessage, kFinal, kFinal})) << path;
    EXPECT_EQ(outcome.events.at(1).text,
              "\nUnable to continue saving recovered data.\n\nEither Destination Drive is "
              "inaccessible or there is no free space available in drive to save recovered data.");
    EXPECT_FALSE(outcome.general_result);
    EXPECT_EQ(outcome.files, search.existing_files);
  }
}

TEST(PlainSaving, FailsWhereAFolderHasTheNameOfTheFile) {
  Search search = photo_search({kHeader, kHeader, kOther});
  search.existing_folders.insert(kGeneral + "/JPG/GND00002.JPG");
  const Outcome outcome = run(search);
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kReport, EventKind::kMessage, kFinal, kFinal}));
}

TEST(PlainSaving, OverwritesAFileOfTheSameName) {
  Search search = photo_search({kHeader}, u"512");
  search.existing_files[kGeneral + "/JPG/GND00001.JPG"] = Bytes(4000, 7);
  search.existing_files[kGeneral + "/JPG/mine"] = {7};
  const Outcome outcome = run(search);
  EXPECT_EQ(outcome.files.at(kGeneral + "/JPG/GND00001.JPG"), kHeader);
  EXPECT_EQ(outcome.files.at(kGeneral + "/JPG/mine"), Bytes{7});
}

TEST(PlainSaving, EndsOnAFullDriveWithoutReportingTheFile) {
  for (const int mode : {0, 2}) {
    for (const char16_t* maximum : {u"1024", u"100000"}) {
      Search search = search_of(mode, {kHeader, kOther, kOther});
      add_record(search.general, u"JPG", maximum, u"AABB", u"1", u"170");
      search.sector_writes_until_full = 1;
      const Outcome outcome = run(search);
      EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, EventKind::kMessage, kFinal, kFinal}));
      ASSERT_EQ(outcome.files.size(), 1U);
      EXPECT_EQ(outcome.files.begin()->second, kHeader);
    }
  }
}

TEST(PlainGallery, IsClearedBeforeTheReportOfThePreviousFile) {
  Search search = photo_search({kHeader, kHeader, kHeader});
  search.initial_shown_item_count = 1999;
  const Outcome outcome = run(search);
  EXPECT_EQ(kinds_of(outcome),
            (Kinds{kLabel, kReport, EventKind::kClearing, kReport, kReport, kFinal}));
  EXPECT_EQ(outcome.events.at(2).text,
            "To maintain the speed of recovery, thumbnail preview window is cleared after every "
            "2000 thumbnails.");
  EXPECT_EQ(outcome.shown_item_count, 2U);
}

TEST(PlainGallery, IgnoresReportsBetweenTheLimitAndTheNextHeader) {
  Search search = photo_search({kHeader, kHeader, kOther}, u"1024");
  search.initial_shown_item_count = 1999;
  const Outcome outcome = run(search);
  EXPECT_EQ(kinds_of(outcome), (Kinds{kLabel, kReport, kReport, kFinal}));
  EXPECT_EQ(outcome.shown_item_count, 2000U);
}

TEST(PlainGallery, CountsReportsThatFindTheListFull) {
  std::vector<Bytes> sectors(2001, kHeader);
  sectors.push_back(kOther);
  EXPECT_EQ(run(photo_search(sectors, u"1024")).shown_item_count, 2001U);
  sectors.push_back(kHeader);
  EXPECT_EQ(run(photo_search(sectors, u"1024")).shown_item_count, 1U);
}

TEST(PlainGallery, KeepsItsCountForTheThoroughPass) {
  Search search = photo_search({kHeader}, u"512");
  search.thorough = true;
  search.thorough_table = search.general;
  search.initial_shown_item_count = 1999;
  const Outcome outcome = run(search);
  EXPECT_EQ(kinds_of(outcome),
            (Kinds{kLabel, kReport, kLabel, EventKind::kClearing, kReport, kFinal}));
}

TEST(PlainFoundFiles, CountOnlyTheFirstRowOfAType) {
  Search search = search_of(1, {});
  search.row_types = {u"A", u"B", u"A"};
  Controller controller(search);
  const Row empty_a = controller.nsSIGFileInfoDataObject[0];
  EXPECT_EQ(empty_a, (Row{"A", "0", "", "", "A"}));
  controller.addImageWithPath_2("/x/A00001.A ", "A00001.A", "A00001.A");
  controller.addImageWithPath_2("/x/c.C", "c.C", "c.C");
  controller.addImageWithPath_2("/x.A/none", "none", "none");
  controller.addImageWithPath_2(" \t", "blank", "blank");
  EXPECT_EQ(controller.nsSIGFileInfoDataObject,
            (std::vector<Row>{
                {"A", "1", "A00001.A", "/x/A00001.A", "A"}, {"B", "0", "", "", "B"}, empty_a}));
  EXPECT_EQ(controller.images, 3U);
  EXPECT_EQ(controller.Shown_Item_Count, 3U);
}

TEST(PlainFoundFiles, StandStillWhileTheFileWindowIsFull) {
  Search search = search_of(1, {});
  search.row_types = {u"A"};
  Controller controller(search);
  controller.images = 2000;
  controller.Shown_Item_Count = 1234;
  controller.addImageWithPath_2("/x/A00001.A", "A00001.A", "A00001.A");
  EXPECT_EQ(controller.Shown_Item_Count, 1235U);
  controller.images = 1999;
  controller.Shown_Item_Count = 2000;
  controller.addImageWithPath_2("/x/A00001.A", "A00001.A", "A00001.A");
  EXPECT_EQ(controller.Shown_Item_Count, 2000U);
  EXPECT_EQ(controller.nsSIGFileInfoDataObject[0].NoOfFile, "0");
}

}  // namespace
}  // namespace plain
