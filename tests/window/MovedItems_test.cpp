// Items of the gallery that the keyboard moves, and what is heard of an item.
#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "window/PhotoListTest.h"

namespace norvo {
namespace {

using Lines = std::vector<std::string>;
using Kind = PictureJudgement::Kind;

class MovedItemsTest : public PhotoListTest {
 protected:
  void select(const std::vector<int>& rows) {
    view().clearSelection();
    for (const int row : rows) {
      view().selectionModel()->setCurrentIndex(item(row), QItemSelectionModel::Select);
    }
    events.lines.clear();
  }

  void press(Qt::Key key, Qt::KeyboardModifiers keys = Qt::AltModifier) {
    QTest::keyClick(&view(), key, keys);
  }

  Lines shown() {
    Lines names;
    for (int row = 0; row < view().model()->rowCount(); ++row) {
      names.push_back(item(row).data().toString().toStdString());
    }
    return names;
  }
  Lines selected() {
    Lines names;
    for (const QModelIndex& index : view().selectionModel()->selectedIndexes()) {
      names.push_back(index.data().toString().toStdString());
    }
    std::ranges::sort(names);
    return names;
  }

  // As the wizard answers a move.
  void move(const std::vector<std::size_t>& indexes, std::size_t destination) {
    gallery.moveItemsAtIndexes(indexes, destination);
    window->reload(Control::imageBrowser);
  }
};

TEST_F(MovedItemsTest, alt_with_an_arrow_tells_of_a_move_over_the_neighbour) {
  show_photos(6);
  select({1, 2});
  press(Qt::Key_Left);
  EXPECT_EQ(events.lines, Lines{"moved imageBrowser 1 2 to 0"});
  select({1, 3});
  press(Qt::Key_Right, Qt::AltModifier | Qt::KeypadModifier);
  EXPECT_EQ(events.lines, Lines{"moved imageBrowser 1 3 to 5"});
}

TEST_F(MovedItemsTest, items_at_the_end_stay_there) {
  show_photos(4);
  select({0, 2});
  press(Qt::Key_Left);
  select({1, 3});
  press(Qt::Key_Right);
  view().clearSelection();
  events.lines.clear();
  press(Qt::Key_Right);
  EXPECT_EQ(events.lines, Lines{});
}

TEST_F(MovedItemsTest, other_keys_beside_alt_move_nothing) {
  show_photos(4);
  select({1});
  press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
  press(Qt::Key_Right, Qt::NoModifier);
  for (const std::string& line : events.lines) EXPECT_EQ(line.find("moved"), std::string::npos);
}

TEST_F(MovedItemsTest, moved_items_stay_selected_and_keep_their_pictures) {
  show_photos(5);
  ASSERT_TRUE(wait_until([&] { return thumbnails.requests.size() >= 5; }));
  const std::size_t requests = thumbnails.requests.size();
  select({1, 3});
  move({1, 3}, 5);
  ASSERT_TRUE(wait_until([&] { return shown() == Lines{"1", "3", "5", "2", "4"}; }));
  EXPECT_EQ(selected(), (Lines{"2", "4"}));
  EXPECT_EQ(view().currentIndex().data().toString().toStdString(), "4");
  view().viewport()->repaint();
  EXPECT_EQ(thumbnails.requests.size(), requests);
  EXPECT_EQ(events.lines, Lines{}) << "what the list does is no act of the person";
}

TEST_F(MovedItemsTest, items_that_come_with_a_move_are_added_behind) {
  show_photos(3);
  select({0});
  move({0}, 3);
  add_photos(2);
  ASSERT_TRUE(wait_until([&] { return shown() == Lines{"2", "3", "1", "4", "5"}; }));
  EXPECT_EQ(selected(), Lines{"1"});
}

TEST_F(MovedItemsTest, an_item_that_is_removed_with_a_move_is_gone) {
  show_photos(4);
  select({3});
  gallery.moveItemsAtIndexes({3}, 0);
  gallery.removeItemsAtIndexes({1});
  window->reload(Control::imageBrowser);
  ASSERT_TRUE(wait_until([&] { return shown() == Lines{"4", "2", "3"}; }));
}

TEST_F(MovedItemsTest, a_screen_reader_hears_how_much_of_a_photo_is_intact) {
  show_photos(2);
  ASSERT_TRUE(wait_until([&] { return thumbnails.requests.size() >= 2; }));
  const auto heard = [this](int row) {
    return QAccessible::queryAccessibleInterface(&view())
        ->child(row)
        ->text(QAccessible::Description)
        .toStdString();
  };
  EXPECT_EQ(heard(1), "");
  const QSignalSpy changes(view().model(), &QAbstractItemModel::dataChanged);
  Q_EMIT thumbnails.judged("2", {.kind = Kind::partly, .percent = 40});
  EXPECT_EQ(heard(1), "About 40 percent of the picture can be decoded.");
  EXPECT_EQ(heard(0), "");
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes[0][0].toModelIndex(), item(1));
  EXPECT_TRUE(changes[0][2].value<QList<int>>().contains(Qt::AccessibleDescriptionRole));
}

TEST_F(MovedItemsTest, a_screen_reader_hears_the_keys_of_the_list) {
  show_photos(1);
  EXPECT_TRUE(view().accessibleDescription().contains("Alt with the left or the right arrow key"));
}

}  // namespace
}  // namespace norvo
