// When a movie that is shown goes on, and when not.
#include "platform/qt/MovieView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHideEvent>
#include <QPixmap>
#include <QTest>

namespace norvo {
namespace {

class MovieViewTest : public testing::Test {
 protected:
  MovieViewTest() {
    view_.show();
    view_.begin(std::chrono::seconds(9), QPixmap(10, 10));
  }

  int pauses_ = 0;
  MovieView view_{{.play = [] {}, .pause = [this] { ++pauses_; }, .seek = [](auto) {}}};
};

TEST_F(MovieViewTest, PausesWhenItsPageIsLeft) {
  view_.hide();
  EXPECT_EQ(pauses_, 1);
  EXPECT_FALSE(view_.isPlaying());
}

// The desktop hides what is in a window that is minimized.
TEST_F(MovieViewTest, GoesOnInAMinimizedWindow) {
  QHideEvent event;
  QSpontaneKeyEvent::setSpontaneous(&event);
  ASSERT_TRUE(event.spontaneous());
  // Sending it would make it an event of the program.
  qApp->notify(&view_, &event);
  EXPECT_EQ(pauses_, 0);
  EXPECT_TRUE(view_.isPlaying());
}

}  // namespace
}  // namespace norvo
