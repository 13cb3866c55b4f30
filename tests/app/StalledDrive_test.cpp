// Searches whose drive does not answer, while the person goes on: the main thread never waits for
// them, and they do nothing to what comes after them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "app/EitherSearch.h"
#include "app/SessionHarness.h"
#include "support/FileContent.h"
#include "wizard/ScreenLists.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string waiting_help =
    "\nThe previous search still waits for an answer of its drive. This search begins by itself as "
    "soon as that drive has answered or is unplugged.";

// A drive with a file in its second sector that stalls at its third.
class StalledDrive : public EitherSearch {
 protected:
  StalledDrive() : bench_(8) {
    bench_.medium.made_sectors = 8;
    bench_.medium.largest_read = sector_size;
    bench_.medium.sector = [this](std::uint64_t number, std::span<std::byte> sector) {
      if (number == 2) {
        asked_ = true;
        answers_.wait(false);
      }
      const std::string content = sector_of(number == 1 ? header() : std::string(), 'x');
      std::transform(content.begin(), content.end(), sector.begin(),
                     [](char letter) { return static_cast<std::byte>(letter); });
    };
  }
  ~StalledDrive() override {
    answer();
    bench_.opener.let_go();
    // A failed test may have left a worker that waits for this thread.
    bench_.main_thread.close();
  }

  std::string help() const { return utf8_from_text(bench_.view.text(Control::help_info)); }
  ScanState& state() { return bench_.controller.state(); }

  static void await(const std::function<bool()>& done) {
    while (!done()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  void answer() {
    answers_ = true;
    answers_.notify_all();
  }

  // A search that waits for its drive's answer to a read, or to being opened.
  void start_and_stall() {
    bench_.start_search(GetParam());
    await([&] { return asked_.load(); });
    bench_.main_thread.run_all();
  }
  void start_and_stall_opening() {
    bench_.opener.hold();
    bench_.start_search(GetParam());
    await([&] { return bench_.opener.asked.exchange(false); });
  }

  // The person stops it and selects a file, which brings the final screen.
  void stop_and_preview() {
    bench_.session->clicked(Control::stop_scan);
    bench_.session->preview_shown();
    bench_.main_thread.run_all();
    ASSERT_FALSE(bench_.session->is_searching());
    ASSERT_TRUE(bench_.view.is_enabled(Control::back_btn));
    ASSERT_TRUE(state().pass_running);
  }
  void go_back_and_search_again() {
    bench_.session->clicked(Control::back_btn);
    bench_.session->clicked(Control::next_btn);
  }
  bool let_the_worker_end() {
    answer();
    bench_.opener.let_go();
    return bench_.main_thread.run_until([this] { return !bench_.session->has_worker(); });
  }

  SessionHarness bench_;
  std::atomic<bool> asked_{false};
  std::atomic<bool> answers_{false};
};

INSTANTIATE_TEST_SUITE_P(PhotoVideo, StalledDrive, testing::Values(0, 1));

TEST_P(StalledDrive, IsNotReadOnWhenThePersonHasGoneBack) {
  start_and_stall();
  stop_and_preview();
  bench_.session->clicked(Control::back_btn);
  EXPECT_EQ(state().stop_now, 1) << "the pass has yet to see it";
  EXPECT_EQ(bench_.view.visible(), screen_before());
  ASSERT_TRUE(let_the_worker_end());
  EXPECT_EQ(state().outcome, SearchOutcome::stopped);
  EXPECT_LT(state().for_index, 4U);
  EXPECT_EQ(bench_.opener.paths.size(), 1U) << "no Thorough pass";
  EXPECT_EQ(state().stop_now, 0);
  EXPECT_EQ(bench_.view.visible(), screen_before());
}

TEST_P(StalledDrive, LetsTheNextSearchWaitUntilItHasAnswered) {
  start_and_stall();
  stop_and_preview();
  bench_.happened();
  go_back_and_search_again();
  EXPECT_TRUE(bench_.session->is_searching());
  EXPECT_EQ(bench_.view.visible(), scan_screen());
  EXPECT_EQ(help(), waiting_help);
  EXPECT_EQ(bench_.view.text(Control::Mode_label), u"");
  EXPECT_EQ(bench_.view.text(Control::sector_label), u"");
  EXPECT_EQ(bench_.opener.paths.size(), 1U);
  EXPECT_EQ(count(bench_.log.entries(), "value _Progress_Horz indeterminate"), 1);
  EXPECT_EQ(count(bench_.happened(), "search begins"), 1);

  answer();
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(state().outcome, SearchOutcome::completed);
  EXPECT_EQ(help(), final_sentence);
  EXPECT_EQ(bench_.opener.paths.size(), 3U) << "one pass of the first, two of the second";
  EXPECT_EQ(bench_.controller.gallery().size(), 1U);
  EXPECT_EQ(count(bench_.happened(), "run SaveFile_Info"), 1) << "that of the second";
  if (photos()) return;
  EXPECT_EQ(bench_.controller.found_files().NoOfFile(u"MOV"), 1U)
      << "the last file of the first search is none of the second";
}

TEST_P(StalledDrive, LetsTheWaitingSearchBeWithdrawn) {
  start_and_stall();
  stop_and_preview();
  go_back_and_search_again();
  bench_.happened();
  bench_.panel.answers = {AlertAnswer::other_button, AlertAnswer::default_button};
  bench_.session->clicked(Control::stop_scan);
  EXPECT_EQ(bench_.view.visible(), scan_screen()) << "No was answered";
  EXPECT_TRUE(bench_.session->is_searching());

  bench_.session->clicked(Control::stop_scan);
  EXPECT_EQ(bench_.view.visible(), screen_before());
  EXPECT_TRUE(bench_.view.is_enabled(Control::next_btn));
  EXPECT_TRUE(bench_.view.is_enabled(Control::back_btn));
  EXPECT_FALSE(bench_.session->is_searching());
  const auto steps = bench_.happened();
  EXPECT_EQ(count(steps, stop_question), 2);
  EXPECT_EQ(count(steps, "search ends"), 1);
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 0) << "nothing was searched";
  ASSERT_TRUE(let_the_worker_end());
  EXPECT_EQ(bench_.opener.paths.size(), 1U);
  EXPECT_EQ(bench_.view.visible(), screen_before());
}

TEST_P(StalledDrive, CanAnswerWhileThePersonIsAskedWhetherToStop) {
  start_and_stall();
  stop_and_preview();
  go_back_and_search_again();
  bench_.panel.during_alert = [&](const Alert&) {
    answer();
    ASSERT_TRUE(bench_.main_thread.run_until([this] { return help() != waiting_help; }));
  };
  bench_.session->clicked(Control::stop_scan);
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(count(bench_.happened(), "run SaveFile_Info"), 2) << "one for each search";
}

TEST_P(StalledDrive, ThatAnswersAfterItsFinalScreenChangesNoScreen) {
  start_and_stall_opening();
  stop_and_preview();
  const Names visible = bench_.view.visible();
  bench_.happened();
  ASSERT_TRUE(let_the_worker_end());
  EXPECT_EQ(bench_.view.visible(), visible);
  EXPECT_EQ(help(), final_sentence);
  EXPECT_TRUE(bench_.view.is_enabled(Control::browse_path)) << "a pass disables it";
  EXPECT_THAT(bench_.happened(), IsEmpty());
}

TEST_P(StalledDrive, ThatCannotBeOpenedAfterItsFinalScreenChangesNoScreen) {
  for (const int error : {ENOENT, EACCES}) {
    bench_.medium.open_error = error;
    start_and_stall_opening();
    stop_and_preview();
    bench_.session->clicked(Control::back_btn);
    bench_.happened();
    ASSERT_TRUE(let_the_worker_end());
    EXPECT_EQ(bench_.controller.wizard.screen_counter, photos() ? 1 : 2);
    EXPECT_EQ(bench_.view.visible(), screen_before());
    EXPECT_THAT(bench_.happened(), IsEmpty());
    for (int i = photos() ? 1 : 2; i > 0; --i) bench_.session->clicked(Control::back_btn);
  }
}

// The settings are shown again before the alert that says why.
TEST_P(StalledDrive, ThatCannotBeOpenedLetsTheNextSearchBeginBeforeItsAlert) {
  bench_.medium.open_error = ENOENT;
  bench_.start_search(GetParam());
  EXPECT_FALSE(bench_.view.is_enabled(Control::next_btn));
  ASSERT_TRUE(
      bench_.main_thread.run_until([&] { return bench_.view.is_enabled(Control::next_btn); }));
  bench_.medium.open_error = 0;
  answer();
  bench_.happened();
  bench_.session->clicked(Control::next_btn);
  EXPECT_EQ(help(), waiting_help);
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(state().outcome, SearchOutcome::completed);
  EXPECT_EQ(bench_.controller.wizard.screen_counter, photos() ? 2 : 3);
  const auto steps = bench_.happened();
  EXPECT_EQ(count(steps, "search ends"), 1) << "that of the second";
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 1);
}

// The worker of the first search waits for its box while the second one waits for the worker.
TEST_P(StalledDrive, WhoseSearchCannotSaveStillSaysSo) {
  start_and_stall_opening();
  write_file(bench_.destination, "a file where a folder is wanted");
  stop_and_preview();
  go_back_and_search_again();
  bench_.happened();
  answer();
  bench_.opener.let_go();
  ASSERT_TRUE(bench_.finish_search());
  const auto steps = bench_.happened();
  EXPECT_EQ(count(steps, unable_to_save), 2) << "one for each search";
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 1);
}

TEST_P(StalledDrive, LeadsToTheFinalScreenASecondAfterAPreviewThatIsShownAfterAStop) {
  start_and_stall();
  bench_.session->preview_shown();
  EXPECT_THAT(bench_.main_thread.delays, IsEmpty()) << "nobody has asked for a stop";
  bench_.session->clicked(Control::stop_scan);
  bench_.happened();
  bench_.session->preview_shown();
  EXPECT_THAT(bench_.main_thread.delays, ElementsAre(std::chrono::milliseconds(1000)));
  EXPECT_THAT(bench_.happened(), IsEmpty()) << "the preview is looked at";
  bench_.main_thread.run_all();
  EXPECT_EQ(count(bench_.happened(), "run SaveFile_Info"), 1);
}

TEST_P(StalledDrive, HasNoFinalScreenForAPreviewThatIsShownUnderADialog) {
  start_and_stall();
  bench_.session->clicked(Control::stop_scan);
  bench_.modal_session = true;
  bench_.session->preview_shown();
  EXPECT_THAT(bench_.main_thread.delays, IsEmpty());
}

TEST_P(StalledDrive, HasNoFinalScreenForAPreviewThatIsShownWhenNoSearchRuns) {
  state().stop_now = 1;
  bench_.session->preview_shown();
  EXPECT_THAT(bench_.main_thread.delays, IsEmpty());
  start_and_stall();
  stop_and_preview();
  go_back_and_search_again();
  bench_.main_thread.delays.clear();
  bench_.session->preview_shown();
  EXPECT_THAT(bench_.main_thread.delays, IsEmpty()) << "it waits to begin";
}

// The first search ends and the second begins within the second that the preview is looked at.
TEST_P(StalledDrive, DoesNotEndTheSearchAfterItsOwn) {
  start_and_stall();
  bench_.main_thread.hold_delays = true;
  bench_.session->clicked(Control::stop_scan);
  bench_.session->preview_shown();
  ASSERT_EQ(bench_.main_thread.delays.size(), 1U);
  ASSERT_TRUE(let_the_worker_end());
  ASSERT_FALSE(bench_.session->is_searching());
  answers_ = false;
  asked_ = false;
  go_back_and_search_again();
  await([&] { return asked_.load(); });
  EXPECT_EQ(state().stop_now, 0);
  bench_.session->clicked(Control::stop_scan);
  bench_.happened();
  bench_.main_thread.let_delays_pass();
  EXPECT_TRUE(bench_.session->is_searching());
  EXPECT_EQ(count(bench_.happened(), "run SaveFile_Info"), 0);
}

// The pass has seen the stop itself, and the person is on the way to another search.
TEST_P(StalledDrive, IsNotStoppedAgainWhenItsRequestIsGone) {
  start_and_stall();
  bench_.main_thread.hold_delays = true;
  bench_.session->clicked(Control::stop_scan);
  bench_.session->preview_shown();
  state().stop_now = 0;
  bench_.happened();
  bench_.main_thread.let_delays_pass();
  EXPECT_EQ(count(bench_.happened(), "run SaveFile_Info"), 0);
  EXPECT_TRUE(bench_.session->is_searching());
}

TEST_P(StalledDrive, HasAWorkerUntilThatHasEnded) {
  EXPECT_FALSE(bench_.session->has_worker());
  start_and_stall();
  EXPECT_TRUE(bench_.session->has_worker());
  stop_and_preview();
  EXPECT_TRUE(bench_.session->has_worker());
  ASSERT_TRUE(let_the_worker_end());
  EXPECT_FALSE(bench_.session->has_worker());
}

}  // namespace
}  // namespace norvo::test
