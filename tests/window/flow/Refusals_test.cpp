// What the program refuses, after real clicks, and where the person is then.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <filesystem>

#include "support/FileContent.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class Refusals : public testing::Test {
 protected:
  Refusals() { medium_.bytes = test::card_with_photos(1); }

  void go_to_settings(test::WindowFlow& flow) {
    flow.select_drive();
    flow.click(Control::next_btn);
  }

  test::FakeMedium medium_;
};

TEST_F(Refusals, AnEndSectorThatIsNoNumberOfThisCard) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  flow.click(Control::sector_range_rd);
  for (const char* const typed : {"", "9999999999"}) {
    flow.type(Control::End_slider_val, typed);
    flow.dialogs.expect("alert", "OK");
    flow.click(Control::next_btn);
    EXPECT_EQ(flow.screen_counter(), 1);
    EXPECT_EQ(flow.program().window().focusWidget(), &flow.widget(Control::End_slider_val));
  }
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nPlease enter valid End Sector value.",
                                                 u"\nPlease enter valid End Sector value."));
}

TEST_F(Refusals, AFolderOfResultsThatIsGone) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  fs::remove_all(flow.destination());
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::open_folder);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nDestination folder does not exist!"));
}

TEST_F(Refusals, AHelpThatIsNotInstalled) {
  test::WindowFlow flow(medium_);
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::help_btn);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nHelp file does not exist!"));
}

TEST_F(Refusals, ADiskImageWithoutASector) {
  test::WindowFlow flow(medium_);
  const fs::path image = flow.folder() / "empty.img";
  test::write_file(image, "");
  flow.dialogs.expect_image(image);
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::open_image_btn);
  EXPECT_THAT(flow.dialogs.answered(), ElementsAre("image_chooser", "alert"));
  EXPECT_THAT(flow.dialogs.alerts(),
              ElementsAre(u"\n\u201Cempty.img\u201D cannot be searched: it is no readable disk "
                          u"image."));
  const auto* const drives = qobject_cast<QAbstractItemView*>(&flow.widget(Control::idTableView));
  EXPECT_EQ(drives->model()->rowCount(), 1) << "only the card";
}

}  // namespace
}  // namespace norvo
