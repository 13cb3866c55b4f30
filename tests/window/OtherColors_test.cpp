// Pictures that are made from outlines follow the colours of the desktop while the program runs.
#include <QApplication>
#include <QTest>

#include "platform/qt/MovieView.h"
#include "platform/qt/NoticeWindow.h"
#include "platform/qt/Theme.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class OtherColorsTest : public testing::Test {
 protected:
  ~OtherColorsTest() override { QApplication::setPalette(before_); }

  static void darken() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x23, 0x25, 0x28));
    palette.setColor(QPalette::Base, QColor(0x2d, 0x30, 0x34));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
      palette.setColor(role, QColor(0xe6, 0xe7, 0xe9));
    }
    QApplication::setPalette(palette);
    QCoreApplication::processEvents();
  }

  // Whether anything in the picture has exactly this colour.
  static bool has(const QImage& picture, const QColor& color) {
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixelColor(x, y) == color) return true;
      }
    }
    return false;
  }

 private:
  const QPalette before_ = QApplication::palette();
};

TEST_F(OtherColorsTest, the_icon_of_a_notice_has_the_accent_of_the_moment) {
  NoticeWindow notice({.object_name = "notice",
                       .icon = "drive",
                       .title = "Title",
                       .text = "Text",
                       .button_name = {},
                       .button_caption = {}},
                      nullptr);
  const auto icon = [&notice] { return notice.findChild<QWidget*>("icon")->grab().toImage(); };
  const QColor light = Theme::current().accent;
  EXPECT_TRUE(has(icon(), light));
  darken();
  const QColor dark = Theme::current().accent;
  ASSERT_NE(dark, light);
  EXPECT_TRUE(has(icon(), dark));
  EXPECT_FALSE(has(icon(), light));
}

TEST_F(OtherColorsTest, the_play_button_has_the_text_colour_of_the_moment) {
  MovieView view({.play = [] {}, .pause = [] {}, .seek = [](auto) {}});
  view.begin(std::chrono::seconds(9), {});
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  const auto* const button = view.findChild<QToolButton*>("play_btn");
  const auto icon = [&] { return button->icon().pixmap(button->iconSize()).toImage(); };
  const QColor light = Theme::current().text;
  EXPECT_TRUE(has(icon(), light));
  darken();
  const QColor dark = Theme::current().text;
  ASSERT_NE(dark, light);
  EXPECT_TRUE(has(icon(), dark));
}

}  // namespace
}  // namespace norvo
