// The end of a search as the person sees it, and the question of the Stop button.
#include "engine/FinalScreen.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/FakeDevice.h"
#include "support/FileTree.h"
#include "support/Recorder.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

using operation::Control;

Recorded show(Control control, bool on) {
  return ScanOperation(operation::Show{.control = control, .on = on});
}

Recorded enable(Control control) {
  return ScanOperation(operation::Enable{.control = control, .on = true});
}

// Before the window that says where the files are.
const std::vector<Recorded> first_steps{
    ScanOperation(operation::SetHelpText{
        u"\nTo select another disk for recovery, click on \u2018Back\u2019 Button."}),
    show(Control::Mode_label, false), show(Control::Progress_Horz, false),
    show(Control::sector_label, false), show(Control::stop_scan, false)};
const std::vector<Recorded> photo_results{show(Control::zoom_label, true),
                                          show(Control::zoom_slider, true),
                                          show(Control::open_folder, true)};
const std::vector<Recorded> other_results{show(Control::zoom_label, false),
                                          show(Control::zoom_slider, false),
                                          show(Control::open_folder_Sig, true)};
const std::vector<Recorded> last_steps{enable(Control::back_btn), enable(Control::browse_path),
                                       enable(Control::Thro_Mode_Chk)};

std::vector<Recorded> joined(const std::vector<std::vector<Recorded>>& parts) {
  std::vector<Recorded> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

const std::vector<Recorded> window_closed_by_its_button{SaveInfoRun{}, SaveInfoClosed{}};

std::vector<Recorded> whole_screen(const std::vector<Recorded>& results) {
  return joined({first_steps, window_closed_by_its_button, results, last_steps});
}

struct FinalScreenTest : testing::Test {
  void show_final_screen() { Final_or_Stop_Screen(request, state, recorder); }

  ScanRequest request;
  ScanState state;
  Recorder recorder;
};

TEST_F(FinalScreenTest, APhotoSearchEndsWithItsZoomAndOpenFolderButton) {
  show_final_screen();
  EXPECT_EQ(recorder.recorded(), whole_screen(photo_results));
}

TEST_F(FinalScreenTest, EveryOtherSearchEndsWithoutZoomAndWithItsOwnOpenFolderButton) {
  for (const std::int32_t mode : {1, 2, 3}) {
    Recorder own;
    request.Recovery_MODE = mode;
    Final_or_Stop_Screen(request, state, own);
    EXPECT_EQ(own.recorded(), whole_screen(other_results)) << mode;
  }
}

TEST_F(FinalScreenTest, AWindowThatWasNotClosedByItsButtonIsNotTakenAway) {
  for (const int code : {0, 2, -1000}) {
    Recorder own;
    own.save_info_code = code;
    Final_or_Stop_Screen(request, state, own);
    EXPECT_EQ(own.recorded(), joined({first_steps, {SaveInfoRun{}}, photo_results, last_steps}));
  }
}

TEST_F(FinalScreenTest, AScanThatStillRunsIsToldToStopUntilTheWindowIsClosed) {
  std::vector<std::int32_t> stop_now;
  recorder.on_entry = [&](const Recorded&) {
    stop_now.push_back(state.stop_now);
    EXPECT_EQ(state.stop_screen_already_show, 1);
  };
  show_final_screen();
  EXPECT_EQ(stop_now, (std::vector<std::int32_t>{1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(state.stop_now, 0);
  EXPECT_EQ(state.stop_screen_already_show, 1);
}

TEST_F(FinalScreenTest, StreamsLeftOpenAreClosedAfterTheHelpTextAndBeforeAnythingIsHidden) {
  const TemporaryFolder folder;
  const std::vector<std::byte> sector(sector_size, std::byte{7});
  FakeMedium medium;
  state.pFile_Disk = FakeOpener(medium).open({}).device;
  state.pFile_op.open(OutputTree(folder.path()), "a.jpg");
  state.pFile_op.append({.data = sector.data(), .count = 1, .origin = {}});
  std::vector<bool> open;
  recorder.on_entry = [&](const Recorded&) {
    open.push_back(state.pFile_Disk != nullptr);
    EXPECT_EQ(state.pFile_op.is_open(), state.pFile_Disk != nullptr);
  };
  show_final_screen();
  ASSERT_EQ(open.size(), 13U);
  EXPECT_TRUE(open[0]);
  EXPECT_FALSE(open[1]);
  EXPECT_EQ(bytes_of(folder.path() / "a.jpg"), sector);
}

// A preview shown during a stop brings the screen while the pass still waits for its drive.
TEST_F(FinalScreenTest, ARunningPassKeepsItsStreamsAndItsStopRequest) {
  FakeMedium medium;
  state.pFile_Disk = std::make_unique<FakeDevice>(medium);
  state.pass_running = true;
  show_final_screen();
  EXPECT_NE(state.pFile_Disk, nullptr);
  EXPECT_EQ(state.stop_now, 1);
  EXPECT_EQ(recorder.recorded(), whole_screen(photo_results));
}

TEST_F(FinalScreenTest, MayBeShownTwiceForOneSearch) {
  show_final_screen();
  show_final_screen();
  EXPECT_EQ(recorder.recorded(),
            joined({whole_screen(photo_results), whole_screen(photo_results)}));
  EXPECT_EQ(state.stop_now, 0);
}

TEST_F(FinalScreenTest, AnExceptionInsideIsShownWithItsReason) {
  recorder.on_entry = [](const Recorded& entry) {
    if (std::holds_alternative<SaveInfoRun>(entry)) throw std::runtime_error("no window");
  };
  show_final_screen();
  EXPECT_EQ(recorder.recorded(), joined({first_steps, {SaveInfoRun{}, MessageBox{u"no window"}}}));
}

// Answers as it is told and keeps the question.
class OneAnswer final : public AlertPanel {
 public:
  explicit OneAnswer(AlertAnswer answer) : answer_(answer) {}
  AlertAnswer run(const Alert& alert) override {
    alerts.push_back(alert);
    return answer_;
  }
  std::vector<Alert> alerts;

 private:
  AlertAnswer answer_;
};

TEST(StopButton, AsksWhetherToStop) {
  ScanState state;
  OneAnswer panel(AlertAnswer::other_button);
  stop_usb_disk(panel, state);
  EXPECT_EQ(panel.alerts, (std::vector<Alert>{{.message = u"\nDo you want to stop searching?",
                                               .default_button = u"Yes",
                                               .alternate_button = u"",
                                               .other_button = u"No",
                                               .informative_text = u""}}));
}

TEST(StopButton, YesRequestsTheStopAndNothingElse) {
  ScanState state;
  OneAnswer panel(AlertAnswer::default_button);
  stop_usb_disk(panel, state);
  EXPECT_EQ(state.stop_now, 1);
  EXPECT_EQ(state.stop_screen_already_show, 0);
}

TEST(StopButton, NoChangesNothing) {
  for (const AlertAnswer answer : {AlertAnswer::other_button, AlertAnswer::alternate_button}) {
    ScanState state;
    OneAnswer panel(answer);
    stop_usb_disk(panel, state);
    EXPECT_EQ(state.stop_now, 0);
  }
}

}  // namespace
}  // namespace norvo::test
