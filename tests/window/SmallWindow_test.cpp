// The window at its smallest: what has the focus or was asked for is in sight.
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "window/WindowTest.h"

namespace norvo {
namespace {

class SmallWindowTest : public WindowTest {
 protected:
  // The settings of a photo search with a sector range and a warning; they need more room than
  // there is.
  void show_settings() {
    window->resize(window->minimumSize());
    window->set_text(Control::help_info, u"Choose\nwhat to search");
    window->set_text(Control::destination_hint, u"This folder lies on the drive to be searched.");
    show({Control::Criteria_Box,
          Control::entire_disk_rd,
          Control::sector_range_rd,
          Control::Disk_Info_Box,
          Control::Start_Sec_Box,
          Control::End_Sec_Box,
          Control::Start_Sec_curr,
          Control::End_Sec_curr,
          Control::Start_slider_val,
          Control::End_slider_val,
          Control::Start_Slider,
          Control::End_Slider,
          Control::disk_val,
          Control::disk,
          Control::end_sector_entire_val,
          Control::Destination_Box,
          Control::path,
          Control::path_label,
          Control::browse_path,
          Control::destination_hint,
          Control::Thro_Mode_Chk,
          Control::Thro_Mode_Info});
    QCoreApplication::processEvents();
    ASSERT_GT(area().verticalScrollBar()->maximum(), 20) << "all of it is in sight anyway";
  }

  QScrollArea& area() {
    QWidget* found = &find<QWidget>(Control::path);
    while (qobject_cast<QScrollArea*>(found) == nullptr) found = found->parentWidget();
    return *qobject_cast<QScrollArea*>(found);
  }

  bool is_in_sight(Control control) {
    QWidget& widget = find<QWidget>(control);
    return widget.visibleRegion() == QRegion(widget.rect());
  }
};

TEST_F(SmallWindowTest, the_window_shrinks_to_900_by_600_and_no_further) {
  show({});
  window->resize(100, 100);
  EXPECT_EQ(window->size(), QSize(900, 600));
}

TEST_F(SmallWindowTest, a_control_that_gets_the_focus_from_elsewhere_comes_into_sight) {
  show_settings();
  window->focus(Control::next_btn);
  ASSERT_FALSE(is_in_sight(Control::Thro_Mode_Chk));
  window->focus(Control::Thro_Mode_Chk);
  EXPECT_TRUE(is_in_sight(Control::Thro_Mode_Chk));
  window->focus(Control::next_btn);
  area().verticalScrollBar()->setValue(area().verticalScrollBar()->maximum());
  ASSERT_FALSE(is_in_sight(Control::entire_disk_rd));
  window->focus(Control::entire_disk_rd);
  EXPECT_TRUE(is_in_sight(Control::entire_disk_rd));
}

TEST_F(SmallWindowTest, a_box_that_a_letter_ticks_comes_into_sight) {
  show_settings();
  window->focus(Control::next_btn);
  ASSERT_FALSE(is_in_sight(Control::Thro_Mode_Chk));
  QTest::keyClick(window.get(), Qt::Key_T, Qt::AltModifier);
  ASSERT_TRUE(wait_until([this] { return window->is_on(Control::Thro_Mode_Chk); }));
  EXPECT_TRUE(is_in_sight(Control::Thro_Mode_Chk));
}

}  // namespace
}  // namespace norvo
