// The destination: choosing it, the line that warns about it, and opening the results in it.
#include "wizard/Destination.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

const std::string on_the_drive =
    "This folder lies on the drive to be searched. What is saved there can overwrite what is still "
    "to be found; please choose a folder on another drive.";
const std::string too_little_room =
    "This folder has less room than the files that were found so far; please choose a folder with "
    "more room.";

TEST(BrowsePath, ExplainsThenAsksThenFillsBothPages) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.notices.chosen_folder = "/home/me/found";
  bench.destination.Browse_Path();
  EXPECT_THAT(bench.happened(), ElementsAre("run Browse_Info", "hide_Browse_Info", "choose folder",
                                            text_set("_path", "/home/me/found"),
                                            text_set("_path_Sig", "/home/me/found"),
                                            text_set("_destination_hint", "")));
}

TEST(BrowsePath, IsTheSameOnTheOtherPage) {
  WizardHarness bench;
  bench.go_to_settings(1);
  bench.notices.chosen_folder = "/home/me/found";
  bench.facts.on_drive = true;
  bench.destination.Browse_Path();
  EXPECT_EQ(bench.view.text(Control::path), u"/home/me/found");
  EXPECT_EQ(bench.view.text(Control::path_Sig), u"/home/me/found");
  EXPECT_FALSE(bench.view.is_hidden(Control::destination_hint_Sig));
  EXPECT_TRUE(bench.view.is_hidden(Control::destination_hint));
}

TEST(BrowsePath, CancellingLeavesBothFields) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.view.type(Control::path, u"/a");
  bench.view.type(Control::path_Sig, u"/b");
  bench.destination.Browse_Path();
  EXPECT_THAT(bench.happened(),
              ElementsAre("run Browse_Info", "hide_Browse_Info", "choose folder"));
  EXPECT_EQ(bench.view.text(Control::path), u"/a");
  EXPECT_EQ(bench.view.text(Control::path_Sig), u"/b");
}

TEST(BrowsePath, AFolderWhoseNameIsNoTextIsTheOneThatWasChosen) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.notices.chosen_folder = "/out/strange\xFF";
  bench.destination.Browse_Path();
  EXPECT_EQ(bench.view.text(Control::path), u"/out/strange\uFFFD");
  EXPECT_EQ(bench.destination.folder(SettingsPage::photo), "/out/strange\xFF");
  bench.view.type(Control::path, u"/out/other");
  EXPECT_EQ(bench.destination.folder(SettingsPage::photo), "/out/other");
}

TEST(BrowsePath, GoesOnHoweverTheExplanationWasClosed) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.notices.code = 0;
  bench.notices.chosen_folder = "/out";
  bench.destination.Browse_Path();
  EXPECT_EQ(bench.view.text(Control::path), u"/out");
}

TEST(DestinationHint, WarnsOfTheDriveThatIsSearched) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.facts.on_drive = true;
  bench.notices.chosen_folder = "/media/0/found";
  bench.destination.Browse_Path();
  EXPECT_EQ(utf8_from_text(bench.view.text(Control::destination_hint)), on_the_drive);
  EXPECT_FALSE(bench.view.is_hidden(Control::destination_hint));
  EXPECT_THAT(bench.facts.asked, ElementsAre("/media/0/found on sdb1"));
}

TEST(DestinationHint, GoesAwayWithABetterFolderAndWithItsScreen) {
  WizardHarness bench;
  bench.go_to_settings(0);
  bench.notices.chosen_folder = "/out";
  bench.facts.on_drive = true;
  bench.destination.Browse_Path();
  bench.facts.on_drive = false;
  bench.destination.Browse_Path();
  EXPECT_TRUE(bench.view.is_hidden(Control::destination_hint));
  bench.facts.on_drive = true;
  bench.destination.Browse_Path();
  bench.wizard.Next_btn();
  EXPECT_EQ(bench.state.screen_counter, 2) << "it only warns";
  EXPECT_TRUE(bench.view.is_hidden(Control::destination_hint));
}

TEST(DestinationHint, WarnsAfterASearchThatFoundMoreThanTheRoomThatIsLeft) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  bench.facts.free = 1000;
  bench.facts.found = 1001;
  bench.wizard.Back_btn();
  EXPECT_EQ(utf8_from_text(bench.view.text(Control::destination_hint)), too_little_room);
  EXPECT_EQ(bench.view.visible(),
            photo_settings() + search_type_label + Names{"_destination_hint"});
}

TEST(DestinationHint, AsksForWhatWasFoundOnTheDriveOfTheSettings) {
  WizardHarness bench;
  bench.go_to_screen_3(0);
  bench.facts.free = 1000;
  bench.facts.found = 1001;
  bench.facts.found_on = "sdc1";
  bench.wizard.Back_btn();
  EXPECT_EQ(bench.view.text(Control::destination_hint), u"");
}

TEST(DestinationHint, HasItsLimitWhereTheRoomIsJustEnough) {
  EXPECT_EQ(destination_hint_text(false, 1000, 1000), u"");
  EXPECT_EQ(utf8_from_text(destination_hint_text(false, 1000, 1001)), too_little_room);
  EXPECT_EQ(utf8_from_text(destination_hint_text(false, 0, 1)), too_little_room);
  EXPECT_EQ(destination_hint_text(false, 0, 0), u"");
  EXPECT_EQ(destination_hint_text(false, std::nullopt, 1'000'000), u"");
  EXPECT_EQ(utf8_from_text(destination_hint_text(true, 0, 1)), on_the_drive);
}

class OpenFolder : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(EachSearchType, OpenFolder, testing::Values(0, 1, 2, 3));

TEST_P(OpenFolder, OpensTheResultsOfItsSearchType) {
  const TemporaryFolder folder;
  WizardHarness bench;
  bench.state.Recovery_MODE = GetParam();
  bench.view.type(GetParam() == 0 ? Control::path : Control::path_Sig,
                  text_from_utf8_lossy(folder.path().native()));
  bench.view.type(GetParam() == 0 ? Control::path_Sig : Control::path, u"/elsewhere");
  const char* const names[] = {"Photo Search", "Video Search", "File Search", "Audio File Search"};
  const fs::path results = folder.path() / "Norvo Results" / names[GetParam()];

  bench.destination.Open_Folder_btn();
  EXPECT_THAT(bench.happened(), ElementsAre(told("Destination folder does not exist!")));

  fs::create_directories(results);
  bench.destination.Open_Folder_btn();
  EXPECT_THAT(bench.happened(), ElementsAre("open " + results.string()));
}

TEST(OpenFolder, SaysWhichFolderToOpenWhereNothingOpensIt) {
  const TemporaryFolder folder;
  const std::string results = (folder.path() / "Norvo Results/Photo Search").string();
  fs::create_directories(results);
  WizardHarness bench;
  bench.view.type(Control::path, text_from_utf8_lossy(folder.path().native()));
  bench.desktop.has_programs = false;
  bench.destination.Open_Folder_btn();
  EXPECT_THAT(bench.happened(), ElementsAre("open " + results,
                                            told("No program could be started to open this. Please "
                                                 "open it yourself:\n\n" +
                                                 results)));
}

TEST(OpenFolder, AFileInItsPlaceIsNoFolder) {
  const TemporaryFolder folder;
  fs::create_directories(folder.path() / "Norvo Results");
  write_file(folder.path() / "Norvo Results/Photo Search", "no folder");
  WizardHarness bench;
  bench.view.type(Control::path, text_from_utf8_lossy(folder.path().native()));
  bench.destination.Open_Folder_btn();
  EXPECT_THAT(bench.happened(), ElementsAre(told("Destination folder does not exist!")));
}

}  // namespace
}  // namespace norvo::test
