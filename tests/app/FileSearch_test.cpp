// A search for videos, raw files or audio through the controller: the ticked types become rows and
// tables, and the rows count.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "app/MyTableController.h"
#include "support/FakeDevice.h"
#include "support/FileContent.h"
#include "support/Recorder.h"
#include "support/ReportList.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using test::ReportList;
using test::sector_of;
using testing::ElementsAre;
using testing::IsEmpty;

std::string record(const std::string& extension, const std::string& header) {
  return "E : ." + extension + "\nS : 9000\nHeader : " + header + "\nP : 1\nK :\nD : a " +
         extension + " file\n";
}

// Drives with an AVI, a MOV and a TS file; the MOV file's header is in both tables, the TS file's
// only in the Thorough one.
class FileSearchTest : public testing::Test {
 protected:
  FileSearchTest() : opener_(medium_) {
    const std::string general = record("mov", "4D4F5631") + record("avi", "52494646");
    const std::string thorough = record("ts", "47545331") + record("mov", "4D4F5631");
    for (const std::string name : {"SPRVideo", "SPRRaw", "BIRAudio"}) {
      test::write_file(folder_.path() / (name + ".dll"), general);
      test::write_file(folder_.path() / (name + "Adv.dll"), thorough);
    }
    for (const std::string& sector : {test::zero_sectors(1), avi_, sector_of("", 'a'), mov_,
                                      sector_of("", 'b'), ts_, sector_of("", 'c')}) {
      medium_.bytes.insert(medium_.bytes.end(), sector.begin(), sector.end());
    }
  }

  ScanRequest request(std::int32_t mode = 1) const {
    ScanRequest request;
    request.Recovery_MODE = mode;
    request.device_path = "/dev/any";
    request.sectors_val = medium_.bytes.size() / sector_size;
    request.destination = folder_.path() / "destination";
    request.Rec_Folder_Name = u"Norvo Spruce Results";
    return request;
  }

  // Makes the check list of the mode.
  void prepare(MyTableController& controller, std::int32_t mode = 1) {
    controller.load_signature_tables(folder_.path());
    controller.check_list().build(tables_of_mode(controller.tables(), mode));
  }

  void search(MyTableController& controller, const ScanRequest& request) {
    controller.hand_over_selection(request.Recovery_MODE);
    controller.start_search(request);
    controller.wait_for_worker();
  }

  fs::path results(const fs::path& relative, const std::string& root = "Video Search") const {
    return folder_.path() / "destination/Norvo Spruce Results" / root / relative;
  }

  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const test::Report& report : list_.reports) names.push_back(utf8_from_text(report.name));
    return names;
  }

  static std::vector<FoundFilesRow> rows(const MyTableController& controller) {
    std::vector<FoundFilesRow> rows;
    for (std::size_t i = 0; i < controller.found_files().size(); ++i) {
      rows.push_back(controller.found_files().row(i));
    }
    return rows;
  }

  static FoundFilesRow empty_row(const Text& type) { return {type, u"0", u"", {}, type}; }

  const std::string avi_ = sector_of("RIFF", '1');
  const std::string mov_ = sector_of("MOV1", '2');
  const std::string ts_ = sector_of("GTS1", '3');
  test::TemporaryFolder folder_;
  test::FakeMedium medium_;
  test::FakeOpener opener_;
  test::Recorder recorder_;
  ReportList list_;
};

// It may wait for its drive for a long time, and the person go on to another choice.
TEST_F(FileSearchTest, ARunningSearchKeepsTheTypesThatItWasStartedWith) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  controller.hand_over_selection(1);
  std::atomic<bool> asked{false};
  std::atomic<bool> answers{false};
  medium_.made_sectors = 4;
  medium_.sector = [&](std::uint64_t, std::span<std::byte> sector) {
    asked = true;
    answers.wait(false);
    std::memcpy(sector.data(), "RIFF", 4);
  };
  ScanRequest four_sectors = request();
  four_sectors.sectors_val = medium_.made_sectors;
  controller.start_search(four_sectors);
  while (!asked) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  controller.check_list().Select_Unselect_Check(false);
  controller.hand_over_selection(1);
  answers = true;
  answers.notify_all();
  controller.wait_for_worker();
  EXPECT_EQ(list_.reports.size(), 4U);
}

TEST_F(FileSearchTest, BeforeTheScanEveryTickedTypeShowsZeroAndNoFile) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  std::vector<FoundFilesRow> at_start;
  recorder_.on_entry = [&](const test::Recorded&) {
    if (recorder_.recorded().size() == 1) at_start = rows(controller);
  };
  search(controller, request());
  EXPECT_THAT(at_start, ElementsAre(empty_row(u"AVI"), empty_row(u"MOV"), empty_row(u"TS")));
}

TEST_F(FileSearchTest, BothPassesSaveReportAndCountTheirFiles) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  search(controller, request());
  const fs::path avi = results("General Recovery Results/AVI/AVI00001.AVI");
  const fs::path mov = results("General Recovery Results/MOV/MOV00001.MOV");
  const fs::path mov_again = results("Omitted (recovered by Thorough Scan)/MOV/MOV00002.MOV");
  const fs::path ts = results("Omitted (recovered by Thorough Scan)/TS/TS00001.TS");
  EXPECT_THAT(list_.reports, ElementsAre(test::Report{avi, u"AVI00001.AVI", u"AVI00001.AVI"},
                                         test::Report{mov, u"MOV00001.MOV", u"MOV00001.MOV"},
                                         test::Report{mov_again, u"MOV00002.MOV", u"MOV00002.MOV"},
                                         test::Report{ts, u"TS00001.TS", u"TS00001.TS"}));
  EXPECT_THAT(rows(controller),
              ElementsAre(FoundFilesRow{u"AVI", u"1", u"AVI00001.AVI", avi, u"AVI"},
                          FoundFilesRow{u"MOV", u"2", u"MOV00002.MOV", mov_again, u"MOV"},
                          FoundFilesRow{u"TS", u"1", u"TS00001.TS", ts, u"TS"}));
  EXPECT_EQ(test::read_file(avi), avi_ + sector_of("", 'a') + mov_);
  EXPECT_EQ(test::read_file(mov),
            mov_ + sector_of("", 'b') + ts_ + sector_of("", 'c') + sector_of("", 'c'));
  EXPECT_EQ(test::read_file(mov_again), mov_ + sector_of("", 'b') + ts_);
  EXPECT_EQ(test::read_file(ts), ts_ + sector_of("", 'c') + sector_of("", 'c'));
  EXPECT_EQ(controller.state().outcome, SearchOutcome::completed);
}

TEST_F(FileSearchTest, FillsTheFileWindow) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  search(controller, request());
  ASSERT_EQ(controller.gallery().size(), 4U);
  EXPECT_EQ(controller.gallery().Shown_Item_Count(), 4U);
  EXPECT_EQ(controller.gallery().item(0),
            (MyImageObject{.path = results("General Recovery Results/AVI/AVI00001.AVI"),
                           .image = {.file_type = u"AVI", .points = 16},
                           .image_Name = u"AVI00001.AVI",
                           .image_UID = u"AVI00001.AVI"}));
  EXPECT_THAT(list_.added, ElementsAre(true, true, true, true));
}

TEST_F(FileSearchTest, AnUntickedTypeHasNoRowAndIsInNeitherPass) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  controller.check_list().set_State(1, false);  // MOV
  search(controller, request());
  EXPECT_THAT(names(), ElementsAre("AVI00001.AVI", "TS00001.TS"));
  ASSERT_EQ(rows(controller).size(), 2U);
  EXPECT_EQ(rows(controller)[0].FileTypes, u"AVI");
  EXPECT_EQ(rows(controller)[1].FileTypes, u"TS");
  EXPECT_FALSE(fs::exists(results("General Recovery Results/MOV")));
  EXPECT_FALSE(fs::exists(results("Omitted (recovered by Thorough Scan)/MOV")));
  // The header of an unticked type does not even end a file.
  EXPECT_EQ(test::read_file(results("General Recovery Results/AVI/AVI00001.AVI")),
            avi_ + sector_of("", 'a') + mov_ + sector_of("", 'b') + ts_ + sector_of("", 'c') +
                sector_of("", 'c'));
}

TEST_F(FileSearchTest, TheMarkOfThoroughTypesDoesNotSteerTheSearch) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  controller.load_signature_tables(folder_.path());
  controller.check_list().createExtensionListTableRecord(u"MOV", true, u"", u"YES");
  controller.check_list().createExtensionListTableRecord(u"TS", true, u"", u"");
  controller.check_list().createExtensionListTableRecord(u"AVI", false, u"", u"");
  search(controller, request());
  EXPECT_THAT(names(), ElementsAre("MOV00001.MOV", "MOV00002.MOV", "TS00001.TS"));
  EXPECT_EQ(list_.reports[0].path, results("General Recovery Results/MOV/MOV00001.MOV"));
  EXPECT_EQ(list_.reports[2].path, results("Omitted (recovered by Thorough Scan)/TS/TS00001.TS"));
}

TEST_F(FileSearchTest, WithoutTheThoroughPassItsTypesKeepTheirRowAtZero) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  ScanRequest general_only = request();
  general_only.thorough = false;
  search(controller, general_only);
  EXPECT_THAT(names(), ElementsAre("AVI00001.AVI", "MOV00001.MOV"));
  ASSERT_EQ(rows(controller).size(), 3U);
  EXPECT_EQ(rows(controller)[2], empty_row(u"TS"));
}

TEST_F(FileSearchTest, TheNextSearchBeginsWithNewRowsAndNumbers) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  search(controller, request());
  controller.check_list().Select_Unselect_Check(false);
  controller.check_list().set_State(0, true);  // AVI
  list_.reports.clear();
  search(controller, request());
  EXPECT_THAT(names(), ElementsAre("AVI00001.AVI"));
  ASSERT_EQ(rows(controller).size(), 1U);
  EXPECT_EQ(rows(controller)[0].NoOfFile, u"1");
}

TEST_F(FileSearchTest, NothingTickedRunsBothPassesAndFindsNothing) {
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  controller.check_list().Select_Unselect_Check(false);
  search(controller, request());
  EXPECT_THAT(list_.reports, IsEmpty());
  EXPECT_THAT(rows(controller), IsEmpty());
  EXPECT_EQ(medium_.opened, 2U);
  EXPECT_EQ(controller.state().outcome, SearchOutcome::completed);
}

TEST_F(FileSearchTest, RawFilesAndAudioHaveTablesAndFoldersOfTheirOwn) {
  for (const auto& [edition, mode, root] :
       {std::tuple{u"Norvo Spruce", 2, "File Search"}, {u"Norvo Birch", 3, "Audio File Search"}}) {
    fs::remove_all(folder_.path() / "destination");
    list_.reports.clear();
    MyTableController controller(edition, opener_, recorder_, list_);
    prepare(controller, mode);
    search(controller, request(mode));
    EXPECT_THAT(names(), ElementsAre("AVI00001.AVI", "MOV00001.MOV", "MOV00002.MOV", "TS00001.TS"));
    EXPECT_TRUE(fs::exists(results("General Recovery Results/AVI/AVI00001.AVI", root)));
    EXPECT_EQ(std::distance(fs::directory_iterator(results("", "")), {}), 1);
  }
}

TEST_F(FileSearchTest, AFileThatTheFullFileWindowHasNoRoomForIsReportedAndNotCounted) {
  medium_.bytes.clear();
  for (int i = 0; i < 668; ++i) medium_.bytes.insert(medium_.bytes.end(), mov_.begin(), mov_.end());
  test::write_file(
      folder_.path() / "SPRVideo.dll",
      record("mov", "4D4F5631") + record("mp4", "4D4F5631") + record("m4v", "4D4F5631"));
  MyTableController controller(u"Norvo Spruce", opener_, recorder_, list_);
  prepare(controller);
  ScanRequest general_only = request();
  general_only.thorough = false;
  search(controller, general_only);
  // The 668th header ends the 667th three files: number 1999, 2000 and 2001.
  ASSERT_EQ(list_.added.size(), 2004U);
  EXPECT_EQ(std::count(list_.added.begin(), list_.added.end(), false), 1);
  EXPECT_FALSE(list_.added[2000]);
  EXPECT_EQ(list_.reports[2000].name, u"M4V00667.M4V");
  EXPECT_EQ(list_.reports[2003].name, u"M4V00667.M4V");
  EXPECT_EQ(recorder_.all<operation::ShowClearingNotice>().size(), 1U);
  EXPECT_EQ(controller.gallery().size(), 3U);
  EXPECT_EQ(controller.found_files().NoOfFile(u"MOV"), 668U);
  EXPECT_EQ(controller.found_files().NoOfFile(u"M4V"), 667U);
}

}  // namespace
}  // namespace norvo
