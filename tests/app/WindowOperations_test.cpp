// A scan's wishes done in the window: on the main thread, in their order, and none lost.
#include "app/WindowOperations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "app/SessionHarness.h"
#include "support/FileContent.h"
#include "wizard/ScreenLists.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using OperationControl = operation::Control;

class WindowOperationsTest : public testing::Test {
 protected:
  // What `work` does on a thread of its own, once the main thread has got round to it.
  std::vector<std::string> by_worker(const std::function<void()>& work) {
    bench_.log.clear();
    std::thread worker(work);
    worker.join();
    EXPECT_THAT(bench_.log.entries(), IsEmpty()) << "the main thread has done nothing yet";
    bench_.main_thread.run_all();
    const auto entries = bench_.log.entries();
    bench_.log.clear();
    return entries;
  }
  std::vector<std::string> performed(const ScanOperation& step) {
    return by_worker([&] { bench_.operations.perform(step); });
  }
  void report(const ItemReport& report) {
    bench_.operations.file_reported(bench_.folder.path() / "none", u"", u"", report);
  }

  SessionHarness bench_;
};

TEST_F(WindowOperationsTest, EachIsDoneToItsControl) {
  EXPECT_THAT(performed(operation::SetModeLabel{u"m"}), ElementsAre("text _Mode_label \"m\""));
  EXPECT_THAT(performed(operation::SetSectorLabel{u"s"}), ElementsAre("text _sector_label \"s\""));
  EXPECT_THAT(performed(operation::SetHelpText{u"h"}), ElementsAre("text _help_info \"h\""));
  EXPECT_THAT(performed(operation::SetPreviewTitle{u"p"}),
              ElementsAre("text _QuickLook_View_Box \"p\""));
  EXPECT_THAT(performed(operation::SetProgressLimits{.minimum = 0, .maximum = 9}),
              ElementsAre("range _Progress_Horz 0 to 9"));
  EXPECT_THAT(performed(operation::SetProgressValue{4}),
              ElementsAre("value _Progress_Horz 4", "text _time_left \"\""));
  EXPECT_THAT(performed(operation::SetProgressDeterminate{}),
              ElementsAre("value _Progress_Horz 4"));
  EXPECT_THAT(performed(operation::SetZoom{.slider = 0.5, .browser = 0.55}),
              ElementsAre("value _zoom_slider 0.5", "value imageBrowser 0.55"));
  EXPECT_THAT(performed(operation::ShowClearingNotice{u"n"}),
              ElementsAre("text _ClearThumbnail_Label \"n\"", "show _ClearThumbnail_Label",
                          "show_ClearPreview"));
  EXPECT_THAT(performed(operation::BeginPass{}), IsEmpty());
}

TEST_F(WindowOperationsTest, TheNoticeOfAClearingStandsUntilTheGalleryIsEmpty) {
  performed(operation::ShowClearingNotice{u"n"});
  EXPECT_THAT(by_worker([&] { bench_.operations.images_emptied(); }),
              ElementsAre("reload imageBrowser", "hide_ClearPreview"));
  EXPECT_THAT(by_worker([&] { bench_.operations.images_emptied(); }),
              ElementsAre("reload imageBrowser"))
      << "it is gone already";
}

TEST_F(WindowOperationsTest, OtherSearchesHaveNoGalleryToTellOf) {
  bench_.controller.wizard.Recovery_MODE = 1;
  EXPECT_THAT(performed(operation::ShowClearingNotice{u"n"}),
              ElementsAre("text _ClearThumbnail_Label \"n\"", "show _ClearThumbnail_Label"));
}

TEST_F(WindowOperationsTest, EachControlIsShownAndEnabledByItsName) {
  const std::pair<OperationControl, std::string> controls[] = {
      {OperationControl::Thro_Mode_Chk, "_Thro_Mode_Chk"},
      {OperationControl::browse_path, "_browse_path"},
      {OperationControl::back_btn, "_back_btn"},
      {OperationControl::open_folder, "_open_folder"},
      {OperationControl::open_folder_Sig, "_open_folder_Sig"},
      {OperationControl::Mode_label, "_Mode_label"},
      {OperationControl::sector_label, "_sector_label"},
      {OperationControl::Progress_Horz, "_Progress_Horz"},
      {OperationControl::stop_scan, "_stop_scan"},
      {OperationControl::zoom_label, "_zoom_label"},
      {OperationControl::zoom_slider, "_zoom_slider"}};
  bench_.view.set_enabled(Control::back_btn, true);
  bench_.view.set_hidden(Control::back_btn, true);
  for (const auto& [control, name] : controls) {
    EXPECT_THAT(performed(operation::Show{.control = control, .on = true}),
                ElementsAre("show " + name));
    EXPECT_THAT(performed(operation::Show{.control = control, .on = false}),
                ElementsAre("hide " + name));
    EXPECT_THAT(performed(operation::Enable{.control = control, .on = false}),
                ElementsAre("disable " + name));
    EXPECT_THAT(performed(operation::Enable{.control = control, .on = true}),
                ElementsAre("enable " + name));
  }
}

TEST_F(WindowOperationsTest, AScreensFlagHidesIt) {
  using operation::ShowHideScreen;
  const std::pair<operation::Screen, Names> screens[] = {
      {operation::Screen::screen_2,
       settings_controls("") + drive_lines("") + entire_disk_lines("") + thorough_lines},
      {operation::Screen::screen_3_Photo, photo_scan_screen},
      {operation::Screen::screen_3_RawFile, check_list_screen},
      {operation::Screen::screen_4_RawFile, file_scan_screen}};
  const Names before = bench_.view.visible();
  for (const auto& [screen, controls] : screens) {
    performed(ShowHideScreen{.screen = screen, .hide = false});
    EXPECT_EQ(bench_.view.visible(), before + controls);
    performed(ShowHideScreen{.screen = screen, .hide = true});
    EXPECT_EQ(bench_.view.visible(), before);
  }
}

TEST_F(WindowOperationsTest, TheWizardsPlaceIsChangedOnTheMainThread) {
  bench_.controller.wizard.screen_counter = 3;
  bench_.controller.wizard.Prev_Index = 7;
  for (const Control control : {Control::browse_path, Control::Thro_Mode_Chk}) {
    bench_.view.set_enabled(control, false);
  }
  EXPECT_THAT(performed(operation::DecreaseScreenCounter{}),
              ElementsAre("enable _browse_path", "enable _Thro_Mode_Chk"))
      << "no final screen would do it";
  performed(operation::ForgetPreviousSelection{});
  EXPECT_EQ(bench_.controller.wizard.screen_counter, 2);
  EXPECT_EQ(bench_.controller.wizard.Prev_Index, 9223372036854775807U);
}

TEST_F(WindowOperationsTest, LinesGoToTheirStreams) {
  performed(operation::PrintOpenError{5});
  performed(operation::SystemLog{u"a line"});
  EXPECT_EQ(bench_.out.str(), "err no : 5\n");
  EXPECT_EQ(bench_.system_log.str(), "a line\n");
}

TEST_F(WindowOperationsTest, KeepTheirOrder) {
  std::vector<std::string> expected;
  const auto entries = by_worker([&] {
    for (std::uint64_t i = 0; i < 1000; ++i) {
      bench_.operations.perform(operation::SetHelpText{decimal(i)});
      expected.push_back(text_set("_help_info", std::to_string(i)));
    }
  });
  EXPECT_EQ(entries, expected);
}

TEST_F(WindowOperationsTest, OfTheMainThreadAreDoneAtOnce) {
  bench_.operations.perform(operation::SetHelpText{u"now"});
  EXPECT_THAT(bench_.log.entries(), ElementsAre("text _help_info \"now\""));
}

TEST_F(WindowOperationsTest, TheTimeLeftIsHiddenWhileItIsUnknown) {
  performed(operation::SetProgressLimits{.minimum = 0, .maximum = 1e9});
  for (double value = 0; value < 100; ++value) performed(operation::SetProgressValue{value});
  EXPECT_TRUE(bench_.view.is_hidden(Control::time_left));
  EXPECT_EQ(bench_.view.text(Control::time_left), u"");
}

TEST_F(WindowOperationsTest, TheTimeLeftIsShownWhenItIsKnownAndUntilTheSearchEnds) {
  const auto progress = [&](double value) {
    performed(operation::SetProgressValue{value});
    bench_.ahead += std::chrono::seconds(5);
  };
  performed(operation::SetProgressLimits{.minimum = 0, .maximum = 1e9});
  for (const double value : {0.0, 5.0, 10.0, 15.0}) progress(value);
  EXPECT_FALSE(bench_.view.is_hidden(Control::time_left));
  EXPECT_NE(bench_.view.text(Control::time_left), u"");
  bench_.controller.state().stop_screen_already_show = 1;
  progress(20);
  EXPECT_TRUE(bench_.view.is_hidden(Control::time_left));

  bench_.controller.state().stop_screen_already_show = 0;
  performed(operation::SetProgressLimits{.minimum = 0, .maximum = 1e9});
  progress(0);
  EXPECT_TRUE(bench_.view.is_hidden(Control::time_left)) << "nothing is known of another pass";
}

TEST_F(WindowOperationsTest, ASecondPostOfTheFinalScreenIsDropped) {
  bench_.operations.begin_search();
  const auto entries = by_worker([&] {
    bench_.operations.post_Final_or_Stop_Screen();
    bench_.operations.post_Final_or_Stop_Screen();
  });
  EXPECT_EQ(std::count(entries.begin(), entries.end(), "run SaveFile_Info"), 1);

  bench_.operations.begin_search();
  const auto next = by_worker([&] { bench_.operations.post_Final_or_Stop_Screen(); });
  EXPECT_EQ(std::count(next.begin(), next.end(), "run SaveFile_Info"), 1) << "another search";
}

TEST_F(WindowOperationsTest, TheFinalScreenTakesTheTimeLeftAway) {
  bench_.operations.begin_search();
  bench_.view.set_hidden(Control::time_left, false);
  by_worker([&] { bench_.operations.post_Final_or_Stop_Screen(); });
  EXPECT_TRUE(bench_.view.is_hidden(Control::time_left));
}

TEST_F(WindowOperationsTest, ABurstOfReportsIsOneRedraw) {
  EXPECT_THAT(by_worker([&] {
                for (int i = 0; i < 1000; ++i) report({.item_added = true});
              }),
              ElementsAre("reload imageBrowser"));
}

TEST_F(WindowOperationsTest, OneReportOfABurstThatScrollsIsEnoughOnce) {
  EXPECT_THAT(by_worker([&] {
                report({.item_added = true});
                report({.item_added = true, .scroll_to_last = true});
                report({.item_added = true});
              }),
              ElementsAre("reload imageBrowser to the last"));
  EXPECT_THAT(by_worker([&] { report({.item_added = true}); }), ElementsAre("reload imageBrowser"));
}

TEST_F(WindowOperationsTest, AReportThatAddedNothingRedrawsNothing) {
  EXPECT_THAT(by_worker([&] { report({}); }), IsEmpty());
}

TEST_F(WindowOperationsTest, OtherSearchesRedrawTheFileWindowAndItsTable) {
  bench_.controller.wizard.Recovery_MODE = 1;
  EXPECT_THAT(by_worker([&] { report({.item_added = true, .scroll_to_last = true}); }),
              ElementsAre("reload imageBrowser_2 to the last", "reload idSigTableView"));
  EXPECT_THAT(by_worker([&] { bench_.operations.images_emptied(); }),
              ElementsAre("reload imageBrowser_2", "reload idSigTableView"));
}

TEST_F(WindowOperationsTest, AReportInTheMiddleOfARedrawLeadsToAnother) {
  int redraws = 0;
  bench_.view.on_reload = [&](Control) {
    if (++redraws > 1) return;
    std::thread worker([&] { report({.item_added = true, .scroll_to_last = true}); });
    worker.join();
  };
  EXPECT_THAT(by_worker([&] { report({.item_added = true}); }),
              ElementsAre("reload imageBrowser", "reload imageBrowser to the last"));
}

TEST_F(WindowOperationsTest, TheLastReportIsAlwaysSeen) {
  std::atomic<int> reported{0};
  int seen = 0;
  bench_.view.on_reload = [&](Control) { seen = reported; };
  for (int round = 0; round < 50; ++round) {
    std::atomic<bool> done{false};
    std::thread worker([&] {
      for (int i = 0; i < 200; ++i) {
        ++reported;
        report({.item_added = true});
      }
      done = true;
    });
    EXPECT_TRUE(bench_.main_thread.run_until([&] { return done.load(); }));
    worker.join();
    bench_.main_thread.run_all();
    EXPECT_EQ(seen, reported);
  }
}

TEST_F(WindowOperationsTest, FoundBytesAreThoseOfTheReportedFiles) {
  const auto file = bench_.folder.path() / "found";
  write_file(file, std::string(700, 'f'));
  bench_.operations.file_reported(file, u"", u"", {.item_added = true});
  bench_.operations.file_reported(file, u"", u"", {});
  report({.item_added = true});  // gone already
  EXPECT_EQ(bench_.operations.found_bytes(), 1400U);
  bench_.operations.begin_search();
  EXPECT_EQ(bench_.operations.found_bytes(), 0U);
}

TEST_F(WindowOperationsTest, APauseLastsUnlessTheSearchIsStopped) {
  using Clock = std::chrono::steady_clock;
  auto begin = Clock::now();
  bench_.operations.pause(std::chrono::milliseconds(120));
  EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(120));
  bench_.controller.state().stop_now = 1;
  begin = Clock::now();
  bench_.operations.pause(std::chrono::minutes(1));
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(30));
}

TEST_F(WindowOperationsTest, AnAlertIsLostWhenTheMainThreadTakesNoMoreWork) {
  bench_.main_thread.close();
  EXPECT_THAT(by_worker([&] {
                bench_.operations.showPermissionAlertAndGuideUser(EACCES);
                bench_.operations.showGenericErrorAlert(ENOENT);
                bench_.operations.Show_MessageBox(u"lost");
              }),
              IsEmpty());
}

}  // namespace
}  // namespace norvo::test
