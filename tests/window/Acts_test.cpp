#include <QAbstractButton>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "platform/qt/TableView.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;
using Lines = std::vector<std::string>;

class ActsTest : public WindowTest {
 protected:
  QSlider& slider() { return find<QSlider>(Control::Start_Slider); }
};

const std::vector<Control> range_page{Control::Disk_Info_Box,   Control::Start_Sec_Box,
                                      Control::Start_Slider,    Control::Start_slider_val,
                                      Control::sector_range_rd, Control::Criteria_Box};

TEST_F(ActsTest, a_click_is_told_once_the_new_state_shows) {
  show({Control::Thro_Mode_Chk});
  QTest::mouseClick(&find<QAbstractButton>(Control::Thro_Mode_Chk), Qt::LeftButton, {},
                    QPoint(10, 10));
  EXPECT_EQ(events.lines, Lines{"clicked _Thro_Mode_Chk"});
  EXPECT_TRUE(window->is_on(Control::Thro_Mode_Chk));
}

TEST_F(ActsTest, a_tile_can_be_clicked_anywhere_and_leaves_the_others_to_the_wizard) {
  show({Control::rec_mode_Box, Control::rec_mode_Photo, Control::rec_mode_Video});
  window->set_on(Control::rec_mode_Photo, true);
  auto& tile = find<QAbstractButton>(Control::rec_mode_Video);
  QTest::mouseClick(&tile, Qt::LeftButton, {}, tile.rect().bottomRight() - QPoint(3, 3));
  EXPECT_EQ(events.lines, Lines{"clicked _rec_mode_Video"});
  EXPECT_TRUE(window->is_on(Control::rec_mode_Photo));
}

TEST_F(ActsTest, the_keyboard_presses_buttons_by_their_letters) {
  show({});
  QTest::keyClick(window.get(), Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(wait_until([this] { return !events.lines.empty(); }));
  EXPECT_EQ(events.lines, Lines{"clicked _next_btn"});
}

TEST_F(ActsTest, nothing_that_the_wizard_sets_is_told) {
  show(range_page);
  add_photos(3);
  for (const Control control : {Control::rec_mode_Photo, Control::sector_range_rd,
                                Control::select_unselect_Chk, Control::Thro_Mode_Chk}) {
    window->set_on(control, true);
    window->set_on(control, false);
  }
  window->set_text(Control::Start_slider_val, u"17");
  window->set_text(Control::path, u"/tmp");
  window->set_range(Control::Start_Slider, 0, 500);
  window->set_value(Control::Start_Slider, 250);
  window->set_value(Control::zoom_slider, 0.5);
  window->set_value(Control::imageBrowser, 0.55);
  for (const Control list : {Control::idTableView, Control::idCheckTableView, Control::imageBrowser,
                             Control::imageBrowser_2}) {
    window->reload(list, true);
  }
  QTest::qWait(150);
  EXPECT_EQ(events.lines, Lines{});
}

TEST_F(ActsTest, keys_move_a_slider_and_are_told) {
  show(range_page);
  window->set_range(Control::Start_Slider, 0, 1e9);
  window->set_value(Control::Start_Slider, 0);
  QTest::keyClick(&slider(), Qt::Key_Right);
  EXPECT_EQ(events.lines, Lines{"changed _Start_Slider"});
  EXPECT_EQ(window->value(Control::Start_Slider), 1e6);
  QTest::keyClick(&slider(), Qt::Key_End);
  EXPECT_EQ(window->value(Control::Start_Slider), 1e9);
}

TEST_F(ActsTest, dragging_a_slider_to_its_end_gives_exactly_the_end) {
  show(range_page);
  const double most = 9223372036854775808.0;
  window->set_range(Control::Start_Slider, 0, most);
  window->set_value(Control::Start_Slider, 0);
  slider().setSliderDown(true);
  slider().setSliderPosition(slider().maximum());
  slider().setSliderDown(false);
  EXPECT_EQ(window->value(Control::Start_Slider), most);
  EXPECT_FALSE(events.lines.empty());
}

// One notch upwards over the middle of `target`.
void turn_wheel(QWidget& target) {
  const QPointF place = target.rect().center();
  QWheelEvent event(place, target.mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  // As from the window system: only such events go on to what lies below.
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(&target, &event);
}

TEST_F(ActsTest, the_wheel_moves_a_slider_that_has_the_keyboard_and_no_other) {
  show(range_page);
  window->set_range(Control::Start_Slider, 0, 1e9);
  window->set_value(Control::Start_Slider, 5e8);
  find<QLineEdit>(Control::Start_slider_val).setFocus();
  turn_wheel(slider());
  EXPECT_EQ(events.lines, Lines{});
  EXPECT_EQ(window->value(Control::Start_Slider), 5e8);
  EXPECT_FALSE(slider().hasFocus());
  slider().setFocus();
  turn_wheel(slider());
  EXPECT_EQ(events.lines, Lines{"changed _Start_Slider"});
  EXPECT_GT(window->value(Control::Start_Slider), 5e8);
}

TEST_F(ActsTest, the_wheel_over_a_slider_scrolls_the_page) {
  show(range_page);
  window->resize(window->minimumSize());
  for (const Control control : {Control::Destination_Box, Control::path, Control::browse_path,
                                Control::Thro_Mode_Chk, Control::Thro_Mode_Info}) {
    window->set_hidden(control, false);
  }
  QScrollArea* page = nullptr;
  for (QWidget* above = &slider(); page == nullptr; above = above->parentWidget()) {
    page = qobject_cast<QScrollArea*>(above);
  }
  page->widget()->setMinimumHeight(2 * window->height());
  ASSERT_TRUE(wait_until([&] { return page->verticalScrollBar()->maximum() > 0; }));
  page->verticalScrollBar()->setValue(page->verticalScrollBar()->maximum());
  const int before = page->verticalScrollBar()->value();
  turn_wheel(slider());
  EXPECT_LT(page->verticalScrollBar()->value(), before);
}

TEST_F(ActsTest, typing_is_told_key_by_key) {
  show(range_page);
  QTest::keyClicks(&find<QLineEdit>(Control::Start_slider_val), u"42"_s);
  EXPECT_EQ(events.lines, (Lines{"changed _Start_slider_val", "changed _Start_slider_val"}));
  EXPECT_EQ(window->text(Control::Start_slider_val), u"42");
}

TEST_F(ActsTest, ticking_a_box_is_told_and_left_to_the_list) {
  show({Control::idCheckTableView});
  window->reload(Control::idCheckTableView);
  auto& table = find<TableView>(Control::idCheckTableView);
  const QRect cell = table.visualRect(table.model()->index(1, 0));
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                    QPoint(cell.left() + 20, cell.center().y()));
  EXPECT_EQ(events.lines, Lines{"ticked 1 on"});
  EXPECT_EQ(table.model()->index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST_F(ActsTest, space_ticks_the_row_under_the_cursor) {
  show({Control::idCheckTableView});
  window->reload(Control::idCheckTableView);
  auto& table = find<TableView>(Control::idCheckTableView);
  table.setCurrentIndex(table.model()->index(2, 1));
  QTest::keyClick(&table, Qt::Key_Space);
  EXPECT_EQ(events.lines, Lines{"ticked 2 off"});
}

TEST_F(ActsTest, the_close_control_is_told_and_the_window_stays) {
  show({});
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(events.lines, Lines{"windowShouldClose"});
}

TEST_F(ActsTest, a_chosen_disk_image_is_told) {
  show({Control::refresh_Box, Control::open_image_btn});
  const test::TemporaryFolder folder;
  const std::string image = folder.path() / "card.img";
  test::write_file(image, "");
  QTimer::singleShot(100, [this, &image] {
    auto* chooser = window->findChild<QFileDialog*>(u"image_chooser"_s);
    ASSERT_NE(chooser, nullptr);
    chooser->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(QString::fromStdString(image));
    QMetaObject::invokeMethod(chooser, "accept");
  });
  find<QAbstractButton>(Control::open_image_btn).click();
  EXPECT_EQ(events.lines, (Lines{"clicked _open_image_btn", "disk_image_chosen " + image}));
}

TEST_F(ActsTest, a_disk_image_can_be_dropped_on_the_drive_list) {
  show({Control::idTableView});
  const test::TemporaryFolder folder;
  const std::string image = folder.path() / "card.img";
  test::write_file(image, "");
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(image))});
  EXPECT_TRUE(drop(*find<TableView>(Control::idTableView).viewport(), data, QPoint(20, 20)));
  EXPECT_EQ(events.lines, Lines{"disk_image_chosen " + image});
}

}  // namespace
}  // namespace norvo
