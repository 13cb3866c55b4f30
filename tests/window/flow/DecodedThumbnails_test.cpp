// Thumbnails of photos in memory, made by the decoder that people get, as the gallery takes them.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QBuffer>
#include <QImage>
#include <atomic>
#include <cstring>

#include "platform/qt/DecodedThumbnailMaker.h"
#include "results/Gallery.h"
#include "support/ChildPolicies.h"
#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

class DecodedThumbnails : public testing::Test {
 protected:
  static QByteArray encoded(const char* format, int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(QColor(200, 30, 60));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(picture.save(&buffer, format));
    return bytes;
  }

  std::vector<std::byte> made_of(const QByteArray& bytes) {
    return maker_.png_thumbnail(std::as_bytes(std::span(bytes)), 100);
  }

  static QImage read(const std::vector<std::byte>& png) {
    return QImage::fromData(
        QByteArrayView(reinterpret_cast<const char*>(png.data()), std::ssize(png)), "PNG");
  }

  DecodedThumbnailMaker maker_{NORVO_DECODER};
};

TEST_F(DecodedThumbnails, AreSmallPngsOfThePicture) {
  for (const char* format : {"JPEG", "PNG"}) {
    const QImage small = read(made_of(encoded(format, 400, 200)));
    ASSERT_EQ(small.size(), QSize(100, 50)) << format;
    const QColor colour = small.pixelColor(50, 25);
    EXPECT_NEAR(colour.red(), 200, 4);
    EXPECT_NEAR(colour.green(), 30, 4);
    EXPECT_NEAR(colour.blue(), 60, 4);
  }
}

TEST_F(DecodedThumbnails, AreNotMadeOfWhatIsNoPicture) {
  EXPECT_TRUE(made_of("\xff\xd8\xff\xe0 no picture").empty());
  EXPECT_TRUE(made_of("").empty());
}

TEST_F(DecodedThumbnails, AreNotMadeWithoutADecoder) {
  DecodedThumbnailMaker without("/nowhere/norvo-decoder");
  const QByteArray bytes = encoded("PNG", 10, 10);
  EXPECT_TRUE(without.png_thumbnail(std::as_bytes(std::span(bytes)), 100).empty());
}

TEST_F(DecodedThumbnails, AreTheBytesOfTheGallerysItem) {
  Gallery gallery;
  const QByteArray bytes = encoded("JPEG", 50, 200);
  EXPECT_TRUE(
      gallery.addImageWithData(std::as_bytes(std::span(bytes)), u"a", u"1", maker_).item_added);
  EXPECT_EQ(read(*gallery.item(0)->imageData).size(), QSize(25, 100));
}

// Photos at its begin and, once `more` is set, again and again; the search does not reach its end
// during a test.
test::FakeMedium large_card(const std::atomic<bool>& more) {
  constexpr std::uint64_t distance = sector_size << 20U;  // between photos that come later
  test::FakeMedium medium;
  medium.made_sectors = std::uint64_t{1} << 36;
  medium.sector = [photos = test::card_with_photos(9), &more](std::uint64_t number,
                                                              std::span<std::byte> sector) {
    std::memset(sector.data(), 0, sector.size());
    const std::uint64_t begin = number * sector_size;
    const std::uint64_t place = more ? begin % distance : begin;
    if (place < photos.size()) std::memcpy(sector.data(), &photos[place], sector_size);
  };
  return medium;
}

// Each picture is asked for when it is first drawn. So that some are left to ask for after the
// search, however quick the decoders are, photos are found while nothing is drawn.
TEST_F(DecodedThumbnails, ComeAfterTheSearchWhileItRuns) {
  const test::NewDecoders decoders;
  std::atomic<bool> more = false;
  test::FakeMedium medium = large_card(more);
  test::WindowFlow flow(medium);
  flow.select_drive();
  flow.click(Control::next_btn);
  flow.choose_destination();
  flow.click(Control::next_btn);
  ASSERT_TRUE(flow.wait_until([&] { return decoders.any_has_policy(SCHED_IDLE); }));
  auto* const gallery = qobject_cast<QAbstractItemView*>(&flow.widget(Control::imageBrowser));
  gallery->setUpdatesEnabled(false);
  more = true;
  ASSERT_TRUE(flow.wait_until([&] { return gallery->model()->rowCount() > 9; }));
  flow.dialogs.expect("alert", "Yes");
  flow.dialogs.expect("SaveFile_Info", "OK_Btn");
  flow.click(Control::stop_scan);
  ASSERT_TRUE(flow.wait_until([&] { return flow.is_enabled(Control::back_btn); }));
  gallery->setUpdatesEnabled(true);
  gallery->scrollToBottom();
  EXPECT_TRUE(flow.wait_until([&] { return decoders.any_has_policy(SCHED_OTHER); }));
}

}  // namespace
}  // namespace norvo
