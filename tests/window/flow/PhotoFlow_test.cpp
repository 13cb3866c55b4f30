// A photo search from the first screen to its end and back, in the real window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QBuffer>
#include <QHelpEvent>
#include <QToolTip>

#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class PhotoFlow : public testing::Test {
 protected:
  PhotoFlow() { medium_.bytes = test::card_with_photos(9); }

  void go_to_settings(test::WindowFlow& flow) {
    flow.select_drive();
    flow.click(Control::next_btn);
  }

  static int shown_items(test::WindowFlow& flow) {
    return qobject_cast<QAbstractItemView*>(&flow.widget(Control::imageBrowser))
        ->model()
        ->rowCount();
  }

  test::FakeMedium medium_;
};

TEST_F(PhotoFlow, TheFirstScreenShowsTheDriveAndItsSizeAsItIsWritten) {
  test::WindowFlow flow(medium_);
  auto* const table = qobject_cast<QAbstractItemView*>(&flow.widget(Control::idTableView));
  ASSERT_EQ(table->model()->rowCount(), 1);
  EXPECT_EQ(table->model()->index(0, 0).data().toString(), "sdx1");
  EXPECT_EQ(table->model()->index(0, 1).data().toString(), "HOLIDAYS");
  EXPECT_EQ(flow.program().window().windowTitle(), "Norvo Recovery for All Media");
  EXPECT_FALSE(flow.is_enabled(Control::back_btn));
  EXPECT_TRUE(flow.is_visible(Control::rec_mode_Video));
  EXPECT_FALSE(flow.is_visible(Control::rec_mode_Audio));
}

TEST_F(PhotoFlow, NextWithoutADriveSaysSo) {
  test::WindowFlow flow(medium_);
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::next_btn);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nPlease select a storage media from list."));
  EXPECT_EQ(flow.screen_counter(), 0);
}

TEST_F(PhotoFlow, ATypedFolderOnTheSearchedDriveIsWarnedOf) {
  test::WindowFlow flow(medium_);
  flow.lies_on_device = true;
  go_to_settings(flow);
  flow.type(Control::path, "/media/card/found");
  ASSERT_TRUE(flow.wait_until([&] { return flow.is_visible(Control::destination_hint); }));
  EXPECT_EQ(flow.text(Control::destination_hint).substr(0, 32),
            u"This folder lies on the drive to");
  flow.lies_on_device = false;
  flow.type(Control::path, QString::fromStdString(flow.destination()));
  EXPECT_TRUE(flow.wait_until([&] { return !flow.is_visible(Control::destination_hint); }));
}

TEST_F(PhotoFlow, NextWithoutADestinationSaysSoAndPointsAtTheButton) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::next_btn);
  EXPECT_THAT(flow.dialogs.alerts(), ElementsAre(u"\nPlease select valid destination path."));
  EXPECT_EQ(flow.screen_counter(), 1);
  EXPECT_EQ(flow.program().window().focusWidget(), &flow.widget(Control::browse_path));
}

TEST_F(PhotoFlow, ASearchOfTheWholeCardFindsItsPhotosAndShowsThem) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  EXPECT_EQ(flow.program().window().windowTitle(), "Norvo Recovery for All Media - Photo Search");
  flow.choose_destination();
  EXPECT_EQ(flow.text(Control::path), text_from_utf8_lossy(flow.destination().native()));
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(flow.wait_until([&] { return shown_items(flow) == 9; }));
  EXPECT_TRUE(flow.is_visible(Control::imageBrowser));
  EXPECT_TRUE(flow.is_visible(Control::open_folder));
  EXPECT_TRUE(flow.is_visible(Control::zoom_slider));
  EXPECT_FALSE(flow.is_visible(Control::stop_scan));
  EXPECT_FALSE(flow.is_visible(Control::Progress_Horz));
  const fs::path folder = flow.destination() / "Norvo Spruce Results" / "Photo Search" /
                          "General Recovery Results" / "JPG";
  EXPECT_TRUE(fs::exists(folder / "GND00001.JPG"));
  EXPECT_TRUE(fs::exists(folder / "GND00009.JPG"));
  EXPECT_THAT(flow.sleep_asked, ElementsAre(true, false));
}

TEST_F(PhotoFlow, ASearchThatFindsNothingSaysSoInsteadOfPromisingMore) {
  medium_.bytes.assign(64 * sector_size, 0x5A);
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  const QWidget& gallery = flow.widget(Control::imageBrowser);
  flow.dialogs.on_dialog = [&](QWidget& dialog) {
    if (dialog.objectName() != "SaveFile_Info") return;
    EXPECT_TRUE(gallery.accessibleDescription().startsWith("No photos were found"));
  };
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(gallery.accessibleDescription().startsWith("No photos were found"));
}

TEST_F(PhotoFlow, BackFromTheResultsKeepsTheSettingsAndASecondSearchFindsTheSame) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 1);
  EXPECT_TRUE(flow.is_visible(Control::path));
  EXPECT_FALSE(flow.is_visible(Control::imageBrowser));
  EXPECT_FALSE(flow.is_visible(Control::open_folder));
  EXPECT_EQ(flow.text(Control::path), text_from_utf8_lossy(flow.destination().native()));
  EXPECT_TRUE(flow.wait_until([&] { return shown_items(flow) == 0; }));
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(flow.wait_until([&] { return shown_items(flow) == 9; }));
}

TEST_F(PhotoFlow, BackToTheDrivesForgetsTheDrive) {
  test::WindowFlow flow(medium_);
  flow.click(Control::rec_mode_Video);
  go_to_settings(flow);
  EXPECT_EQ(flow.text(Control::Search_Type), u"Search Type : Recover Video");
  flow.click(Control::back_btn);
  EXPECT_EQ(flow.screen_counter(), 0);
  EXPECT_EQ(flow.text(Control::disk_val_Sig), u"<None>");
  EXPECT_TRUE(flow.program().window().is_on(Control::rec_mode_Photo));
  EXPECT_FALSE(flow.program().window().is_on(Control::rec_mode_Video));
  EXPECT_EQ(flow.program().window().windowTitle(), "Norvo Recovery for All Media");
  EXPECT_FALSE(flow.is_visible(Control::Search_Type));
}

TEST_F(PhotoFlow, ATypedRangeIsCheckedAndSearched) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  flow.click(Control::sector_range_rd);
  EXPECT_TRUE(flow.is_visible(Control::Start_slider_val));
  EXPECT_FALSE(flow.is_visible(Control::end_sector_entire_val));
  flow.type(Control::End_slider_val, "0");
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::next_btn);
  flow.type(Control::Start_slider_val, "-5");
  flow.dialogs.expect("alert", "OK");
  flow.click(Control::next_btn);
  EXPECT_THAT(flow.dialogs.alerts(),
              ElementsAre(u"\nEnd Sector should be greater than Start Sector.",
                          u"\nPlease enter valid Start Sector value."));
  EXPECT_EQ(flow.program().window().focusWidget(), &flow.widget(Control::Start_slider_val));
  flow.type(Control::Start_slider_val, "0");
  flow.type(Control::End_slider_val, "4");
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(flow.wait_until([&] { return shown_items(flow) == 1; }));
}

TEST_F(PhotoFlow, AScreenReaderChoosesARangeAsAClickDoes) {
  test::WindowFlow flow(medium_);
  const MainWindow& window = flow.program().window();
  const auto toggle = [&flow](Control control) {
    QAccessible::queryAccessibleInterface(&flow.widget(control))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
  };
  go_to_settings(flow);
  for (int time = 0; time < 2; ++time) {
    toggle(Control::sector_range_rd);
    EXPECT_TRUE(window.is_on(Control::sector_range_rd));
    EXPECT_FALSE(window.is_on(Control::entire_disk_rd));
    EXPECT_TRUE(flow.is_visible(Control::Start_slider_val));
  }
  toggle(Control::entire_disk_rd);
  EXPECT_TRUE(window.is_on(Control::entire_disk_rd));
  EXPECT_FALSE(window.is_on(Control::sector_range_rd));
}

// A picture full of detail, of which only the first half is on the card.
std::vector<std::uint8_t> half_a_photo() {
  QImage picture(320, 240, QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      picture.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, x * y % 256));
    }
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "JPEG", 90);
  std::vector<std::uint8_t> card(bytes.begin(), bytes.begin() + bytes.size() / 2);
  card.resize((card.size() / sector_size + 8) * sector_size);
  return card;
}

QString tool_tip_of_first_item(test::WindowFlow& flow) {
  auto* const view = qobject_cast<QAbstractItemView*>(&flow.widget(Control::imageBrowser));
  const QPoint place = view->visualRect(view->model()->index(0, 0)).center();
  QHelpEvent event(QEvent::ToolTip, place, view->viewport()->mapToGlobal(place));
  QApplication::sendEvent(view->viewport(), &event);
  return QToolTip::text();
}

TEST_F(PhotoFlow, TheToolTipTellsHowMuchOfAPhotoIsIntact) {
  const std::vector<std::uint8_t> half = half_a_photo();
  medium_.bytes.assign(half.begin(), half.end());
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(flow.wait_until([&] {
    return tool_tip_of_first_item(flow).contains("percent of the picture can be decoded");
  }));
  EXPECT_TRUE(tool_tip_of_first_item(flow).startsWith("GND00001.JPG\n"));
}

TEST_F(PhotoFlow, AWholePhotoIsSaidToBeWhole) {
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  EXPECT_TRUE(flow.wait_until([&] {
    return tool_tip_of_first_item(flow) == "GND00001.JPG\nThe whole picture can be decoded.";
  }));
}

TEST_F(PhotoFlow, APhotoThatCannotBeShownHasThePlaceholder) {
  // A header with nothing of a picture behind it.
  medium_.bytes.assign(64 * sector_size, 0x5A);
  const std::vector<std::uint8_t> header{0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F', 'I', 'F', 0};
  std::copy(header.begin(), header.end(), medium_.bytes.begin() + 3 * sector_size);
  test::WindowFlow flow(medium_);
  go_to_settings(flow);
  flow.choose_destination();
  ASSERT_TRUE(flow.search_to_the_end());
  ASSERT_TRUE(flow.wait_until([&] { return shown_items(flow) == 1; }));
  Gallery& gallery = flow.program().controller().gallery();
  EXPECT_TRUE(flow.wait_until([&] { return gallery.item(0)->path.filename() == "NoPreview.png"; }));
  EXPECT_EQ(gallery.item(0)->image_Name, u"GND00001.JPG");
}

}  // namespace
}  // namespace norvo
