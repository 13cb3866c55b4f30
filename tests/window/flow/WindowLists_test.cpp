// The tables of the window beside the lists that they show, column by column.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <cstring>

#include "platform/qt/QtText.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

test::FakeMedium card_with_a_video() {
  test::FakeMedium medium;
  medium.bytes.resize(8 * sector_size);
  std::memcpy(&medium.bytes[2 * sector_size], "RIFF....AVI LIST", 16);
  return medium;
}

class WindowLists : public testing::Test {
 protected:
  void go_to_check_list() {
    flow_.select_drive();
    flow_.click(Control::rec_mode_Video);
    flow_.click(Control::next_btn);
    flow_.choose_destination(Control::browse_path_Sig);
    flow_.click(Control::next_btn);
  }

  const QAbstractItemModel& model(Control table) {
    return *qobject_cast<QAbstractItemView*>(&flow_.widget(table))->model();
  }

  std::vector<Text> shown_row(Control table, int row) {
    std::vector<Text> cells;
    for (int column = 0; column < model(table).columnCount(); ++column) {
      cells.push_back(to_text(model(table).index(row, column).data().toString()));
    }
    return cells;
  }

  MyTableController& controller() { return flow_.program().controller(); }

  test::FakeMedium medium_ = card_with_a_video();
  test::WindowFlow flow_{medium_};
};

TEST_F(WindowLists, ShowADriveAsItsReportTellsIt) {
  EXPECT_EQ(
      shown_row(Control::idTableView, 0),
      (std::vector<Text>{u"sdx1", u"HOLIDAYS", u"MS-DOS (FAT32)", u"4.00  KB ", u"sdx", u"8"}));
}

TEST_F(WindowLists, ShowEachTypeOfTheCheckListInItsColumns) {
  go_to_check_list();
  const auto& types = controller().check_list().rows();
  ASSERT_EQ(model(Control::idCheckTableView).rowCount(), static_cast<int>(types.size()));
  for (std::size_t i = 0; i < types.size(); ++i) {
    const int row = static_cast<int>(i);
    EXPECT_EQ(shown_row(Control::idCheckTableView, row),
              (std::vector<Text>{u"", types[i].Extension, types[i].Description, types[i].Thoro}));
    EXPECT_EQ(model(Control::idCheckTableView).index(row, 0).data(Qt::CheckStateRole).toInt(),
              Qt::Checked);
  }
  const auto thorough = [](const FileTypeEntry& type) { return type.Thoro == u"YES"; };
  EXPECT_TRUE(std::ranges::any_of(types, thorough));
}

TEST_F(WindowLists, ShowATickThatIsTakenOut) {
  go_to_check_list();
  controller().check_list().set_State(1, false);
  const auto ticked = [this](int row) {
    return model(Control::idCheckTableView).index(row, 0).data(Qt::CheckStateRole).toInt() ==
           Qt::Checked;
  };
  EXPECT_TRUE(ticked(0));
  EXPECT_FALSE(ticked(1));
  EXPECT_TRUE(ticked(2));
}

TEST_F(WindowLists, ShowTheFoundFilesInTheirColumns) {
  go_to_check_list();
  ASSERT_TRUE(flow_.search_to_the_end());
  const FoundFilesTable& found = controller().found_files();
  ASSERT_EQ(model(Control::idSigTableView).rowCount(), static_cast<int>(found.size()));
  bool one_found = false;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const FoundFilesRow row = found.row(i);
    EXPECT_EQ(shown_row(Control::idSigTableView, static_cast<int>(i)),
              (std::vector<Text>{row.FileTypes, row.NoOfFile, row.FileName,
                                 text_from_utf8_lossy(row.FilePath.native())}));
    one_found = one_found || (row.FileTypes == u"AVI" && row.NoOfFile == u"1" &&
                              row.FileName == u"AVI00001.AVI" && row.FilePath.is_absolute());
  }
  EXPECT_TRUE(one_found);
}

}  // namespace
}  // namespace norvo
