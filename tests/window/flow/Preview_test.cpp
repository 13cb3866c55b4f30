// The preview beside the file window: movies play, pictures are shown, anything else has the icon
// of its type. The decoder and the player are the real ones, in their own processes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QLabel>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <cstdlib>
#include <fstream>
#include <string>

#include "platform/qt/FoundFilesScreen.h"
#include "platform/qt/Header.h"
#include "platform/qt/TypeIcons.h"
#include "support/FileContent.h"
#include "window/flow/SampleMovie.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

// A search that has ended with files of the test's own in its list.
class Preview : public testing::Test {
 protected:
  Preview() : flow_(medium_with_one_video(medium_)) {
    flow_.select_drive();
    flow_.click(Control::rec_mode_Video);
    flow_.click(Control::next_btn);
    flow_.choose_destination(Control::browse_path_Sig);
    flow_.click(Control::next_btn);
    ended_ = flow_.search_to_the_end();
    flow_.program().controller().gallery().empty_images();
  }

  static test::FakeMedium& medium_with_one_video(test::FakeMedium& medium) {
    const std::string card = test::zero_sectors(2) + test::sector_of("RIFF....AVI LIST", 'a');
    medium.bytes.assign(card.begin(), card.end());
    return medium;
  }

  void add(const fs::path& file) {
    Gallery& gallery = flow_.program().controller().gallery();
    const Text name = text_from_utf8_lossy(file.filename().native());
    gallery.addImageWithPath_2(file, name, name);
    flow_.program().window().reload(Control::imageBrowser_2);
    const int wanted = static_cast<int>(gallery.size());
    ASSERT_TRUE(flow_.wait_until([&] { return view().model()->rowCount() == wanted; }));
  }

  QAbstractItemView& view() {
    return *qobject_cast<QAbstractItemView*>(&flow_.widget(Control::imageBrowser_2));
  }

  QLabel& picture() { return *qobject_cast<QLabel*>(&flow_.widget(Control::QuickLook_View)); }

  template <class Part>
  Part& of_player(const char* name) {
    return *flow_.widget(Control::mMovieView).findChild<Part*>(name);
  }
  QToolButton& button() { return of_player<QToolButton>("play_btn"); }
  QSlider& bar() { return of_player<QSlider>("position_bar"); }
  QLabel& frame() { return of_player<QLabel>("frame"); }

  bool is_playing() {
    return flow_.is_visible(Control::mMovieView) && bar().value() > 0 &&
           button().accessibleName() == u"Pause";
  }

  fs::path movie(const std::string& name = "clip.avi") {
    return test::make_movie(flow_.folder() / name);
  }

  fs::path photo(const std::string& name = "photo.jpg") {
    const fs::path file = flow_.folder() / name;
    QImage image(640, 320, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    EXPECT_TRUE(image.save(QString::fromStdString(file.native())));
    return file;
  }

  // The page of the file search, and the top of the window.
  QWidget& page() {
    QWidget* found = &flow_.widget(Control::imageBrowser_2);
    while (dynamic_cast<FoundFilesScreen*>(found) == nullptr) found = found->parentWidget();
    return *found;
  }
  QString header() {
    QString texts;
    for (const auto* const label : flow_.program().window().findChildren<QLabel*>()) {
      if (dynamic_cast<Header*>(label->parentWidget()) != nullptr) texts += label->text() + u'|';
    }
    return texts;
  }

  // Of this process.
  static int player_processes() {
    int found = 0;
    for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
      std::ifstream children(thread.path() / "children");
      for (std::string child; children >> child;) {
        std::string name;
        std::getline(std::ifstream("/proc/" + child + "/comm"), name);
        if (name == "norvo-player") ++found;
      }
    }
    return found;
  }

  test::FakeMedium medium_;
  test::WindowFlow flow_;
  bool ended_ = false;
};

TEST_F(Preview, APictureIsShownInThePictureView) {
  ASSERT_TRUE(ended_);
  add(photo());
  flow_.select_row(Control::imageBrowser_2, 0);
  EXPECT_EQ(flow_.text(Control::QuickLook_View_Box), u"photo.jpg");
  ASSERT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
  EXPECT_EQ(picture().pixmap().size(), QSize(200, 100) * picture().devicePixelRatioF())
      << "as sharp as the screen";
  EXPECT_EQ(picture().pixmap().deviceIndependentSize(), QSizeF(200, 100));
  const QColor colour = picture().pixmap().toImage().pixelColor(100, 50);
  EXPECT_NEAR(colour.red(), 0, 4);
  EXPECT_NEAR(colour.green(), 128, 4);
  EXPECT_NEAR(colour.blue(), 0, 4);
  EXPECT_TRUE(flow_.is_visible(Control::QuickLook_View));
  EXPECT_FALSE(flow_.is_visible(Control::mMovieView));
}

TEST_F(Preview, AMoviePlaysAtOnceCanBePausedAndEndsWithTheNextSelection) {
  ASSERT_TRUE(ended_);
  add(movie());
  add(photo());
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return flow_.is_visible(Control::mMovieView); }));
  EXPECT_FALSE(flow_.is_visible(Control::QuickLook_View));
  ASSERT_TRUE(flow_.wait_until([&] { return bar().value() > 300; }));
  EXPECT_NEAR(bar().maximum(), 20000, 500);
  EXPECT_EQ(button().accessibleName(), "Pause");
  QTest::mouseClick(&button(), Qt::LeftButton);
  EXPECT_EQ(button().accessibleName(), "Play");
  flow_.select_row(Control::imageBrowser_2, 1);
  ASSERT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
  EXPECT_FALSE(flow_.is_visible(Control::mMovieView));
}

TEST_F(Preview, AFileOfUnknownTypeHasAnIcon) {
  ASSERT_TRUE(ended_);
  const fs::path file = flow_.folder() / "strange.xyz";
  test::write_file(file, "nothing that anybody could show");
  add(file);
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
  EXPECT_TRUE(flow_.is_visible(Control::QuickLook_View));
  EXPECT_EQ(picture().pixmap().toImage(),
            type_icon("xyz", 96, picture().devicePixelRatioF()).toImage());
}

TEST_F(Preview, AFrameIsAsSharpAsTheScreen) {
  ASSERT_TRUE(ended_);
  add(movie());
  flow_.select_row(Control::imageBrowser_2, 0);
  const double ratio = frame().devicePixelRatioF();
  const QSize sharp = QSize(200, 150) * ratio;
  EXPECT_TRUE(flow_.wait_until([&] { return frame().pixmap().size() == sharp; }));
  EXPECT_EQ(frame().pixmap().deviceIndependentSize(), QSizeF(200, 150));
}

TEST_F(Preview, ASelectionFirstTakesTheOldPictureAway) {
  ASSERT_TRUE(ended_);
  add(photo());
  add(photo("other.jpg"));
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
  flow_.select_row(Control::imageBrowser_2, 1);
  EXPECT_EQ(flow_.text(Control::QuickLook_View_Box), u"other.jpg");
  EXPECT_TRUE(picture().pixmap().isNull());
  EXPECT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
}

TEST_F(Preview, ASelectionFirstTakesTheOldMovieAway) {
  ASSERT_TRUE(ended_);
  add(movie());
  add(movie("other.avi"));
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return is_playing(); }));
  flow_.select_row(Control::imageBrowser_2, 1);
  EXPECT_EQ(flow_.text(Control::QuickLook_View_Box), u"other.avi");
  EXPECT_TRUE(frame().pixmap().isNull());
  EXPECT_EQ(bar().value(), 0);
  EXPECT_FALSE(bar().isEnabled());
  EXPECT_FALSE(button().isEnabled());
  EXPECT_EQ(button().accessibleName(), "Play");
  ASSERT_TRUE(flow_.wait_until([this] { return is_playing(); }));
  EXPECT_TRUE(button().isEnabled());
}

TEST_F(Preview, WhatIsNotReadyWhenThePersonGoesBackIsNeverShown) {
  for (const bool of_movie : {false, true}) {
    ASSERT_TRUE(ended_);
    add(of_movie ? movie() : photo());
    flow_.select_row(Control::imageBrowser_2, 0);
    flow_.click(Control::back_btn);
    ASSERT_EQ(flow_.screen_counter(), 2);
    ASSERT_FALSE(page().isVisible());
    const QString before = header();
    ASSERT_TRUE(before.contains(u"File types")) << before.toStdString();
    // Longer than it takes when it comes.
    QTest::qWait(3000);
    EXPECT_FALSE(page().isVisible()) << of_movie;
    EXPECT_EQ(header(), before) << of_movie;
    EXPECT_TRUE(flow_.wait_until([] { return player_processes() == 0; })) << of_movie;
    EXPECT_TRUE(picture().pixmap().isNull());
    ended_ = flow_.search_to_the_end();
    flow_.program().controller().gallery().empty_images();
  }
}

TEST_F(Preview, GoingBackEndsTheMovie) {
  ASSERT_TRUE(ended_);
  add(movie());
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return is_playing(); }));
  EXPECT_EQ(player_processes(), 1);
  flow_.click(Control::back_btn);
  EXPECT_TRUE(flow_.wait_until([] { return player_processes() == 0; }));
  EXPECT_TRUE(frame().pixmap().isNull());
}

TEST_F(Preview, TheNextSearchBeginsWithoutAPreview) {
  ASSERT_TRUE(ended_);
  add(photo());
  flow_.select_row(Control::imageBrowser_2, 0);
  ASSERT_TRUE(flow_.wait_until([this] { return !picture().pixmap().isNull(); }));
  flow_.click(Control::back_btn);
  flow_.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow_.click(Control::next_btn);
  EXPECT_TRUE(page().isVisible());
  EXPECT_TRUE(flow_.wait_until([this] {
    return flow_.text(Control::QuickLook_View_Box) == u"No file is selected to preview";
  }));
  EXPECT_TRUE(picture().pixmap().isNull());
  EXPECT_TRUE(flow_.wait_until([this] { return flow_.is_enabled(Control::back_btn); }));
}

}  // namespace
}  // namespace norvo
