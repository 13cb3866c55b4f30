// Whole searches in the window, from the first screen to the last and back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/EitherSearch.h"
#include "app/SessionHarness.h"
#include "support/FileContent.h"
#include "wizard/ScreenLists.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string general_label = text_set(
    "_Mode_label", "( Currently performing Search based on: Norvo General Recovery Procedure )");
const std::string thorough_label = text_set(
    "_Mode_label", "( Currently performing Search based on: Norvo Thorough Scanning Algorithm )");
const std::string scanning_help = text_set(
    "_help_info",
    "\nTo stop recovery, click on ‘Stop’ Button or please wait for the process to be completed.");
const std::string final_help = text_set("_help_info", final_sentence);
// The worker is through before the main thread does anything, so that the order is one.
void search_at_once(SessionHarness& bench, std::int32_t mode) {
  bench.start_search(mode);
  bench.controller.wait_for_worker();
  ASSERT_TRUE(bench.finish_search());
}

TEST(PhotoSearch, ShowsItsStepsInTheirOrder) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  search_at_once(bench, 0);
  EXPECT_THAT(
      bench.happened(),
      ElementsAre("reload imageBrowser", "value _zoom_slider 0.5", "value imageBrowser 0.55",
                  general_label, "range _Progress_Horz 0 to 8", "disable _Thro_Mode_Chk",
                  "disable _browse_path", scanning_help, thorough_label,
                  "range _Progress_Horz 0 to 8", scanning_help, "search ends", final_help,
                  hidden(progress_lines), "run SaveFile_Info", "close SaveFile_Info",
                  shown({"_zoom_label", "_zoom_slider", "_open_folder"}), "enable _back_btn",
                  "enable _browse_path", "enable _Thro_Mode_Chk"));
}

TEST(PhotoSearch, SavesAndListsWhatItFinds) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  search_at_once(bench, 0);
  EXPECT_EQ(bench.controller.gallery().size(), 3U);
  const auto photos = bench.results("Photo Search");
  EXPECT_TRUE(std::filesystem::exists(photos / "General Recovery Results/JPG/GND00001.JPG"));
  EXPECT_TRUE(std::filesystem::exists(photos / "General Recovery Results/JPG/GND00002.JPG"));
  EXPECT_TRUE(
      std::filesystem::exists(photos / "Omitted (recovered by Thorough Scan)/PNG/THD00001.PNG"));
  EXPECT_THAT(bench.opener.paths, ElementsAre("/dev/rsdb1", "/dev/rsdb1"));
  EXPECT_THAT(bench.probe.probed, ElementsAre("/dev/rsdb1"));
  EXPECT_EQ(bench.operations.found_bytes(), 3 * 512U + 3 * 512U + 2 * 512U);
}

TEST(PhotoSearch, EndsOnItsFinalScreen) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  bench.start_search(0);
  EXPECT_TRUE(bench.session->is_searching());
  EXPECT_EQ(bench.view.visible(), photo_scan_screen + search_type_label);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), photo_final_screen);
  EXPECT_TRUE(bench.view.is_enabled(Control::back_btn));
  EXPECT_FALSE(bench.view.is_enabled(Control::next_btn));
}

TEST(PhotoSearch, IsCompleteOnceTheTimerHasLookedAgain) {
  SessionHarness bench;
  bench.draw("JxJxJxJx");
  bench.go_to_settings(0);
  bench.session->clicked(Control::sector_range_rd);
  bench.view.type(Control::Start_slider_val, u"2");
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_TRUE(bench.main_thread.run_until([&] {
    return bench.view.text(Control::sector_label) == u"Sectors 8 of 8   ( Completed 100% )";
  }));
  EXPECT_EQ(bench.view.visible(), photo_final_screen);
}

TEST(PhotoSearch, WithoutTheThoroughBoxHasOnePass) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  bench.go_to_settings(0);
  bench.view.turn(Control::Thro_Mode_Chk, false);
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.opener.paths.size(), 1U);
  EXPECT_EQ(bench.controller.gallery().size(), 2U);
}

TEST(PhotoSearch, OfARangeSearchesNothingElse) {
  SessionHarness bench;
  bench.draw("JxJxJxJx");
  bench.go_to_settings(0);
  bench.session->clicked(Control::sector_range_rd);
  bench.view.type(Control::Start_slider_val, u"2");
  bench.view.type(Control::End_slider_val, u"5");
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.controller.gallery().size(), 2U);
}

TEST(PhotoSearch, OpensTheFolderOfItsResults) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  search_at_once(bench, 0);
  bench.happened();
  bench.session->clicked(Control::open_folder);
  EXPECT_THAT(bench.happened(), ElementsAre("open " + bench.results("Photo Search").string()));
}

TEST(PhotoSearch, CanBeRepeatedAfterBack) {
  SessionHarness bench;
  bench.draw("xJaJbcdP");
  search_at_once(bench, 0);
  bench.session->clicked(Control::back_btn);
  EXPECT_EQ(bench.controller.gallery().size(), 0U);
  EXPECT_EQ(bench.view.visible(), photo_settings() + search_type_label);
  EXPECT_TRUE(bench.view.is_enabled(Control::browse_path));
  EXPECT_TRUE(bench.view.is_enabled(Control::Thro_Mode_Chk));
  bench.happened();
  bench.session->clicked(Control::next_btn);
  EXPECT_TRUE(bench.session->is_searching());
  EXPECT_FALSE(bench.view.is_enabled(Control::back_btn));
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), photo_final_screen);
  EXPECT_EQ(bench.controller.gallery().size(), 3U);
  EXPECT_EQ(bench.operations.found_bytes(), 8 * 512U) << "those of the last search";
  const auto steps = bench.happened();
  EXPECT_EQ(std::count(steps.begin(), steps.end(), "run SaveFile_Info"), 1);
}

TEST(PhotoSearch, LeavesTheSaveNoticeOpenThatWasNotClosedByItsButton) {
  SessionHarness bench;
  bench.draw("xxxxxxxx");
  bench.notices.code = 0;
  search_at_once(bench, 0);
  const auto steps = bench.happened();
  EXPECT_EQ(std::count(steps.begin(), steps.end(), "run SaveFile_Info"), 1);
  EXPECT_EQ(std::count(steps.begin(), steps.end(), "close SaveFile_Info"), 0);
}

TEST(PhotoSearch, OfADriveWithoutSectorsEnds) {
  SessionHarness bench(0);
  bench.start_search(0);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), photo_final_screen);
}

TEST(PhotoSearch, OfADiskImageReadsTheImage) {
  SessionHarness bench;
  const auto image = bench.folder.path() / "card.img";
  write_file(image, std::string(4096, 'i'));
  bench.draw("xJaJbcdP");
  bench.session->disk_image_chosen(image);
  bench.view.person_selects(Control::idTableView, 1);
  bench.session->clicked(Control::next_btn);
  bench.view.type(Control::path, text_from_utf8_lossy(bench.destination.native()));
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_THAT(bench.opener.paths, ElementsAre(image, image));
  EXPECT_THAT(bench.probe.probed, ElementsAre(image));
}

TEST(VideoSearch, ShowsItsStepsInTheirOrder) {
  SessionHarness bench;
  bench.draw("xMaAbcKd");
  search_at_once(bench, 1);
  EXPECT_THAT(
      bench.happened(),
      ElementsAre("reload imageBrowser_2", "reload idSigTableView", general_label,
                  "range _Progress_Horz 0 to 8", "disable _Thro_Mode_Chk", "disable _browse_path",
                  text_set("_QuickLook_View_Box", "No file is selected to preview"), scanning_help,
                  thorough_label, "range _Progress_Horz 0 to 8", scanning_help, "search ends",
                  final_help, hidden(progress_lines), "run SaveFile_Info", "close SaveFile_Info",
                  "enable _back_btn", "enable _browse_path", "enable _Thro_Mode_Chk"));
  EXPECT_EQ(bench.view.visible(), file_final_screen);
}

std::string counts(const MyTableController& controller) {
  std::string text;
  for (std::size_t i = 0; i < controller.found_files().size(); ++i) {
    const FoundFilesRow row = controller.found_files().row(i);
    text += utf8_from_text(row.FileTypes) + " " + utf8_from_text(row.NoOfFile) + ", ";
  }
  return text;
}

TEST(VideoSearch, CountsTheTickedTypesOnly) {
  SessionHarness bench;
  bench.draw("xMaAbcKd");
  bench.go_to_settings(1);
  bench.session->clicked(Control::next_btn);
  EXPECT_EQ(bench.view.visible(), check_list_screen + search_type_label);
  bench.session->ticked(0, false);  // AVI
  bench.opener.hold();
  bench.session->clicked(Control::next_btn);
  EXPECT_EQ(counts(bench.controller), "MKV 0, MOV 0, ");
  bench.opener.let_go();
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(counts(bench.controller), "MKV 1, MOV 1, ");
  EXPECT_FALSE(
      std::filesystem::exists(bench.results("Video Search") / "General Recovery Results/AVI"));
  EXPECT_TRUE(
      std::filesystem::exists(bench.results("Video Search") / "General Recovery Results/MOV"));
}

TEST(VideoSearch, WithoutATypeDoesNotStart) {
  SessionHarness bench;
  bench.go_to_settings(1);
  bench.session->clicked(Control::next_btn);
  bench.view.turn(Control::select_unselect_Chk, false);
  bench.session->clicked(Control::select_unselect_Chk);
  bench.happened();
  bench.session->clicked(Control::next_btn);
  EXPECT_THAT(bench.happened(), ElementsAre("reload idSigTableView",
                                            told("Please select atleast one extension type."),
                                            "focus idCheckTableView"));
  EXPECT_FALSE(bench.session->is_searching());
  EXPECT_EQ(counts(bench.controller), "");

  bench.session->ticked(1, true);
  bench.session->clicked(Control::next_btn);
  EXPECT_EQ(counts(bench.controller), "MKV 0, ");
  ASSERT_TRUE(bench.finish_search());
}

TEST(VideoSearch, GoesBackToTheCheckListAndFromThereToTheDrives) {
  SessionHarness bench;
  bench.draw("xMaAbcKd");
  search_at_once(bench, 1);
  bench.session->clicked(Control::back_btn);
  EXPECT_EQ(bench.view.visible(), check_list_screen + search_type_label);
  bench.session->clicked(Control::back_btn);
  EXPECT_EQ(bench.view.visible(), signature_settings() + search_type_label);
  bench.session->clicked(Control::back_btn);
  EXPECT_EQ(bench.view.visible(), drive_screen + Names{"_rec_mode_Audio"});
  EXPECT_EQ(bench.controller.wizard.Recovery_MODE, 0);
  bench.start_search(0);
  ASSERT_TRUE(bench.finish_search());
  EXPECT_EQ(bench.view.visible(), photo_final_screen);
}

TEST(VideoSearch, PreviewsAFileOnceUntilTheNextSearch) {
  SessionHarness bench;
  bench.draw("xMaAbcKd");
  search_at_once(bench, 1);
  bench.happened();
  bench.view.person_selects(Control::imageBrowser_2, 0);
  bench.session->selection_changed(Control::imageBrowser_2);
  const std::string path = bench.controller.gallery().item(0)->path.string();
  const std::vector<std::string> previewed{
      "clear preview", text_set("_QuickLook_View_Box", "MOV00001.MOV"), "preview " + path};
  EXPECT_THAT(bench.happened(), ElementsAreArray(previewed));
  bench.session->selection_changed(Control::imageBrowser_2);
  EXPECT_THAT(bench.happened(), IsEmpty());
  bench.session->clicked(Control::back_btn);
  bench.session->clicked(Control::next_btn);
  ASSERT_TRUE(bench.finish_search());
  bench.happened();
  bench.session->selection_changed(Control::imageBrowser_2);
  EXPECT_THAT(bench.happened(), ElementsAreArray(previewed));
}

}  // namespace
}  // namespace norvo::test
