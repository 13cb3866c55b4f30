// A drive that does not answer, in the real window: the person goes on meanwhile, and nothing waits
// for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <atomic>
#include <cstring>
#include <thread>

#include "support/FileContent.h"
#include "window/flow/SampleMovie.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

// A search for videos that waits for its drive's first sector. The drive has one AVI file.
class StalledDrive : public testing::Test {
 protected:
  StalledDrive() : flow_(stalled(medium_)) {
    flow_.select_drive();
    flow_.click(Control::rec_mode_Video);
    flow_.click(Control::next_btn);
    flow_.choose_destination(Control::browse_path_Sig);
    flow_.click(Control::next_btn);
    flow_.click(Control::next_btn);
    asked_ = flow_.wait_until([this] { return reads_ > 0; });
  }
  ~StalledDrive() override { answer(); }

  test::FakeMedium& stalled(test::FakeMedium& medium) {
    medium.made_sectors = 4096;
    medium.sector = [this](std::uint64_t number, std::span<std::byte> sector) {
      ++reads_;
      answers_.wait(false);
      if (number == 7) std::memcpy(sector.data(), "RIFF....AVI LIST", 16);
    };
    return medium;
  }

  void answer() {
    answers_ = true;
    answers_.notify_all();
  }

  // A file that nobody can show, so that the preview is the icon of its type.
  fs::path strange_file() const {
    const fs::path file = flow_.folder() / "strange.xyz";
    test::write_file(file, "nothing that anybody could show");
    return file;
  }

  // The person stops the search and selects a file, which brings the final screen after a while.
  bool stop_and_preview(const fs::path& file) {
    flow_.program().controller().gallery().addImageWithPath_2(file, u"strange.xyz", u"strange.xyz");
    flow_.program().window().reload(Control::imageBrowser_2);
    auto* const view = qobject_cast<QAbstractItemView*>(&flow_.widget(Control::imageBrowser_2));
    if (!flow_.wait_until([&] { return view->model()->rowCount() == 1; })) return false;
    flow_.dialogs.expect("alert", "Yes");
    flow_.click(Control::stop_scan);
    flow_.dialogs.expect("SaveFile_Info", "OK_Btn");
    since_selection_.start();
    flow_.select_row(Control::imageBrowser_2, 0);
    return flow_.wait_until(
        [this] { return flow_.dialogs.all_answered() && flow_.is_enabled(Control::back_btn); });
  }

  ScanState& state() { return flow_.program().controller().state(); }

  std::atomic<int> reads_{0};
  std::atomic<bool> answers_{false};
  test::FakeMedium medium_;
  test::WindowFlow flow_;
  QElapsedTimer since_selection_;
  bool asked_ = false;
};

TEST_F(StalledDrive, AStopLeadsToTheFinalScreenASecondAfterThePreview) {
  ASSERT_TRUE(asked_);
  ASSERT_TRUE(stop_and_preview(strange_file()));
  EXPECT_GE(since_selection_.elapsed(), 1000);
  EXPECT_TRUE(state().pass_running) << "the search has not seen the stop";
  EXPECT_EQ(state().stop_now, 1);
}

TEST_F(StalledDrive, AMovieAsAPreviewLeadsThereToo) {
  ASSERT_TRUE(asked_);
  ASSERT_TRUE(stop_and_preview(test::make_movie(flow_.folder() / "strange.xyz")));
  EXPECT_GE(since_selection_.elapsed(), 1000);
}

TEST_F(StalledDrive, TheNextSearchBeginsWhenTheFirstHasEnded) {
  ASSERT_TRUE(asked_);
  ASSERT_TRUE(stop_and_preview(strange_file()));
  flow_.click(Control::back_btn);
  flow_.click(Control::next_btn);
  EXPECT_TRUE(flow_.program().is_searching());
  EXPECT_TRUE(flow_.is_visible(Control::stop_scan));
  EXPECT_THAT(utf8_from_text(flow_.text(Control::help_info)),
              testing::HasSubstr("The previous search still waits"));
  EXPECT_TRUE(state().pass_running);
  flow_.dialogs.expect("SaveFile_Info", "OK_Btn");
  answer();
  ASSERT_TRUE(flow_.wait_until(
      [this] { return flow_.dialogs.all_answered() && flow_.is_enabled(Control::back_btn); }));
  EXPECT_EQ(state().outcome, SearchOutcome::completed);
  EXPECT_EQ(medium_.opened, 5U)
      << "tried before each search, then for one pass of the first and two of the second";
  EXPECT_EQ(flow_.program().controller().found_files().NoOfFile(u"AVI"), 1U);
}

TEST_F(StalledDrive, LeavingAfterTheFinalScreenDoesNotWaitForTheDrive) {
  ASSERT_TRUE(asked_);
  ASSERT_TRUE(stop_and_preview(strange_file()));
  flow_.dialogs.expect("alert", "Yes");
  QTimer::singleShot(0, [this] { flow_.click(Control::exit_btn); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_FALSE(flow_.program().is_searching());
  EXPECT_TRUE(flow_.program().has_worker()) << "so that the process is left without waiting";
}

}  // namespace
}  // namespace norvo
