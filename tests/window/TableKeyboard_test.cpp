// A list of rows under the keyboard alone.
#include <QApplication>
#include <QTest>

#include "platform/qt/TableView.h"
#include "platform/qt/Theme.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class TableKeyboardTest : public WindowTest {
 protected:
  TableView& table(Control control) { return find<TableView>(control); }

  // Whether the row has the mark of the cursor along its upper edge.
  bool is_marked(Control control, int row) {
    TableView& view = table(control);
    const QImage drawn = view.viewport()->grab().toImage();
    const QRect place = view.visualRect(view.model()->index(row, 1));
    const QColor edge =
        drawn.pixelColor(QPoint(place.center().x(), place.top() + 1) * drawn.devicePixelRatio());
    const Theme theme = Theme::current();
    return contrast(edge, theme.surface) > contrast(theme.accent, theme.surface) - 1;
  }
};

TEST_F(TableKeyboardTest,
       an_arrow_key_selects_the_only_drive_when_the_list_has_the_keyboard_again) {
  drives = {{u"sdb1", u"CARD", u"FAT32", u"   31.9 GB", u"sdb", u"62333952"}};
  show({Control::idTableView});
  window->reload(Control::idTableView);
  for (const int time : {1, 2}) {
    window->focus(Control::next_btn);
    window->focus(Control::idTableView);
    EXPECT_EQ(window->selected_row(Control::idTableView), std::nullopt) << time;
  }
  QTest::keyClick(&table(Control::idTableView), Qt::Key_Down);
  EXPECT_EQ(window->selected_row(Control::idTableView), 0U);
}

TEST_F(TableKeyboardTest, a_selected_row_keeps_the_cursor) {
  drives.resize(3, std::vector<Text>(6));
  show({Control::idTableView});
  window->reload(Control::idTableView);
  window->select_row(Control::idTableView, 1);
  window->focus(Control::next_btn);
  window->focus(Control::idTableView);
  QTest::keyClick(&table(Control::idTableView), Qt::Key_Down);
  EXPECT_EQ(window->selected_row(Control::idTableView), 2U);
}

TEST_F(TableKeyboardTest, the_row_whose_box_space_ticks_is_seen) {
  show({Control::idCheckTableView});
  window->reload(Control::idCheckTableView);
  window->focus(Control::next_btn);
  window->focus(Control::idCheckTableView);
  EXPECT_TRUE(is_marked(Control::idCheckTableView, 0));
  QTest::keyClick(&table(Control::idCheckTableView), Qt::Key_Space);
  EXPECT_EQ(events.lines, std::vector<std::string>{"ticked 0 off"});
  QTest::keyClick(&table(Control::idCheckTableView), Qt::Key_Down);
  EXPECT_FALSE(is_marked(Control::idCheckTableView, 0));
  EXPECT_TRUE(is_marked(Control::idCheckTableView, 1));
  window->focus(Control::next_btn);
  EXPECT_FALSE(is_marked(Control::idCheckTableView, 1));
}

}  // namespace
}  // namespace norvo
