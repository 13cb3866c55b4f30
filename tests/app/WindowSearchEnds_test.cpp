// Searches in the window that end early: stopped, refused by the drive or by the destination, or
// cut off with the program.
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

INSTANTIATE_TEST_SUITE_P(PhotoVideo, EitherSearch, testing::Values(0, 1));

TEST_P(EitherSearch, StopsWhenThePersonSaysSo) {
  SessionHarness bench(endless);
  bench.make_headers(endless, "");
  bench.start_search(GetParam());
  bench.panel.answers = {AlertAnswer::other_button, AlertAnswer::default_button};

  bench.session->clicked(Control::stop_scan);
  EXPECT_EQ(bench.controller.state().stop_now, 0) << "No was answered";
  const std::uint64_t seen = bench.controller.state().for_index;
  EXPECT_TRUE(
      bench.main_thread.run_until([&] { return bench.controller.state().for_index > seen; }));
  EXPECT_TRUE(bench.session->is_searching());

  bench.session->clicked(Control::stop_scan);
  ASSERT_TRUE(bench.finish_search());
  const auto steps = bench.happened();
  EXPECT_EQ(count(steps, stop_question), 2);
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 1) << "one final screen";
  EXPECT_EQ(count(steps, "search ends"), 1);
  EXPECT_EQ(bench.view.visible(), final_screen());
  EXPECT_EQ(bench.opener.paths.size(), 1U) << "no Thorough pass";
  EXPECT_EQ(bench.controller.state().stop_now, 0);
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
}

TEST_P(EitherSearch, CanBeRepeatedAfterAStop) {
  SessionHarness bench(endless);
  bench.make_headers(endless, "");
  bench.start_search(GetParam());
  bench.session->clicked(Control::stop_scan);
  ASSERT_TRUE(bench.finish_search());
  bench.session->clicked(Control::back_btn);
  bench.happened();
  bench.session->clicked(Control::next_btn);
  EXPECT_TRUE(bench.session->is_searching());
  bench.session->clicked(Control::stop_scan);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(count(bench.happened(), "run SaveFile_Info"), 1);
  EXPECT_EQ(bench.view.visible(), final_screen());
}

TEST_P(EitherSearch, ThatMayNotOpenItsDriveGuidesThePerson) {
  SessionHarness bench;
  bench.medium.open_error = EACCES;
  Names shown_during_alert;
  bool searching_during_alert = true;
  bench.panel.during_alert = [&](const Alert&) {
    shown_during_alert = bench.view.visible();
    searching_during_alert = bench.session->is_searching();
  };
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(shown_during_alert, screen_before());
  EXPECT_FALSE(searching_during_alert);
  EXPECT_EQ(bench.view.visible(), screen_before());
  EXPECT_EQ(bench.controller.wizard.screen_counter, photos() ? 1 : 2);
  EXPECT_TRUE(bench.view.is_enabled(Control::next_btn));
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
  EXPECT_EQ(bench.out.str(), "err no : 13\n");
  EXPECT_EQ(bench.system_log.str(),
            "It appears there's a permission issue. Guiding user to System Settings.\n");
  const auto steps = bench.happened();
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 0) << "no final screen";
  EXPECT_EQ(count(steps,
                  "alert \"Permission Required\" [Open System Settings] Norvo needs permission to "
                  "access files on removable volumes (like USB drives).\n\nPlease go to System "
                  "Settings > Privacy & Security > Files and Folders,\nfind \"Norvo\" in the list, "
                  "and enable \"Removable Volumes\" access.\n\n"),
            1);
}

TEST_P(EitherSearch, ThatCannotOpenItsDriveSaysWhy) {
  SessionHarness bench;
  bench.medium.open_error = ENOENT;
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), screen_before());
  EXPECT_EQ(bench.controller.wizard.screen_counter, photos() ? 1 : 2);
  EXPECT_EQ(bench.out.str(), "err no : 2\n");
  EXPECT_EQ(bench.system_log.str(), "");
  const auto steps = bench.happened();
  EXPECT_EQ(count(steps,
                  "alert \"Device Access Error\" [OK] An unexpected error occurred while trying "
                  "to access the device:\n\nNo such file or directory"),
            1);
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 0);
}

// The person may want to choose another folder before trying again.
TEST_P(EitherSearch, ThatCannotOpenItsDriveShowsTheWarningOfItsSettingsAgain) {
  SessionHarness bench;
  const Control hint = photos() ? Control::destination_hint : Control::destination_hint_Sig;
  bench.medium.open_error = ENOENT;
  bench.lies_on_device = true;
  bench.go_to_settings(GetParam());
  bench.session->changed(photos() ? Control::path : Control::path_Sig);
  bench.main_thread.run_all();
  ASSERT_FALSE(bench.view.is_hidden(hint));
  bench.session->clicked(Control::next_btn);
  EXPECT_TRUE(bench.view.is_hidden(hint));
  if (!photos()) bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  if (!photos()) bench.session->clicked(Control::back_btn);
  EXPECT_FALSE(bench.view.is_hidden(hint));
}

TEST_P(EitherSearch, CanBeTriedAgainWhenTheDriveOpensAfterAll) {
  SessionHarness bench;
  bench.medium.open_error = EPERM;
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.out.str(), "err no : 1\n");
  bench.medium.open_error = 0;
  bench.draw("JMxxxxxx");
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), final_screen());
  EXPECT_EQ(bench.controller.gallery().size(), 1U);
}

// The question of the stop button may outlast the search that it was asked about.
TEST_P(EitherSearch, IsNotStoppedByAnAnswerToAnEarlierQuestion) {
  SessionHarness bench;
  bench.medium.open_error = ENOENT;
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.finish_search());
  bench.session->clicked(Control::stop_scan);
  EXPECT_EQ(bench.controller.state().stop_now, 1);
  bench.medium.open_error = 0;
  bench.draw("JMxxxxxx");
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.controller.state().outcome, SearchOutcome::completed);
  EXPECT_EQ(bench.controller.gallery().size(), 1U);
}

TEST_P(EitherSearch, ThatIsRefusedByTheProbeIsToldOfByTheScanOnly) {
  SessionHarness bench;
  bench.probe.error = EACCES;
  bench.medium.open_error = EACCES;
  bench.start_search(GetParam());
  EXPECT_EQ(bench.out.str(), "err no : 13\n") << "the probe's";
  EXPECT_THAT(bench.happened(), IsEmpty());
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.out.str(), "err no : 13\nerr no : 13\n");
}

TEST_P(EitherSearch, ThatCannotSaveSaysSoAndShowsTheFinalScreen) {
  SessionHarness bench;
  bench.draw("JMxxxxxx");
  write_file(bench.destination, "a file where a folder is wanted");
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.finish_search());
  const auto steps = bench.happened();
  EXPECT_EQ(count(steps, unable_to_save), 1);
  EXPECT_EQ(count(steps, "run SaveFile_Info"), 1);
  EXPECT_LT(std::find(steps.begin(), steps.end(), unable_to_save),
            std::find(steps.begin(), steps.end(), "run SaveFile_Info"));
  EXPECT_EQ(bench.view.visible(), final_screen());
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
  EXPECT_EQ(bench.controller.gallery().size(), 0U);
}

// The notice that the list is cleared stands for four seconds unless the search is stopped.
TEST_P(EitherSearch, StoppedInThePauseOfTheClearingNoticeEndsAtOnce) {
  SessionHarness bench(3000);
  bench.make_headers(3000, header());
  bench.start_search(GetParam());
  ASSERT_TRUE(bench.main_thread.run_until(
      [&] { return !bench.view.is_hidden(Control::ClearThumbnail_Label); }));
  const auto begin = std::chrono::steady_clock::now();
  bench.session->clicked(Control::stop_scan);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(3500));
  EXPECT_EQ(utf8_from_text(bench.view.text(Control::ClearThumbnail_Label)),
            photos() ? "To maintain the speed of recovery, thumbnail preview window is cleared "
                       "after every 2000 thumbnails."
                     : "To maintain the speed of recovery, file window is cleared after every 2000 "
                       "files.");
  EXPECT_EQ(bench.view.visible(), final_screen() + Names{"_ClearThumbnail_Label"});
  bench.session->clicked(Control::back_btn);
  EXPECT_EQ(bench.view.visible(), screen_before());
}

TEST_P(EitherSearch, EndsWithTheProgramThatIsLeft) {
  std::atomic<std::uint64_t> read{0};
  {
    SessionHarness bench(endless);
    bench.medium.made_sectors = endless;
    bench.medium.sector = [&](std::uint64_t, std::span<std::byte>) { ++read; };
    bench.start_search(GetParam());
    while (read == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    bench.main_thread.close();
  }
  const std::uint64_t at_the_end = read;
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(read, at_the_end);
}

// The worker waits for a box that nobody will show any more.
TEST_P(EitherSearch, ThatWaitsForABoxEndsWithTheProgramToo) {
  SessionHarness bench;
  bench.draw("JMxxxxxx");
  write_file(bench.destination, "a file where a folder is wanted");
  bench.start_search(GetParam());
  while (bench.controller.state().outcome != SearchOutcome::save_failed) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  bench.main_thread.close();
  bench.session.reset();
  EXPECT_EQ(count(bench.happened(), unable_to_save), 0);
}

TEST_P(EitherSearch, EndsWithItsSession) {
  std::atomic<std::uint64_t> read{0};
  SessionHarness bench(endless);
  bench.medium.made_sectors = endless;
  bench.medium.sector = [&](std::uint64_t, std::span<std::byte>) { ++read; };
  bench.start_search(GetParam());
  while (read == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  bench.main_thread.close();
  bench.session.reset();
  const std::uint64_t at_the_end = read;
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(read, at_the_end);
}

TEST(ClearingNotice, StandsForFourSecondsAndThenTheSearchGoesOn) {
  SessionHarness bench(2010);
  bench.make_headers(2010, "\xFF\xD8\xFF");
  const auto begin = std::chrono::steady_clock::now();
  bench.start_search(0);
  ASSERT_TRUE(bench.main_thread.run_until(
      [&] { return !bench.view.is_hidden(Control::ClearThumbnail_Label); }));
  EXPECT_EQ(bench.controller.gallery().size(), 2000U);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(3900));
  EXPECT_EQ(bench.controller.gallery().size(), 10U);
  EXPECT_FALSE(bench.view.is_hidden(Control::ClearThumbnail_Label)) << "until Back";
  const auto steps = bench.happened();
  EXPECT_EQ(count(steps, "show_ClearPreview"), 1);
  EXPECT_EQ(count(steps, "hide_ClearPreview"), 1);
}

TEST(ExitQuestionDuringASearch, NoLeavesTheSearchRunningAndYesAsksTheProgramToEnd) {
  SessionHarness bench(endless);
  bench.make_headers(endless, "");
  bench.start_search(0);
  const std::string question =
      "alert \"\nDo you really want to exit from Norvo Recovery Software?\" [Yes|No]";
  bench.panel.answers = {AlertAnswer::other_button, AlertAnswer::other_button,
                         AlertAnswer::default_button};
  const Names before = bench.view.visible();
  bench.session->windowShouldClose();
  bench.session->clicked(Control::exit_btn);
  EXPECT_THAT(bench.happened(), ElementsAre(question, question));
  EXPECT_EQ(bench.view.visible(), before);
  EXPECT_TRUE(bench.session->is_searching());

  bench.session->windowShouldClose();
  EXPECT_THAT(bench.happened(), ElementsAre(question, "terminate"));
  EXPECT_EQ(bench.controller.state().stop_now, 0) << "nothing is stopped first";
  bench.main_thread.close();
}

}  // namespace
}  // namespace norvo::test
