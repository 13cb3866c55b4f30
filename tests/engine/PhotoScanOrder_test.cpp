// Everything a pass asks of whoever shows it, in its order.
#include <gtest/gtest.h>

#include <cerrno>

#include "PhotoSearch.h"

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

ScanOperation enable(Control control, bool on) {
  return operation::Enable{.control = control, .on = on};
}

// The set-up of a pass over sectors 1000 to 1003 from the progress bar's limits on.
std::vector<Recorded> set_up_from_the_limits() {
  return {ScanOperation(operation::SetProgressLimits{.minimum = 0, .maximum = 3}),
          ScanOperation(operation::SetSectorLabel{u"Sectors 1000 of 1003   ( Completed 0% )"}),
          enable(Control::Thro_Mode_Chk, false),
          enable(Control::browse_path, false),
          ScanOperation(operation::SetProgressDeterminate{}),
          ScanOperation(operation::SetProgressValue{0}),
          ScanOperation(operation::SetHelpText{scanning_help}),
          ScanOperation(operation::SetSectorLabel{u"Sectors 1000 of 1003   ( Completed 0% )"})};
}

std::vector<Recorded> begin_general() {
  return {ImagesEmptied{}, ScanOperation(operation::SetZoom{.slider = 0.5, .browser = 0.55}),
          ScanOperation(operation::BeginPass{.pass = Pass::general, .label = general_label}),
          ScanOperation(operation::SetModeLabel{general_label})};
}

std::vector<Recorded> begin_thorough() {
  return {ScanOperation(operation::BeginPass{.pass = Pass::thorough, .label = thorough_label}),
          ScanOperation(operation::SetModeLabel{thorough_label})};
}

std::vector<Recorded> joined(std::vector<Recorded> first, const std::vector<Recorded>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(PhotoScan, AGeneralPassEmptiesTheGalleryAndShowsItsRangeBeforeItsFirstSector) {
  PhotoSearch search("aaa", 1000);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.recorded(), joined(begin_general(), set_up_from_the_limits()));
  EXPECT_EQ(search.state.Curr_Running_Mode_Info.get(), general_label);
}

TEST(PhotoScan, AThoroughPassLeavesGalleryAndZoomAlone) {
  PhotoSearch search("aaa", 1000);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.recorded(), joined(begin_thorough(), set_up_from_the_limits()));
  EXPECT_EQ(search.state.Curr_Running_Mode_Info.get(), thorough_label);
}

// Says how much was recorded, and what the state was, when the device was opened.
class OpeningWitness final : public DeviceOpener {
 public:
  explicit OpeningWitness(PhotoSearch& search) : search_(search) {}

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
  PhotoSearch& search_;
};

bool run_with(PhotoSearch& search, DeviceOpener& opener) {
  const ScanContext context{.request = search.request,
                            .state = search.state,
                            .opener = opener,
                            .results = search.recorder,
                            .operations = search.recorder,
                            .timer = search.timer};
  const SignatureTable table = table_of({jpeg()});
  return PhotoScan(context, Pass::general, table).Photo_Recovey_Mode();
}

TEST(PhotoScan, TheDeviceIsOpenedAfterTheFirstProgressLabelAndBeforeAnyFolderIsMade) {
  PhotoSearch search("aaa");
  OpeningWitness witness(search);
  EXPECT_TRUE(run_with(search, witness));
  EXPECT_EQ(witness.path, "/dev/test-card");
  EXPECT_EQ(witness.entries_before, 6U);
  EXPECT_FALSE(witness.folder_was_made);
}

TEST(PhotoScan, ADeviceLeftOpenIsClosedBeforeThePassOpensItsOwn) {
  PhotoSearch search("aaa");
  search.state.pFile_Disk = search.opener.open({}).device;
  OpeningWitness witness(search);
  EXPECT_TRUE(run_with(search, witness));
  EXPECT_TRUE(witness.device_was_closed);
}

std::vector<Recorded> open_failure_entries(int error) {
  return {ScanOperation(operation::PrintOpenError{error}),
          ScanOperation(operation::DecreaseScreenCounter{}),
          ScanOperation(operation::ShowHideScreen{.screen = Screen::screen_2, .hide = false}),
          ScanOperation(operation::ShowHideScreen{.screen = Screen::screen_3_Photo, .hide = true}),
          ScanOperation(operation::Show{.control = Control::open_folder, .on = false}),
          CountReset{}};
}

// The first of the set-up's entries after which the device is opened.
std::vector<Recorded> set_up_until_opening() {
  std::vector<Recorded> entries = joined(begin_general(), set_up_from_the_limits());
  entries.resize(6);
  return entries;
}

// Runs a pass whose device cannot be opened and returns what was recorded.
std::vector<Recorded> recorded_when_opening_fails(int error) {
  PhotoSearch search("aaa", 1000);
  search.medium.open_error = error;
  search.state.stop_now = 1;
  search.recorder.gallery.addImageWithPath("/earlier", u"earlier", u"earlier");
  int alerts = 0;
  search.recorder.on_entry = [&](const Recorded& entry) {
    const bool alert = std::holds_alternative<PermissionAlert>(entry) ||
                       std::holds_alternative<GenericAlert>(entry);
    if (!alert) return;
    ++alerts;
    EXPECT_EQ(search.state.stop_now, 0);
    EXPECT_EQ(search.state.stop_screen_already_show, 1);
    EXPECT_EQ(search.recorder.gallery.Shown_Item_Count(), 0U);
  };
  EXPECT_FALSE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(alerts, 1);
  EXPECT_EQ(search.state.outcome, SearchOutcome::open_failed);
  EXPECT_FALSE(std::filesystem::exists(search.folder.path() / "Norvo Birch Results"));
  return search.recorder.recorded();
}

TEST(PhotoScan, ADeviceThatMayNotBeOpenedGoesBackAScreenAndGuidesToThePermissions) {
  for (const int error : {EPERM, EACCES}) {
    const std::vector<Recorded> alert{
        ScanOperation(operation::SystemLog{
            u"It appears there's a permission issue. Guiding user to System Settings."}),
        PermissionAlert{error}};
    EXPECT_EQ(recorded_when_opening_fails(error),
              joined(joined(set_up_until_opening(), open_failure_entries(error)), alert));
  }
}

TEST(PhotoScan, ADeviceThatCannotBeOpenedOtherwiseGetsTheGenericAlert) {
  for (const int error : {ENOENT, EBUSY, EIO, ENXIO}) {
    EXPECT_EQ(
        recorded_when_opening_fails(error),
        joined(joined(set_up_until_opening(), open_failure_entries(error)), {GenericAlert{error}}));
  }
}

struct RangeCase {
  bool entire_disk;
  bool sector_range;
  Text start;
  Text end;
  std::uint64_t wanted_start;
  std::uint64_t wanted_end;
};

TEST(PhotoScan, TheRangeIsTheWholeDriveOrTheTypedOneAndEmptyWhenTheChoicesContradict) {
  const std::vector<RangeCase> cases{
      {true, false, u"3", u"5", 0, 9},      {false, true, u"3", u"5", 3, 5},
      {true, true, u"3", u"5", 0, 0},       {false, false, u"3", u"5", 0, 0},
      {false, true, u" 2nd", u"7th", 2, 7}, {false, true, u"", u"", 0, 0},
      {false, true, u"+4", u"4", 4, 4},
  };
  for (const RangeCase& c : cases) {
    PhotoSearch search("aaaaaaaaa");
    search.request.sectors_val = 9;
    search.request.entire_disk = c.entire_disk;
    search.request.sector_range = c.sector_range;
    search.request.start_slider_val = c.start;
    search.request.end_slider_val = c.end;
    EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
    EXPECT_EQ(search.state.start_sector, c.wanted_start);
    EXPECT_EQ(search.state.end_sector, c.wanted_end);
    EXPECT_EQ(search.state.total_sector, c.wanted_end - c.wanted_start);
    EXPECT_EQ(search.state.for_index, c.wanted_end);
    EXPECT_EQ(search.recorder.all<operation::SetProgressLimits>(),
              (std::vector<operation::SetProgressLimits>{
                  {.minimum = 0, .maximum = static_cast<double>(c.wanted_end - c.wanted_start)}}));
  }
}

TEST(PhotoScan, ARangeThatEndsBeforeItStartsReadsNothing) {
  PhotoSearch search("JJJJJJ");
  search.request.start_slider_val = u"5";
  search.request.end_slider_val = u"3";
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), Found{});
  EXPECT_EQ(search.state.for_index, 5U);
}

TEST(PhotoScan, TheIndexCountsASectorBeforeItIsSearched) {
  PhotoSearch search("aJaJz", 1000);
  std::vector<std::uint64_t> indices;
  search.recorder.on_report = [&](const Report&) { indices.push_back(search.state.for_index); };
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(u"1024"), png()})));
  // The first file ends with the header in sector 1003, the second by its limit in 1004.
  EXPECT_EQ(indices, (std::vector<std::uint64_t>{1004, 1005}));
}

}  // namespace
}  // namespace norvo::test
