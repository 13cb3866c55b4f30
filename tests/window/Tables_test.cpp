#include <QTest>

#include "platform/qt/EmptyNote.h"
#include "platform/qt/QtText.h"
#include "platform/qt/TableView.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class TablesTest : public WindowTest {
 protected:
  TablesTest() {
    drives = {{u"sdb1", u"CARD", u"FAT32", u"   31.9 GB", u"sdb", u"62333952"},
              {u"sdc1", u"two\nlines\u202E", u"exFAT", u"128.2 GB", u"sdc", u"250347520"}};
  }
  TableView& table(Control control) { return find<TableView>(control); }
  Text shown(Control control, int row, int column) {
    return to_text(table(control).model()->index(row, column).data().toString());
  }
};

TEST_F(TablesTest, the_drive_list_shows_its_six_columns_as_given) {
  window->reload(Control::idTableView);
  const auto* const model = table(Control::idTableView).model();
  ASSERT_EQ(model->columnCount(), 6);
  const std::vector<Text> headings{u"Disk", u"Volume",      u"File System",
                                   u"Size", u"Parent Disk", u"Sectors"};
  for (int column = 0; column < 6; ++column) {
    const auto index = static_cast<std::size_t>(column);
    EXPECT_EQ(to_text(model->headerData(column, Qt::Horizontal).toString()), headings[index]);
    EXPECT_EQ(shown(Control::idTableView, 0, column), drives[0][index]);
  }
  const auto alignment = model->index(0, 5).data(Qt::TextAlignmentRole).toInt();
  EXPECT_TRUE(alignment & Qt::AlignRight);
}

TEST_F(TablesTest, no_cell_of_the_drive_list_can_be_changed) {
  window->reload(Control::idTableView);
  auto* const model = table(Control::idTableView).model();
  for (int row = 0; row < model->rowCount(); ++row) {
    for (int column = 0; column < model->columnCount(); ++column) {
      const QModelIndex cell = model->index(row, column);
      EXPECT_FALSE(cell.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable));
      EXPECT_FALSE(model->setData(cell, QStringLiteral("another name")));
      EXPECT_FALSE(model->setData(cell, Qt::Checked, Qt::CheckStateRole));
    }
  }
  EXPECT_EQ(shown(Control::idTableView, 0, 1), u"CARD");
}

TEST_F(TablesTest, names_cannot_steer_the_display) {
  window->reload(Control::idTableView);
  EXPECT_EQ(shown(Control::idTableView, 1, 1), u"two\uFFFDlines\uFFFD");
}

TEST_F(TablesTest, another_drive_list_has_no_selection) {
  show({Control::idTableView});
  window->reload(Control::idTableView);
  EXPECT_EQ(window->selected_row(Control::idTableView), std::nullopt);
  table(Control::idTableView).selectRow(1);
  EXPECT_EQ(window->selected_row(Control::idTableView), 1U);
  window->reload(Control::idTableView);
  EXPECT_EQ(window->selected_row(Control::idTableView), std::nullopt);
}

TEST_F(TablesTest, the_other_lists_keep_the_selected_row) {
  window->reload(Control::idCheckTableView);
  table(Control::idCheckTableView).selectRow(1);
  ticks = {false, false, false, false};
  window->reload(Control::idCheckTableView);
  EXPECT_EQ(window->selected_row(Control::idCheckTableView), 1U);
  EXPECT_EQ(table(Control::idCheckTableView).model()->rowCount(), 4);
  ticks = {false};
  window->reload(Control::idCheckTableView);
  EXPECT_EQ(table(Control::idCheckTableView).model()->rowCount(), 1);
}

TEST_F(TablesTest, found_files_have_the_columns_of_their_rows) {
  window->reload(Control::idSigTableView);
  const std::vector<Text> columns{u"FileTypes", u"NoOfFile", u"FileName", u"FilePath"};
  ASSERT_EQ(table(Control::idSigTableView).model()->columnCount(), 4);
  for (int column = 0; column < 4; ++column) {
    EXPECT_EQ(shown(Control::idSigTableView, 0, column), columns[static_cast<std::size_t>(column)]);
  }
}

TEST_F(TablesTest, an_empty_list_says_what_to_do) {
  drives.clear();
  show({Control::idTableView});
  EXPECT_TRUE(table(Control::idTableView).accessibleDescription().isEmpty()) << "not looked yet";
  const QWidget* note = nullptr;
  for (const QWidget* const child : table(Control::idTableView).findChildren<QWidget*>()) {
    if (dynamic_cast<const EmptyNote*>(child) != nullptr) note = child;
  }
  ASSERT_NE(note, nullptr);
  EXPECT_FALSE(note->isVisible());
  window->reload(Control::idTableView);
  EXPECT_TRUE(note->isVisible());
  EXPECT_TRUE(table(Control::idTableView).accessibleDescription().contains(u"Connect"));
  drives.resize(1, std::vector<Text>(6));
  window->reload(Control::idTableView);
  EXPECT_TRUE(table(Control::idTableView).accessibleDescription().isEmpty());
  EXPECT_FALSE(note->isVisible());
}

}  // namespace
}  // namespace norvo
