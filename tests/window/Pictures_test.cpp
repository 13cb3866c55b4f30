#include <QImage>
#include <QPalette>
#include <filesystem>
#include <fstream>

#include "platform/qt/Icons.h"
#include "platform/qt/QtMainThread.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TypeIcons.h"
#include "support/TemporaryFolder.h"
#include "window/InProcessThumbnails.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

class InProcessThumbnailsTest : public testing::Test {
 protected:
  InProcessThumbnailsTest() {
    QObject::connect(&source, &ThumbnailSource::done, &source,
                     [this](const QString& image_UID, const QImage& picture, int pixels) {
                       names.push_back(image_UID.toStdString());
                       sizes.push_back(pixels);
                       pictures.push_back(picture);
                     });
  }

  std::filesystem::path picture_file(int width, int height) const {
    const std::filesystem::path path = folder.path() / "picture.png";
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    EXPECT_TRUE(picture.save(QString::fromStdString(path.string())));
    return path;
  }

  test::TemporaryFolder folder;
  QtMainThread main_thread;
  InProcessThumbnails source{main_thread};
  std::vector<std::string> names;
  std::vector<QImage> pictures;
  std::vector<int> sizes;
};

TEST_F(InProcessThumbnailsTest, a_picture_keeps_its_shape_within_the_wanted_size) {
  source.request(picture_file(400, 200), u"wide"_s, 100);
  ASSERT_TRUE(wait_until([this] { return names.size() == 1; }));
  EXPECT_EQ(names.front(), "wide");
  EXPECT_EQ(pictures.front().size(), QSize(100, 50));
  EXPECT_EQ(sizes.front(), 100);
}

TEST_F(InProcessThumbnailsTest, a_small_picture_is_not_enlarged) {
  source.request(picture_file(40, 20), u"small"_s, 100);
  ASSERT_TRUE(wait_until([this] { return names.size() == 1; }));
  EXPECT_EQ(pictures.front().size(), QSize(40, 20));
}

TEST_F(InProcessThumbnailsTest, what_is_no_picture_is_a_failure) {
  const std::filesystem::path path = folder.path() / "broken.jpg";
  std::ofstream(path) << "\xff\xd8\xff\xe0 no picture";
  source.request(path, u"broken"_s, 100);
  source.request("/nowhere/at/all.jpg", u"missing"_s, 100);
  ASSERT_TRUE(wait_until([this] { return names.size() == 2; }));
  EXPECT_TRUE(pictures[0].isNull());
  EXPECT_TRUE(pictures[1].isNull());
}

TEST_F(InProcessThumbnailsTest, nothing_comes_of_cancelled_requests) {
  const std::filesystem::path path = picture_file(400, 200);
  for (int i = 0; i < 20; ++i) source.request(path, u"old"_s, 100);
  source.cancel_all();
  source.request(path, u"new"_s, 100);
  ASSERT_TRUE(wait_until([this] { return !names.empty(); }));
  EXPECT_EQ(names, std::vector<std::string>{"new"});
}

TEST(TypeIcons, families_go_by_the_extension_in_any_case) {
  EXPECT_EQ(family_of(u"JPG"_s), TypeFamily::photo);
  EXPECT_EQ(family_of(u"cr3"_s), TypeFamily::raw);
  EXPECT_EQ(family_of(u"Mp4"_s), TypeFamily::video);
  EXPECT_EQ(family_of(u"wav"_s), TypeFamily::audio);
  EXPECT_EQ(family_of(u"pdf"_s), TypeFamily::document);
  for (const QString& other : {u""_s, u"dat"_s, u"jpg png"_s, u"p"_s}) {
    EXPECT_EQ(family_of(other), TypeFamily::generic) << other.toStdString();
  }
}

TEST(TypeIcons, have_the_pixels_that_the_screen_needs) {
  EXPECT_EQ(type_icon(u"mov"_s, 20, 2).size(), QSize(40, 40));
  EXPECT_NE(type_icon(u"mov"_s, 20, 1).toImage(), type_icon(u"mp4"_s, 20, 1).toImage());
}

TEST(Icons, are_all_there) {
  for (const QString& name :
       {u"photo"_s, u"video"_s, u"raw"_s, u"audio"_s, u"document"_s, u"card"_s, u"drive"_s,
        u"check"_s, u"mail"_s, u"play"_s, u"pause"_s, u"information"_s, u"question"_s}) {
    EXPECT_FALSE(icon_pixmap(name, 32, Qt::red, 1).isNull()) << name.toStdString();
  }
  EXPECT_FALSE(program_icon().pixmap(64, 64).isNull());
  EXPECT_FALSE(no_preview_picture().isNull());
}

class ThemeTest : public testing::TestWithParam<std::pair<QColor, QColor>> {};

TEST_P(ThemeTest, texts_can_be_read_and_edges_be_seen) {
  QPalette palette(GetParam().first);
  palette.setColor(QPalette::Base, GetParam().second);
  const Theme theme = Theme::of(palette);
  for (const QColor& ground : {theme.window, theme.surface}) {
    EXPECT_GE(contrast(theme.text, ground), 4.5);
    EXPECT_GE(contrast(theme.quiet_text, ground), 4.5);
    EXPECT_GE(contrast(theme.accent, ground), 4.5);
    EXPECT_GE(contrast(theme.strong_border, ground), 3);
  }
  EXPECT_GE(contrast(theme.on_accent, theme.accent), 4.5);
  EXPECT_GE(contrast(theme.text, theme.accent_tint), 4.5);
  EXPECT_GE(contrast(theme.quiet_text, theme.accent_tint), 4.5);
}

INSTANTIATE_TEST_SUITE_P(Palettes, ThemeTest,
                         testing::Values(std::pair{QColor(239, 239, 239), QColor(255, 255, 255)},
                                         std::pair{QColor(255, 255, 255), QColor(246, 246, 246)},
                                         std::pair{QColor(35, 37, 40), QColor(45, 48, 52)},
                                         std::pair{QColor(0, 0, 0), QColor(20, 20, 20)}));

TEST(Theme, the_style_sheet_has_a_colour_for_every_place) {
  const QString sheet = style_sheet(Theme::current());
  EXPECT_FALSE(sheet.isEmpty());
  EXPECT_FALSE(sheet.contains(u'@'));
}

}  // namespace
}  // namespace norvo
