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

#include "support/FileContent.h"
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

  fs::path movie() {
    const fs::path file = flow_.folder() / "clip.avi";
    const std::string command =
        "ffmpeg -v error -f lavfi -i testsrc=size=160x120:rate=10:duration=20 -c:v mjpeg "
        "-pix_fmt yuvj420p -y " +
        file.native();
    EXPECT_EQ(std::system(command.c_str()), 0);
    return file;
  }

  fs::path photo() {
    const fs::path file = flow_.folder() / "photo.jpg";
    QImage image(320, 160, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    EXPECT_TRUE(image.save(QString::fromStdString(file.native())));
    return file;
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
  EXPECT_EQ(picture().pixmap().size(), QSize(200, 100));
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
  QWidget& player = flow_.widget(Control::mMovieView);
  auto* const bar = player.findChild<QSlider*>("position_bar");
  auto* const button = player.findChild<QToolButton*>("play_btn");
  ASSERT_TRUE(flow_.wait_until([&] { return bar->value() > 300; }));
  EXPECT_NEAR(bar->maximum(), 20000, 500);
  EXPECT_EQ(button->accessibleName(), "Pause");
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(button->accessibleName(), "Play");
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
}

}  // namespace
}  // namespace norvo
