// Leaving the program, its help file, and the contact dialog.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "wizard/ExitQuestion.h"
#include "wizard/HelpAndContact.h"
#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string exit_question =
    "alert \"\nDo you really want to exit from Norvo Recovery Software?\" [Yes|No]";

TEST(ExitQuestion, YesEndsTheProgram) {
  WizardHarness bench;
  Exit_App(bench.panel, bench.desktop);
  EXPECT_THAT(bench.happened(), ElementsAre(exit_question, "terminate"));
}

TEST(ExitQuestion, AnythingElseChangesNothing) {
  WizardHarness bench;
  bench.panel.answers = {AlertAnswer::other_button, AlertAnswer::alternate_button};
  Exit_App(bench.panel, bench.desktop);
  Exit_App(bench.panel, bench.desktop);
  EXPECT_THAT(bench.happened(), ElementsAre(exit_question, exit_question));
}

const std::string open_yourself =
    "No program could be started to open this. Please open it yourself:\n\n";

class HelpTest : public testing::Test {
 protected:
  HelpAndContact help() {
    return HelpAndContact({.notices = bench_.notices,
                           .desktop = bench_.desktop,
                           .panel = bench_.panel,
                           .boxes = bench_.boxes,
                           .edition = bench_.edition,
                           .help_file = folder_.path() / "Help.pdf"});
  }

  TemporaryFolder folder_;
  WizardHarness bench_;
};

TEST_F(HelpTest, OpensTheHelpFile) {
  write_file(folder_.path() / "Help.pdf", "help");
  help().Help_btn();
  EXPECT_THAT(bench_.happened(), ElementsAre("open " + (folder_.path() / "Help.pdf").string()));
}

TEST_F(HelpTest, SaysWhereTheHelpFileIsWhenNothingOpensIt) {
  const std::string file = (folder_.path() / "Help.pdf").string();
  write_file(file, "help");
  bench_.desktop.has_programs = false;
  help().Help_btn();
  EXPECT_THAT(bench_.happened(), ElementsAre("open " + file, told(open_yourself + file)));
}

TEST_F(HelpTest, SaysThatTheHelpFileIsMissing) {
  help().Help_btn();
  EXPECT_THAT(bench_.happened(), ElementsAre("alert \"\nHelp file does not exist!\" [OK]"));
}

TEST_F(HelpTest, TheContactButtonOpensTheDialog) {
  help().Contact_Us_btn();
  EXPECT_THAT(bench_.happened(), ElementsAre("run Help_Support"));
}

TEST_F(HelpTest, CopyButtonsCopyAndSaySo) {
  const std::string copied = told("Text copied successfully.");
  HelpAndContact contact = help();
  contact.contact_clicked("Copy_Email");
  EXPECT_THAT(bench_.happened(), ElementsAre("copy help@norvo.example", copied));
  contact.contact_clicked("Copy_URL");
  EXPECT_THAT(bench_.happened(), ElementsAre("copy https://norvo.example", copied));
  contact.contact_clicked("Copy_URL_2");
  EXPECT_THAT(bench_.happened(), ElementsAre("copy https://norvo.example/spruce", copied));
}

TEST_F(HelpTest, OtherButtonsOpenTheirAddress) {
  HelpAndContact contact = help();
  for (const char* name : {"Open_Support_Mail", "Open_Reseller_Mail", "Open_Page_1", "Open_Page_2",
                           "Open_Page_3", "Open_Page_4"}) {
    contact.contact_clicked(name);
  }
  EXPECT_THAT(
      bench_.happened(),
      ElementsAre("open mailto:help@norvo.example?subject=Question",
                  "open mailto:sell@norvo.example", "open https://norvo.example",
                  "open https://norvo.example/spruce", "open https://norvo.example/spruce/help",
                  "open https://norvo.example/spruce/order"));
}

TEST_F(HelpTest, AnAddressThatNothingOpensIsToldOf) {
  bench_.desktop.has_programs = false;
  HelpAndContact contact = help();
  contact.contact_clicked("Open_Page_3");
  EXPECT_THAT(bench_.happened(),
              ElementsAre("open https://norvo.example/spruce/help",
                          told(open_yourself + "https://norvo.example/spruce/help")));
}

TEST_F(HelpTest, WithoutAMailProgramTheMailboxIsToldAlone) {
  const std::string write_yourself =
      "No mail program could be started. Please write to this address yourself:\n\n";
  bench_.desktop.has_programs = false;
  HelpAndContact contact = help();
  contact.contact_clicked("Open_Support_Mail");
  EXPECT_THAT(bench_.happened(), ElementsAre("open mailto:help@norvo.example?subject=Question",
                                             told(write_yourself + "help@norvo.example")));
  contact.contact_clicked("Open_Reseller_Mail");
  EXPECT_THAT(bench_.happened(), ElementsAre("open mailto:sell@norvo.example",
                                             told(write_yourself + "sell@norvo.example")));
}

TEST_F(HelpTest, OtherNamesDoNothing) {
  help().contact_clicked("Copy");
  help().contact_clicked("");
  EXPECT_THAT(bench_.happened(), IsEmpty());
}

}  // namespace
}  // namespace norvo::test
