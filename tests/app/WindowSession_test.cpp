// What the person does in the window, handed to the part that answers for it.
#include "app/WindowSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/SessionHarness.h"
#include "support/FileContent.h"
#include "wizard/ScreenLists.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using FolderOnDevice = std::pair<std::filesystem::path, std::filesystem::path>;

const std::string on_the_drive =
    "This folder lies on the drive to be searched. What is saved there can overwrite what is still "
    "to be found; please choose a folder on another drive.";

class WindowSessionTest : public testing::Test {
 protected:
  std::vector<std::string> clicked(Control control) {
    bench_.happened();
    bench_.session->clicked(control);
    return bench_.happened();
  }
  std::vector<std::string> changed(Control control, double value) {
    bench_.happened();
    bench_.view.move(control, value);
    bench_.session->changed(control);
    return bench_.happened();
  }
  std::vector<std::string> typed(Control control, TextView text) {
    bench_.happened();
    bench_.view.type(control, text);
    bench_.session->changed(control);
    return bench_.happened();
  }
  void add(const std::string& path) {
    bench_.controller.gallery().addImageWithPath(path, text_from_utf8_lossy(path), u"uid");
  }

  SessionHarness bench_;
};

TEST_F(WindowSessionTest, BeginsOnTheFirstScreenOfItsEdition) {
  EXPECT_EQ(bench_.view.visible(), drive_screen + Names{"_rec_mode_Audio"});
  EXPECT_EQ(bench_.view.title(), u"Norvo Recovery for Removable Media");
  EXPECT_EQ(bench_.drives.numberOfRows(), 1U);
  EXPECT_EQ(bench_.controller.tables().Ext_Array.size(), 7U) << "the signatures are loaded";
  EXPECT_FALSE(bench_.session->is_searching());
}

TEST_F(WindowSessionTest, RadiosChooseTheSearchType) {
  EXPECT_THAT(clicked(Control::rec_mode_Audio),
              ElementsAre("on _rec_mode_Audio", "off _rec_mode_Photo", "off _rec_mode_Video",
                          "off _rec_mode_RawFile"));
  const Control radios[] = {Control::rec_mode_Photo, Control::rec_mode_Video,
                            Control::rec_mode_RawFile, Control::rec_mode_Audio};
  for (std::int32_t mode = 0; mode < 4; ++mode) {
    clicked(radios[mode]);
    EXPECT_EQ(bench_.controller.wizard.Recovery_MODE, mode);
  }
}

TEST_F(WindowSessionTest, TheRefreshButtonRebuildsTheList) {
  EXPECT_THAT(clicked(Control::refresh_btn), ElementsAre("show_LoadDrive", "enumerate drives",
                                                         "reload idTableView", "hide_LoadDrive"));
}

TEST_F(WindowSessionTest, EachPageHasItsOwnRangeButtons) {
  struct Buttons {
    std::int32_t mode;
    std::string suffix;
    Control range;
    Control entire;
  };
  for (const Buttons& page :
       {Buttons{0, "", Control::sector_range_rd, Control::entire_disk_rd},
        Buttons{1, "_Sig", Control::sector_range_rd_Sig, Control::entire_disk_rd_Sig}}) {
    bench_.go_to_settings(page.mode);
    clicked(page.range);
    EXPECT_TRUE(bench_.view.visible().contains("_Start_Slider" + page.suffix));
    clicked(page.entire);
    EXPECT_FALSE(bench_.view.visible().contains("_Start_Slider" + page.suffix));
    clicked(Control::back_btn);
  }
}

TEST_F(WindowSessionTest, EachSliderWritesItsOwnText) {
  EXPECT_THAT(changed(Control::Start_Slider, 1), ElementsAre(text_set("_Start_slider_val", "1")));
  EXPECT_THAT(changed(Control::End_Slider, 2), ElementsAre(text_set("_End_slider_val", "2")));
  EXPECT_THAT(changed(Control::Start_Slider_Sig, 3),
              ElementsAre(text_set("_Start_slider_val_Sig", "3")));
  EXPECT_THAT(changed(Control::End_Slider_Sig, 4),
              ElementsAre(text_set("_End_slider_val_Sig", "4")));
  EXPECT_THAT(changed(Control::zoom_slider, 0.75), ElementsAre("value imageBrowser 0.75"));
}

TEST_F(WindowSessionTest, EachTextMovesItsOwnSlider) {
  bench_.go_to_settings(0);
  EXPECT_THAT(typed(Control::Start_slider_val, u"1"), ElementsAre("value _Start_Slider 1"));
  EXPECT_EQ(bench_.view.value(Control::Start_Slider), 1);
  typed(Control::End_slider_val, u"2");
  EXPECT_EQ(bench_.view.value(Control::End_Slider), 2);
  typed(Control::Start_slider_val_Sig, u"3");
  EXPECT_EQ(bench_.view.value(Control::Start_Slider_Sig), 3);
  typed(Control::End_slider_val_Sig, u"4");
  EXPECT_EQ(bench_.view.value(Control::End_Slider_Sig), 4);
}

// In the time of one look a person types several letters.
TEST_F(WindowSessionTest, ATypedDestinationIsLookedAtWhenTheTypingPauses) {
  bench_.lies_on_device = true;
  for (const std::int32_t mode : {0, 1}) {
    const Control path = mode == 0 ? Control::path : Control::path_Sig;
    const Control hint = mode == 0 ? Control::destination_hint : Control::destination_hint_Sig;
    bench_.go_to_settings(mode);
    bench_.main_thread.hold_delays = true;
    bench_.asked_on_device.clear();
    EXPECT_THAT(typed(path, u"/5"), IsEmpty());
    EXPECT_THAT(typed(path, u"/56"), IsEmpty());
    bench_.main_thread.let_delays_pass();
    EXPECT_EQ(utf8_from_text(bench_.view.text(hint)), on_the_drive);
    EXPECT_FALSE(bench_.view.is_hidden(hint));
    EXPECT_THAT(bench_.asked_on_device, ElementsAre(FolderOnDevice("/56", "/dev/rsdb1")));

    typed(path, u"");
    bench_.main_thread.let_delays_pass();
    EXPECT_TRUE(bench_.view.is_hidden(hint));
    clicked(Control::back_btn);
  }
}

TEST_F(WindowSessionTest, ATypedDestinationIsNotLookedAtWhenItsScreenIsLeft) {
  bench_.lies_on_device = true;
  bench_.go_to_settings(0);
  bench_.main_thread.hold_delays = true;
  typed(Control::path, u"/5");
  clicked(Control::back_btn);
  bench_.main_thread.let_delays_pass();
  EXPECT_TRUE(bench_.view.is_hidden(Control::destination_hint));
  EXPECT_THAT(bench_.asked_on_device, IsEmpty());
}

TEST_F(WindowSessionTest, ADestinationIsComparedWithTheDiskImageThatIsSearched) {
  const std::filesystem::path image = bench_.folder.path() / "card.img";
  write_file(image, std::string(1024, 'x'));
  bench_.session->disk_image_chosen(image);
  bench_.session->clicked(Control::next_btn);
  typed(Control::path, u"/out");
  bench_.main_thread.run_all();
  EXPECT_THAT(bench_.asked_on_device, ElementsAre(FolderOnDevice("/out", image)));
  EXPECT_EQ(bench_.view.text(Control::destination_hint), u"");
}

// A large file without contents is reported until the destination has less room than the files.
class FoundAndRoom : public WindowSessionTest {
 protected:
  FoundAndRoom() {
    bench_.disks.add_volume(u"sdc1", u"OTHER", u"FAT32", 4096);
    write_file(file_, "");
    std::filesystem::resize_file(file_, bytes);
    bench_.start_search(0);
    EXPECT_TRUE(bench_.finish_search());
    clicked(Control::back_btn);
  }

  void find(std::uint64_t found) {
    for (bench_.operations.begin_search(); bench_.operations.found_bytes() < found;) {
      bench_.operations.file_reported(file_, u"", u"", {});
    }
  }
  std::string hint() {
    typed(Control::path, text_from_utf8_lossy(bench_.folder.path().native()));
    bench_.main_thread.run_all();
    return utf8_from_text(bench_.view.text(Control::destination_hint));
  }

  static constexpr std::uint64_t bytes = std::uint64_t{1} << 37U;
  const std::filesystem::path file_ = bench_.folder.path() / "large.jpg";
  const std::uint64_t room_ = std::filesystem::space(bench_.folder.path()).available;
};

TEST_F(FoundAndRoom, ADestinationIsComparedWithWhatTheLastSearchHasFound) {
  find(0);
  EXPECT_EQ(hint(), "");
  find(room_ + bytes);
  EXPECT_EQ(hint(),
            "This folder has less room than the files that were found so far; please choose a "
            "folder with more room.");
}

TEST_F(FoundAndRoom, WhatWasFoundOnOneDriveSaysNothingOfAnother) {
  find(room_ + bytes);
  clicked(Control::back_btn);
  bench_.view.person_selects(Control::idTableView, 1);
  clicked(Control::next_btn);
  ASSERT_EQ(bench_.view.text(Control::disk_identifier), u"sdc1");
  EXPECT_EQ(hint(), "");
}

TEST_F(WindowSessionTest, BothBrowseButtonsFillBothFields) {
  bench_.go_to_settings(0);
  bench_.notices.chosen_folder = bench_.folder.path();
  for (const Control button : {Control::browse_path, Control::browse_path_Sig}) {
    bench_.view.type(Control::path, u"");
    bench_.view.type(Control::path_Sig, u"");
    clicked(button);
    EXPECT_EQ(bench_.view.text(Control::path), text_from_utf8_lossy(bench_.folder.path().native()));
    EXPECT_EQ(bench_.view.text(Control::path_Sig), bench_.view.text(Control::path));
  }
}

TEST_F(WindowSessionTest, TheHelpContactAndExitButtonsDoWhatTheySay) {
  write_file(bench_.folder.path() / "Help.pdf", "help");
  EXPECT_THAT(clicked(Control::help_btn),
              ElementsAre("open " + (bench_.folder.path() / "Help.pdf").string()));
  EXPECT_THAT(clicked(Control::contact_btn), ElementsAre("run Help_Support"));
  EXPECT_THAT(clicked(Control::exit_btn),
              ElementsAre("alert \"\nDo you really want to exit from Norvo Recovery "
                          "Software?\" [Yes|No]",
                          "terminate"));
  bench_.session->contact_clicked("Copy_Email");
  EXPECT_THAT(bench_.happened(),
              ElementsAre("copy birch@support.norvo.example", told("Text copied successfully.")));
}

TEST_F(WindowSessionTest, OtherControlsDoNothing) {
  for (const Control control : {Control::Thro_Mode_Chk, Control::Thro_Mode_Chk_SIG,
                                Control::help_info, Control::idTableView}) {
    EXPECT_THAT(clicked(control), IsEmpty());
  }
}

TEST_F(WindowSessionTest, TheOpenFolderButtonsSayWhenThereIsNothing) {
  for (const Control button : {Control::open_folder, Control::open_folder_Sig}) {
    EXPECT_THAT(clicked(button), ElementsAre(told("Destination folder does not exist!")));
  }
}

TEST_F(WindowSessionTest, ResultViewsCanBeWorkedWith) {
  for (const char* path : {"/out/a", "/out/b", "/out/c"}) add(path);
  bench_.session->double_clicked(Control::imageBrowser, 1);
  bench_.session->removed(Control::imageBrowser, {0});
  bench_.session->moved(Control::imageBrowser_2, {0}, 2);
  EXPECT_THAT(bench_.happened(),
              ElementsAre("open /out/b", "reload imageBrowser", "reload imageBrowser_2"));
  EXPECT_EQ(bench_.controller.gallery().item(0)->path, "/out/c");
  EXPECT_EQ(bench_.controller.gallery().item(1)->path, "/out/b");
}

TEST_F(WindowSessionTest, OnlyTheFileWindowPreviewsItsSelection) {
  add("/out/a");
  bench_.view.person_selects(Control::imageBrowser, 0);
  bench_.view.person_selects(Control::imageBrowser_2, 0);
  bench_.session->selection_changed(Control::imageBrowser);
  EXPECT_THAT(bench_.happened(), IsEmpty());
  bench_.session->selection_changed(Control::imageBrowser_2);
  EXPECT_THAT(bench_.happened(),
              ElementsAre("clear preview", text_set("_QuickLook_View_Box", "a"), "preview /out/a"));
}

TEST_F(WindowSessionTest, ThePlaceholderOfTheResourcesIsNotOpened) {
  add((bench_.folder.path() / "NoPreview.png").string());
  bench_.session->double_clicked(Control::imageBrowser, 0);
  EXPECT_THAT(bench_.happened(), IsEmpty());
}

TEST_F(WindowSessionTest, TheNoticeAfterASearchNamesTheFolderOfWhatWasSaved) {
  bench_.draw("xJaJ");
  bench_.start_search(0);
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(bench_.session->saved_notice().text, u"What was found and saved lies in this folder:");
  EXPECT_EQ(bench_.session->saved_notice().place,
            text_from_utf8_lossy(bench_.results("Photo Search").native()));
}

TEST_F(WindowSessionTest, TheNoticeAfterASearchInVainNamesTheSearch) {
  bench_.draw("xJaJ");
  bench_.start_search(0);
  ASSERT_TRUE(bench_.finish_search());
  bench_.session->clicked(Control::back_btn);
  bench_.session->clicked(Control::back_btn);
  bench_.draw("xaaa");
  bench_.start_search(1);
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(bench_.session->saved_notice().text, u"This search has saved no complete file:");
  EXPECT_EQ(bench_.session->saved_notice().place, u"Video Search, entire disk sdb1");
}

TEST_F(WindowSessionTest, TheNoticeAfterASearchThatCouldNotSaveDoesNotSayOtherwise) {
  bench_.draw("xJaJ");
  write_file(bench_.destination, "a file where a folder is wanted");
  bench_.start_search(0);
  ASSERT_TRUE(bench_.finish_search());
  EXPECT_EQ(bench_.session->saved_notice().text, u"This search has saved no complete file:");
}

TEST_F(WindowSessionTest, ADiskImageThatCannotBeReadIsToldOf) {
  bench_.session->disk_image_chosen(bench_.folder.path() / "miss\u202Eing.img");
  EXPECT_THAT(bench_.happened(),
              ElementsAre(told("“miss\uFFFDing.img” cannot be searched: it is no readable disk "
                               "image.")));
  EXPECT_EQ(bench_.drives.numberOfRows(), 1U);
}

TEST(PresentationOfAnEdition, TakesEverythingFromTheProfile) {
  const EditionProfile profile = select_edition(u"Norvo Cedar Rowan");
  const EditionPresentation edition = presentation_of(profile);
  EXPECT_EQ(edition.APP_LONG_NAME, u"Norvo Recovery for Cameras");
  EXPECT_EQ(edition.Rec_Folder_Name, u"Norvo Cedar Rowan Results");
  EXPECT_EQ(edition.signature_files, profile.signature_files);
  EXPECT_TRUE(edition.hides_search_types);
  EXPECT_EQ(edition.raw_file_choice_title, u"Recover Raw Files");
  EXPECT_EQ(edition.support_address, profile.support_address);
  EXPECT_EQ(edition.reseller_address, profile.reseller_address);
  EXPECT_EQ(edition.support_with_content, profile.support_with_content);
  EXPECT_EQ(edition.web_address, profile.web_address);
  EXPECT_EQ(edition.web_address_2, profile.web_address_2);
}

}  // namespace
}  // namespace norvo::test
