// The ways in which a search ends before its time, and leaving the program, in the real window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QMessageBox>
#include <cstring>

#include "engine/ScanOperations.h"
#include "platform/qt/QtText.h"
#include "support/FileSizeLimit.h"
#include "window/UrlTaker.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A card so large that its search does not end by itself during a test: a JPEG's header in every
// 64th sector.
test::FakeMedium endless_card() {
  test::FakeMedium medium;
  medium.made_sectors = std::uint64_t{1} << 36;
  medium.sector = [](std::uint64_t number, std::span<std::byte> sector) {
    std::memset(sector.data(), number % 64 == 0 ? 0x11 : 0, sector.size());
  };
  return medium;
}

void start_photo_search(test::WindowFlow& flow) {
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.choose_destination();
  flow.click(Control::next_btn);
}

bool moves(test::WindowFlow& flow) {
  return flow.program().controller().state().for_index > 100000;
}

TEST(SearchEnds, AStopThatIsConfirmedEndsTheSearchWithItsFinalScreen) {
  test::FakeMedium medium = endless_card();
  test::WindowFlow flow(medium);
  start_photo_search(flow);
  ASSERT_TRUE(flow.wait_until([&] { return moves(flow); }));
  EXPECT_FALSE(flow.is_enabled(Control::next_btn));
  EXPECT_FALSE(flow.is_enabled(Control::back_btn));
  flow.dialogs.expect("alert", "No");
  flow.click(Control::stop_scan);
  EXPECT_TRUE(flow.is_visible(Control::stop_scan));
  EXPECT_TRUE(flow.program().is_searching());
  flow.dialogs.expect("alert", "Yes");
  flow.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow.click(Control::stop_scan);
  ASSERT_TRUE(flow.wait_until(
      [&] { return flow.dialogs.all_answered() && flow.is_enabled(Control::back_btn); }));
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nDo you want to stop searching?",
                                                 u"\nDo you want to stop searching?"));
  EXPECT_FALSE(flow.is_visible(Control::stop_scan));
  EXPECT_FALSE(flow.program().is_searching());
  EXPECT_EQ(flow.text(Control::help_info),
            u"\nTo select another disk for recovery, click on \u2018Back\u2019 Button.");
}

TEST(SearchEnds, EscapeInTheStopQuestionChangesNothing) {
  test::FakeMedium medium = endless_card();
  test::WindowFlow flow(medium);
  start_photo_search(flow);
  flow.dialogs.expect("alert", "Escape");
  flow.click(Control::stop_scan);
  EXPECT_TRUE(flow.program().is_searching());
  EXPECT_EQ(flow.program().controller().state().stop_now, 0);
}

// The informative text of the permission alert after a search for photos was refused.
std::string permission_text(test::WindowFlow& flow) {
  Text informative;
  flow.dialogs.on_dialog = [&](QWidget& dialog) {
    if (auto* alert = qobject_cast<QMessageBox*>(&dialog)) {
      informative = to_text(alert->informativeText());
    }
  };
  flow.dialogs.expect("Browse_Info", "Continue_Btn");
  flow.dialogs.expect_folder(flow.destination());
  flow.dialogs.expect("alert", "Open System Settings");
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.click(Control::browse_path);
  flow.click(Control::next_btn);
  EXPECT_TRUE(flow.wait_until([&] { return flow.dialogs.all_answered(); }));
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"Permission Required"));
  return utf8_from_text(informative);
}

test::FakeMedium refused_card() {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(1);
  medium.open_error = EACCES;
  return medium;
}

TEST(SearchEnds, ADriveThatMayNotBeReadSaysWhatToDoAndGoesBackToTheSettings) {
  test::FakeMedium medium = refused_card();
  test::WindowFlow flow(medium);
  EXPECT_EQ(permission_text(flow),
            "the program's file needs permission to access drive for scanning.\n\n"
            "Please go to System Settings > Privacy & Security > Full Disk Access,\n"
            "find \"the program's file\" in the list, and allow access.\n\n"
            "OR\n\n"
            "Please go to System Settings > Privacy & Security > Files and Folders,\n"
            "find \"the program's file\" in the list, and enable \"Removable Volumes\" access.\n\n"
            "Ask an administrator.");
  EXPECT_EQ(flow.screen_counter(), 1);
  EXPECT_TRUE(flow.is_visible(Control::path));
  EXPECT_FALSE(flow.is_visible(Control::imageBrowser));
  EXPECT_TRUE(flow.is_enabled(Control::next_btn));
  EXPECT_TRUE(flow.is_enabled(Control::back_btn));
  EXPECT_FALSE(flow.program().is_searching());
}

TEST(SearchEnds, AnEditionForRemovableMediaAsksForThatPermissionOnly) {
  test::FakeMedium medium = refused_card();
  test::WindowFlow flow(medium, u"Norvo Birch");
  EXPECT_EQ(permission_text(flow),
            "the program's file needs permission to access files on removable volumes (like USB "
            "drives).\n\n"
            "Please go to System Settings > Privacy & Security > Files and Folders,\n"
            "find \"the program's file\" in the list, and enable \"Removable Volumes\" access.\n\n"
            "Ask an administrator.");
}

class RecordingReset final : public PrivacyReset {
 public:
  explicit RecordingReset(std::vector<Text>& commands) : commands_(commands) {}
  void run(TextView command) override { commands_.emplace_back(command); }

 private:
  std::vector<Text>& commands_;
};

TEST(SearchEnds, PermissionsOfTheProgramAreResetAndTheirPaneOpensWhereTheSystemKeepsThem) {
  test::UrlTaker panes("x-apple.systempreferences");
  std::vector<Text> commands;
  test::FakeMedium medium = refused_card();
  test::WindowFlow flow(medium, u"Norvo Spruce", {}, std::make_unique<RecordingReset>(commands));
  permission_text(flow);
  EXPECT_THAT(commands,
              ElementsAre(u"tccutil reset SystemPolicyRemovableVolumes org.norvo.recovery.test",
                          u"tccutil reset SystemPolicyAllFiles org.norvo.recovery.test"));
  ASSERT_EQ(panes.taken.size(), 1U);
  EXPECT_EQ(panes.taken[0].toString(QUrl::FullyEncoded),
            "x-apple.systempreferences:com.apple.preference.security?");
}

TEST(SearchEnds, ADriveThatMayNotBeReadIsToldToTheSystemLog) {
  test::FakeMedium medium = refused_card();
  test::WindowFlow flow(medium);
  permission_text(flow);
  EXPECT_EQ(flow.system_log.str(),
            "Application Bundle Identifier: org.norvo.recovery.test\n"
            "It appears there's a permission issue. Guiding user to System Settings.\n");
}

TEST(SearchEnds, ADriveThatCannotBeOpenedSaysWhy) {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(1);
  medium.open_error = ENXIO;
  test::WindowFlow flow(medium);
  flow.dialogs.expect("Browse_Info", "Continue_Btn");
  flow.dialogs.expect_folder(flow.destination());
  flow.dialogs.expect("alert", "OK");
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.click(Control::browse_path);
  flow.click(Control::next_btn);
  ASSERT_TRUE(flow.wait_until([&] { return flow.dialogs.all_answered(); }));
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"Device Access Error"));
  EXPECT_EQ(flow.screen_counter(), 1);
}

TEST(SearchEnds, AFullDestinationIsToldBeforeTheFinalScreen) {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(3);
  // The last photo grows to its limit, beyond what can be written.
  medium.bytes.resize(medium.bytes.size() + 400 * sector_size, 0x77);
  test::WindowFlow flow(medium);
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.choose_destination();
  const test::FileSizeLimit limit(64 * 1024);
  flow.dialogs.expect("alert", "OK");
  flow.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow.click(Control::next_btn);
  ASSERT_TRUE(flow.wait_until(
      [&] { return flow.dialogs.all_answered() && flow.is_enabled(Control::back_btn); }));
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\n" + Text(unable_saving_Msg)));
}

TEST(SearchEnds, ADriveThatIsPulledLeavesWhatWasFoundUpToThen) {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(40);
  medium.position_past_end_fails = true;
  medium.gone_after_sector = medium.bytes.size() / sector_size / 2;
  test::WindowFlow flow(medium);
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  const std::size_t found = flow.program().controller().gallery().size();
  EXPECT_GT(found, 10U);
  EXPECT_LT(found, 30U);
}

TEST(SearchEnds, TheCloseControlAsksAndLeavesTheWindowOnNo) {
  test::FakeMedium medium = endless_card();
  test::WindowFlow flow(medium);
  start_photo_search(flow);
  flow.dialogs.expect("alert", "No");
  flow.program().window().close();
  EXPECT_THAT(flow.dialogs.alerts(),
              ElementsAre(u"\nDo you really want to exit from Norvo Recovery Software?"));
  EXPECT_TRUE(flow.program().window().isVisible());
  EXPECT_TRUE(flow.program().is_searching());
  EXPECT_EQ(flow.screen_counter(), 2);
}

TEST(SearchEnds, ExitDuringASearchEndsTheEventLoopWithoutAFinalScreen) {
  test::FakeMedium medium = endless_card();
  test::WindowFlow flow(medium);
  start_photo_search(flow);
  ASSERT_TRUE(flow.wait_until([&] { return moves(flow); }));
  flow.dialogs.expect("alert", "Yes");
  QTimer::singleShot(0, [&] { flow.click(Control::exit_btn); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_THAT(flow.dialogs.answered(), ElementsAre("Browse_Info", "folder_chooser", "alert"));
  EXPECT_TRUE(flow.program().is_searching());
}

}  // namespace
}  // namespace norvo
