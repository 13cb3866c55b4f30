// What is painted for an item of the gallery and of the file window, looked at pixel by pixel.
#include <QPainter>
#include <vector>

#include "platform/qt/PhotoBadge.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ResultView.h"
#include "platform/qt/TypeIcons.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;
using Kind = PictureJudgement::Kind;

// The smallest rectangle around the pixels that `wanted` picks.
template <class Wanted>
QRect bounds(const QImage& image, Wanted wanted) {
  QRect found;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (wanted(x, y)) found |= QRect(x, y, 1, 1);
    }
  }
  return found;
}

QRect difference(const QImage& first, const QImage& second) {
  return bounds(first, [&](int x, int y) { return first.pixel(x, y) != second.pixel(x, y); });
}

QImage blank(const QSize& size, double ratio) {
  QImage image(size * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  return image;
}

class DrawnItemsTest : public WindowTest {
 protected:
  // The first item of a view as its delegate paints it.
  QImage drawn(Control browser, double ratio = 1) {
    auto& view = find<ResultView>(browser);
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.state = QStyle::State_Enabled;
    option.rect = QRect(QPoint(), view.gridSize());
    QImage image = blank(view.gridSize(), ratio);
    QPainter painter(&image);
    view.itemDelegate()->paint(&painter, option, view.model()->index(0, 0));
    return image;
  }

  void wait_for_item(Control browser) {
    window->reload(browser);
    const QAbstractItemModel& model = *find<ResultView>(browser).model();
    const QString wanted = to_qt(gallery.item(0)->image_Name);
    ASSERT_TRUE(wait_until([&] { return model.index(0, 0).data().toString() == wanted; }));
  }
};

class DrawnPhotosTest : public DrawnItemsTest {
 protected:
  void SetUp() override {
    show({Control::imageBrowser});
    window->set_value(Control::imageBrowser, 0.5);
    add_photo(u"1");
  }

  // The only one.
  void add_photo(TextView image_UID) {
    gallery.empty_images();
    gallery.addImageWithPath("/nowhere/a.jpg", image_UID, image_UID);
    wait_for_item(Control::imageBrowser);
    drawn(Control::imageBrowser);
  }

  // Its picture has come, larger than any before.
  void show_picture(const QSize& size) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    Q_EMIT thumbnails.done(u"1"_s, picture, ++pixels_);
  }

  QImage judged(const PictureJudgement& judgement) {
    Q_EMIT thumbnails.judged(u"1"_s, judgement);
    return drawn(Control::imageBrowser);
  }

 private:
  int pixels_ = 512;
};

TEST_F(DrawnPhotosTest, a_badge_lies_in_the_corner_of_the_picture_whatever_its_shape) {
  for (const QSize& size : {QSize(400, 400), QSize(400, 200), QSize(150, 400)}) {
    Q_EMIT thumbnails.judged(u"1"_s, {});
    show_picture(size);
    const QImage without = drawn(Control::imageBrowser);
    const QRect picture = bounds(
        without, [&](int x, int y) { return without.pixelColor(x, y) == QColor(Qt::magenta); });
    ASSERT_NEAR(1.0 * picture.width() / picture.height(), 1.0 * size.width() / size.height(), 0.1);
    for (const PictureJudgement& judgement :
         {PictureJudgement{.kind = Kind::whole, .percent = {}},
          PictureJudgement{.kind = Kind::partly, .percent = 100},
          PictureJudgement{.kind = Kind::embedded_only, .percent = {}}}) {
      const QRect badge = difference(without, judged(judgement));
      EXPECT_GE(badge.width(), 10);
      EXPECT_GE(badge.height(), 10);
      EXPECT_TRUE(picture.contains(badge)) << size.width() << " by " << size.height();
      EXPECT_LE(picture.right() - badge.right(), 8);
      EXPECT_LE(picture.bottom() - badge.bottom(), 8);
    }
  }
}

TEST_F(DrawnPhotosTest, each_judgement_has_its_own_badge_and_none_has_none) {
  show_picture({400, 400});
  const QImage without = drawn(Control::imageBrowser);
  EXPECT_EQ(judged({}), without);
  std::vector<QImage> seen{without};
  for (const PictureJudgement& judgement :
       {PictureJudgement{.kind = Kind::whole, .percent = {}},
        PictureJudgement{.kind = Kind::partly, .percent = 62},
        PictureJudgement{.kind = Kind::partly, .percent = 63},
        PictureJudgement{.kind = Kind::partly, .percent = {}},
        PictureJudgement{.kind = Kind::embedded_only, .percent = {}}}) {
    const QImage with = judged(judgement);
    for (const QImage& other : seen) EXPECT_NE(with, other) << badge_text(judgement).toStdString();
    seen.push_back(with);
  }
}

TEST_F(DrawnPhotosTest, there_is_no_badge_without_a_picture) {
  const QImage without = drawn(Control::imageBrowser);
  EXPECT_EQ(judged({.kind = Kind::whole, .percent = {}}), without);
}

TEST(PhotoBadge, tells_how_much_is_intact) {
  EXPECT_EQ(badge_text({}), QString());
  EXPECT_EQ(badge_text({.kind = Kind::whole, .percent = {}}), u"\u2713"_s);
  EXPECT_EQ(badge_text({.kind = Kind::partly, .percent = 62}), u"62 %"_s);
  EXPECT_EQ(badge_text({.kind = Kind::partly, .percent = 0}), u"0 %"_s);
  EXPECT_EQ(badge_text({.kind = Kind::partly, .percent = {}}), u"Partly"_s);
  EXPECT_EQ(badge_text({.kind = Kind::embedded_only, .percent = {}}), u"Preview"_s);
}

TEST(PhotoBadge, has_a_sentence_for_the_tool_tip) {
  EXPECT_EQ(badge_sentence({}), QString());
  EXPECT_EQ(badge_sentence({.kind = Kind::whole, .percent = {}}),
            u"The whole picture can be decoded."_s);
  EXPECT_EQ(badge_sentence({.kind = Kind::partly, .percent = 62}),
            u"About 62 percent of the picture can be decoded."_s);
  EXPECT_EQ(badge_sentence({.kind = Kind::partly, .percent = {}}),
            u"Only a part of the picture can be decoded."_s);
  EXPECT_EQ(badge_sentence({.kind = Kind::embedded_only, .percent = {}}),
            u"Only the small preview inside the file can be decoded."_s);
}

TEST_F(DrawnPhotosTest, a_screen_with_twice_the_pixels_gets_a_picture_with_more_of_them) {
  window->set_value(Control::imageBrowser, 0);
  ASSERT_EQ(find<ResultView>(Control::imageBrowser).picture_size(), 72);
  add_photo(u"2");
  drawn(Control::imageBrowser, 1);
  EXPECT_EQ(thumbnails.requests.back().pixels, 128);
  drawn(Control::imageBrowser, 2);
  EXPECT_EQ(thumbnails.requests.back().pixels, 256) << "for 144 pixels";
}

class DrawnFilesTest : public DrawnItemsTest {
 protected:
  void SetUp() override { show({Control::imageBrowser_2}); }

  void add_file(const char* path) {
    gallery.addImageWithPath_2(path, u" ", u"1");
    wait_for_item(Control::imageBrowser_2);
  }

  static QImage ink(const QImage& image) {
    return image.copy(
        bounds(image, [&](int x, int y) { return image.pixel(x, y) != qRgb(255, 255, 255); }));
  }
};

TEST_F(DrawnFilesTest, a_file_has_the_icon_of_its_type_in_16_points) {
  add_file("/nowhere/a.mov");
  for (const double ratio : {1.0, 2.0}) {
    QImage icon = blank({16, 16}, ratio);
    QPainter(&icon).drawPixmap(QPointF(), type_icon(u"mov"_s, 16, ratio));
    const QImage shown = ink(drawn(Control::imageBrowser_2, ratio));
    EXPECT_EQ(shown, ink(icon)) << "at " << ratio;
    EXPECT_GE(shown.height(), 15 * ratio);
  }
}

}  // namespace
}  // namespace norvo
