// Everything a pass for videos, raw files or audio asks of whoever shows it, in its order.
#include <gtest/gtest.h>

#include <cerrno>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

using operation::Control;
using operation::Screen;

const Text general_label =
    u"( Currently performing Search based on: Norvo General Recovery Procedure )";
const Text thorough_label =
    u"( Currently performing Search based on: Norvo Thorough Scanning Algorithm )";
const Text scanning_help =
    u"\nTo stop recovery, click on \u2018Stop\u2019 Button or please wait for the process to be "
    u"completed.";

std::vector<Recorded> joined(std::vector<Recorded> first, const std::vector<Recorded>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

// The set-up of a pass over sectors 1000 to 1003, from its label until the device is opened.
std::vector<Recorded> until_opening(Pass pass, const Text& label) {
  return {ScanOperation(operation::BeginPass{.pass = pass, .label = label}),
          ScanOperation(operation::SetModeLabel{label}),
          ScanOperation(operation::SetProgressLimits{.minimum = 0, .maximum = 3}),
          ScanOperation(operation::SetProgressDeterminate{}),
          ScanOperation(operation::SetProgressValue{0}),
          ScanOperation(operation::SetSectorLabel{u"Sectors 1000 of 1003   ( Completed 0% )"})};
}

std::vector<Recorded> general_until_opening() {
  return joined({ScanOperation(operation::ForgetPreviousSelection{}), ImagesEmptied{}},
                until_opening(Pass::general, general_label));
}

const std::vector<Recorded> settings_off{
    ScanOperation(operation::Enable{.control = Control::Thro_Mode_Chk, .on = false}),
    ScanOperation(operation::Enable{.control = Control::browse_path, .on = false})};
const std::vector<Recorded> empty_preview{
    ScanOperation(operation::SetPreviewTitle{u"No file is selected to preview"})};
const std::vector<Recorded> help_and_label{
    ScanOperation(operation::SetHelpText{scanning_help}),
    ScanOperation(operation::SetSectorLabel{u"Sectors 1000 of 1003   ( Completed 0% )"})};

TEST(RawFileScan, AGeneralPassEmptiesFileWindowAndPreviewAndShowsItsRangeBeforeItsFirstSector) {
  RawFileSearch search("aaa", 1000);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(
      search.recorder.recorded(),
      joined(joined(joined(general_until_opening(), settings_off), empty_preview), help_and_label));
  EXPECT_EQ(search.state.Curr_Running_Mode_Info.get(), general_label);
}

TEST(RawFileScan, AThoroughPassLeavesFileWindowSelectionAndPreviewAlone) {
  RawFileSearch search("aaa", 1000);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(
      search.recorder.recorded(),
      joined(joined(until_opening(Pass::thorough, thorough_label), settings_off), help_and_label));
  EXPECT_EQ(search.state.Curr_Running_Mode_Info.get(), thorough_label);
}

// Says how much was recorded, and what the state was, when the device was opened.
class OpeningWitness final : public DeviceOpener {
 public:
  explicit OpeningWitness(RawFileSearch& search) : search_(search) {}

  OpenedDevice open(const std::filesystem::path& asked) override {
    path = asked;
    entries_before = search_.recorder.recorded().size();
    device_was_closed = search_.state.pFile_Disk == nullptr;
    folder_was_made = std::filesystem::exists(search_.folder.path() / "Norvo Birch Results");
    return search_.opener.open(asked);
  }

  std::filesystem::path path;
  std::size_t entries_before = 0;
  bool device_was_closed = false;
  bool folder_was_made = false;

 private:
  RawFileSearch& search_;
};

TEST(RawFileScan, TheDeviceIsOpenedAfterTheFirstProgressLabelAndBeforeAnyFolderIsMade) {
  RawFileSearch search("aaa");
  search.state.pFile_Disk = search.opener.open({}).device;
  OpeningWitness witness(search);
  const ScanContext context{.request = search.request,
                            .state = search.state,
                            .opener = witness,
                            .results = search.recorder,
                            .operations = search.recorder,
                            .timer = search.timer};
  const SignatureTable table = table_of({jpeg()});
  EXPECT_TRUE(RawFileScan(context, Pass::general, table).Raw_File_Recovey_Mode());
  EXPECT_EQ(witness.path, "/dev/test-card");
  EXPECT_EQ(witness.entries_before, 8U);
  EXPECT_TRUE(witness.device_was_closed);
  EXPECT_FALSE(witness.folder_was_made);
}

TEST(RawFileScan, ThePassFolderIsMadeBetweenTheHelpTextAndTheSecondLabel) {
  for (const Pass pass : {Pass::general, Pass::thorough}) {
    RawFileSearch search("aaa");
    std::vector<bool> made_at_label;
    search.recorder.on_entry = [&](const Recorded& entry) {
      const auto* operation = std::get_if<ScanOperation>(&entry);
      if (operation == nullptr) return;
      const bool made = std::filesystem::exists(search.pass_path(pass));
      if (std::holds_alternative<operation::SetHelpText>(*operation)) {
        EXPECT_FALSE(made);
      }
      if (std::holds_alternative<operation::SetSectorLabel>(*operation)) {
        made_at_label.push_back(made);
      }
    };
    EXPECT_TRUE(search.run(pass, table_of({jpeg()})));
    EXPECT_EQ(made_at_label, (std::vector<bool>{false, true}));
  }
}

// What follows a failure to open the device, up to its alert.
std::vector<Recorded> open_failure_entries(int error) {
  return {
      ScanOperation(operation::PrintOpenError{error}),
      ScanOperation(operation::DecreaseScreenCounter{}),
      ScanOperation(operation::ShowHideScreen{.screen = Screen::screen_3_RawFile, .hide = false}),
      ScanOperation(operation::ShowHideScreen{.screen = Screen::screen_4_RawFile, .hide = true}),
      ScanOperation(operation::Show{.control = Control::open_folder_Sig, .on = false})};
}

// Runs a General pass whose device cannot be opened and returns what was recorded.
std::vector<Recorded> recorded_when_opening_fails(int error) {
  RawFileSearch search("aaa", 1000);
  search.medium.open_error = error;
  search.state.stop_now = 1;
  search.recorder.gallery.addImageWithPath_2("/earlier", u"earlier", u"earlier");
  int alerts = 0;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const bool alert = std::holds_alternative<PermissionAlert>(entry) ||
                       std::holds_alternative<GenericAlert>(entry);
    if (!alert) return;
    ++alerts;
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.stop_screen_already_show, 1);
    EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 1U);
  };
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(alerts, 1);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
  EXPECT_FALSE(std::filesystem::exists(search.folder.path() / "Norvo Birch Results"));
  return search.recorder.recorded();
}

TEST(RawFileScan, ADeviceThatMayNotBeOpenedGoesBackAScreenAndGuidesToThePermissions) {
  for (const int error : {EPERM, EACCES}) {
    const std::vector<Recorded> alert{
        ScanOperation(operation::SystemLog{
            u"It appears there's a permission issue. Guiding user to System Settings."}),
        PermissionAlert{error}};
    EXPECT_EQ(recorded_when_opening_fails(error),
              joined(joined(general_until_opening(), open_failure_entries(error)), alert));
  }
}

TEST(RawFileScan, ADeviceThatCannotBeOpenedOtherwiseGetsTheGenericAlert) {
  for (const int error : {ENOENT, EBUSY, EIO, ENXIO}) {
    EXPECT_EQ(recorded_when_opening_fails(error),
              joined(joined(general_until_opening(), open_failure_entries(error)),
                     {GenericAlert{error}}));
  }
}

TEST(RawFileScan, ADeviceThatCannotBeOpenedInvalidatesTheProgressTimer) {
  RawFileSearch search("Ja");
  search.medium.open_error = ENOENT;
  EXPECT_TRUE(
      search.timer_ends([&] { EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()}))); }));
}

TEST(RawFileScan, EachSearchTypeHasAFolderOfItsOwn) {
  for (const auto& [mode, name] :
       {std::pair{1, "Video Search"}, {2, "File Search"}, {3, "Audio File Search"}}) {
    RawFileSearch search("Jz");
    search.request.Recovery_MODE = mode;
    EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
    EXPECT_TRUE(search.run(Pass::thorough, table_of({png()})));
    EXPECT_EQ(entries_below(search.folder.path() / "Norvo Birch Results"),
              (std::set<std::string>{
                  std::string(name) + "/", std::string(name) + "/General Recovery Results/",
                  std::string(name) + "/General Recovery Results/JPG/",
                  std::string(name) + "/General Recovery Results/JPG/JPG00001.JPG",
                  std::string(name) + "/Omitted (recovered by Thorough Scan)/"}));
  }
}

TEST(RawFileScan, AThoroughPassMakesTheGeneralFolderToo) {
  RawFileSearch search("aa");
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_TRUE(std::filesystem::is_directory(search.pass_path(Pass::general)));
  EXPECT_TRUE(std::filesystem::is_directory(search.pass_path(Pass::thorough)));
}

struct RangeCase {
  bool entire_disk;
  bool sector_range;
  std::uint64_t wanted_start;
  std::uint64_t wanted_end;
};

TEST(RawFileScan, TheRangeIsTheWholeDriveOrTheTypedOneAndEmptyWhenTheChoicesContradict) {
  for (const RangeCase& c : {RangeCase{true, false, 0, 9}, RangeCase{false, true, 3, 5},
                             RangeCase{true, true, 0, 0}, RangeCase{false, false, 0, 0}}) {
    RawFileSearch search("aaaaaaaaa");
    search.request.sectors_val = 9;
    search.request.entire_disk = c.entire_disk;
    search.request.sector_range = c.sector_range;
    search.request.start_slider_val = u"3";
    search.request.end_slider_val = u"5";
    EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
    EXPECT_EQ(search.state.start_sector, c.wanted_start);
    EXPECT_EQ(search.state.end_sector, c.wanted_end);
    EXPECT_EQ(search.state.total_sector, c.wanted_end - c.wanted_start);
    EXPECT_EQ(search.state.for_index, c.wanted_end);
  }
}

TEST(RawFileScan, TheIndexCountsASectorBeforeItIsSearched) {
  RawFileSearch search("aJaJz", 1000);
  std::vector<std::uint64_t> indices;
  search.recorder.on_report = [&](const Report&) { indices.push_back(search.state.for_index); };
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"1536")})));
  // The first file ends with the header in sector 1003, the second with the range.
  EXPECT_EQ(indices, (std::vector<std::uint64_t>{1004, 1005}));
}

}  // namespace
}  // namespace norvo::test
