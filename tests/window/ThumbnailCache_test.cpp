#include "platform/qt/ThumbnailCache.h"

#include <QBuffer>
#include <QImage>

#include "window/WindowTest.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

QImage picture_of(int width, int height) {
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(Qt::darkCyan);
  return picture;
}

TEST(ThumbnailCache, asks_once_and_again_only_for_a_larger_size) {
  SilentThumbnails source;
  ThumbnailCache cache(source, {});
  EXPECT_TRUE(cache.picture("/a", u"1"_s, 128).isNull());
  EXPECT_TRUE(cache.picture("/a", u"1"_s, 128).isNull());
  EXPECT_EQ(source.requests.size(), 1U);
  QImage picture(128, 64, QImage::Format_RGB32);
  Q_EMIT source.done(u"1"_s, picture, 128);
  EXPECT_EQ(cache.picture("/a", u"1"_s, 128).size(), QSize(128, 64));
  EXPECT_EQ(source.requests.size(), 1U);
  EXPECT_EQ(cache.picture("/a", u"1"_s, 256).size(), QSize(128, 64));
  EXPECT_EQ(source.requests.size(), 2U);
}

TEST(ThumbnailCache, puts_first_what_is_looked_at_and_not_there_yet) {
  SilentThumbnails source;
  ThumbnailCache cache(source, {});
  cache.picture("/a", u"1"_s, 128);
  cache.picture("/b", u"2"_s, 128);
  EXPECT_TRUE(source.put_forward.empty());
  cache.picture("/a", u"1"_s, 128);
  EXPECT_EQ(source.put_forward, std::vector{u"1"_s});
  Q_EMIT source.done(u"1"_s, picture_of(128, 64), 128);
  cache.picture("/a", u"1"_s, 128);
  EXPECT_EQ(source.put_forward, std::vector{u"1"_s});
}

TEST(ThumbnailCache, asks_again_for_what_was_postponed_when_it_is_drawn_again) {
  SilentThumbnails source;
  int failures = 0;
  ThumbnailCache cache(source, [&failures](TextView) { ++failures; });
  int arrivals = 0;
  cache.on_arrival([&arrivals](const QString&) { ++arrivals; });
  cache.picture("/a", u"1"_s, 128);
  Q_EMIT source.postponed(u"1"_s, 128);
  EXPECT_EQ(source.requests.size(), 1U);
  EXPECT_EQ(arrivals, 0);
  EXPECT_EQ(failures, 0);
  EXPECT_FALSE(cache.failed(u"1"_s));
  cache.picture("/a", u"1"_s, 128);
  EXPECT_EQ(source.requests.size(), 2U);
}

TEST(ThumbnailCache, a_picture_for_an_item_that_is_gone_is_dropped) {
  SilentThumbnails source;
  int failures = 0;
  ThumbnailCache cache(source, [&failures](TextView) { ++failures; });
  cache.picture("/a", u"1"_s, 128);
  cache.forget(u"1"_s);
  Q_EMIT source.done(u"1"_s, QImage(), 128);
  EXPECT_EQ(failures, 0);
  EXPECT_FALSE(cache.failed(u"1"_s));
}

TEST(ThumbnailCache, an_item_that_is_shown_from_data_needs_no_source) {
  SilentThumbnails source;
  ThumbnailCache cache(source, {});
  QByteArray png;
  QBuffer buffer(&png);
  QImage picture(30, 20, QImage::Format_RGB32);
  picture.fill(Qt::darkCyan);
  ASSERT_TRUE(picture.save(&buffer, "PNG"));
  const auto bytes = std::as_bytes(std::span(png));
  const ImageData data = MyImageObject::initWithImage_data(bytes, u"", u"").imageData;
  EXPECT_EQ(cache.picture(data, u"1"_s).size(), QSize(30, 20));
  EXPECT_EQ(cache.picture(data, u"1"_s).cacheKey(), cache.picture(data, u"1"_s).cacheKey());
  EXPECT_TRUE(cache.picture(nullptr, u"2"_s).isNull());
  const auto no_picture = MyImageObject::initWithImage_data(bytes.first(4), u"", u"").imageData;
  EXPECT_TRUE(cache.picture(no_picture, u"2"_s).isNull());
  EXPECT_TRUE(source.requests.empty());
}

// A tile that was enlarged while its picture was being made.
class ResizedTile : public testing::Test {
 protected:
  ResizedTile() {
    cache.picture("/a", u"1"_s, 128);
    cache.picture("/a", u"1"_s, 256);
    EXPECT_EQ(source.requests.size(), 2U);
  }

  QSize shown() { return cache.picture("/a", u"1"_s, 256).size(); }

  SilentThumbnails source;
  int failures = 0;
  ThumbnailCache cache{source, [this](TextView) { ++failures; }};
};

TEST_F(ResizedTile, gets_the_large_picture_after_the_small_one) {
  Q_EMIT source.done(u"1"_s, picture_of(128, 64), 128);
  EXPECT_EQ(shown(), QSize(128, 64)) << "until the large one is there";
  EXPECT_EQ(source.requests.size(), 2U) << "which is being made";
  Q_EMIT source.done(u"1"_s, picture_of(256, 128), 256);
  EXPECT_EQ(shown(), QSize(256, 128));
  EXPECT_EQ(source.requests.size(), 2U);
}

TEST_F(ResizedTile, keeps_the_large_picture_when_the_small_one_comes_late) {
  Q_EMIT source.done(u"1"_s, picture_of(256, 128), 256);
  Q_EMIT source.done(u"1"_s, picture_of(128, 64), 128);
  EXPECT_EQ(shown(), QSize(256, 128));
  EXPECT_EQ(source.requests.size(), 2U);
}

TEST_F(ResizedTile, keeps_the_large_picture_when_the_small_one_cannot_be_made) {
  Q_EMIT source.done(u"1"_s, picture_of(256, 128), 256);
  Q_EMIT source.done(u"1"_s, QImage(), 128);
  EXPECT_EQ(shown(), QSize(256, 128));
  EXPECT_EQ(failures, 0);
}

TEST_F(ResizedTile, fails_once_when_neither_can_be_made) {
  Q_EMIT source.done(u"1"_s, QImage(), 128);
  Q_EMIT source.done(u"1"_s, QImage(), 256);
  EXPECT_EQ(failures, 1);
  EXPECT_TRUE(cache.failed(u"1"_s));
}

TEST_F(ResizedTile, shows_nothing_of_a_photo_whose_large_picture_failed) {
  Q_EMIT source.done(u"1"_s, picture_of(128, 64), 128);
  Q_EMIT source.done(u"1"_s, QImage(), 256);
  EXPECT_TRUE(cache.failed(u"1"_s));
  EXPECT_TRUE(cache.picture(nullptr, u"1"_s).isNull()) << "not even where the placeholder belongs";
}

TEST(ThumbnailCache, keeps_the_judgement_of_an_item_until_it_is_forgotten) {
  SilentThumbnails source;
  std::vector<std::string> arrived;
  ThumbnailCache cache(source, {});
  cache.on_arrival([&](const QString& image_UID) { arrived.push_back(image_UID.toStdString()); });
  for (const QString& image_UID : {u"a"_s, u"b"_s}) cache.picture("/a", image_UID, 128);
  EXPECT_EQ(cache.judgement(u"a"_s).kind, PictureJudgement::Kind::unknown);
  Q_EMIT source.judged(u"a"_s, {.kind = PictureJudgement::Kind::partly, .percent = 62});
  Q_EMIT source.judged(u"b"_s, {.kind = PictureJudgement::Kind::whole, .percent = {}});
  EXPECT_EQ(arrived, (std::vector<std::string>{"a", "b"})) << "they are drawn anew";
  EXPECT_EQ(cache.judgement(u"a"_s).percent, 62);
  EXPECT_EQ(cache.judgement(u"b"_s).kind, PictureJudgement::Kind::whole);
  cache.forget(u"a"_s);
  EXPECT_EQ(cache.judgement(u"a"_s).kind, PictureJudgement::Kind::unknown);
  cache.forget_all();
  EXPECT_EQ(cache.judgement(u"b"_s).kind, PictureJudgement::Kind::unknown);
}

TEST(ThumbnailCache, drops_the_judgement_of_an_item_that_is_gone) {
  SilentThumbnails source;
  int arrived = 0;
  ThumbnailCache cache(source, {});
  cache.on_arrival([&](const QString&) { ++arrived; });
  cache.picture("/a", u"1"_s, 128);
  cache.forget(u"1"_s);
  Q_EMIT source.judged(u"1"_s, {.kind = PictureJudgement::Kind::whole, .percent = {}});
  Q_EMIT source.judged(u"never heard of"_s, {.kind = PictureJudgement::Kind::whole, .percent = {}});
  EXPECT_EQ(cache.judgement(u"1"_s).kind, PictureJudgement::Kind::unknown);
  EXPECT_EQ(cache.judgement(u"never heard of"_s).kind, PictureJudgement::Kind::unknown);
  EXPECT_EQ(arrived, 0);
}

TEST(ThumbnailCache, keeps_the_judgement_when_the_picture_makes_room_for_others) {
  SilentThumbnails source;
  ThumbnailCache cache(source, {});
  const auto make = [&](const QString& image_UID) {
    cache.picture("/a", image_UID, 512);
    Q_EMIT source.done(image_UID, picture_of(512, 512), 512);
  };
  make(u"1"_s);
  for (int i = 0; i < 200; ++i) make(u"other %1"_s.arg(i));
  Q_EMIT source.judged(u"1"_s, {.kind = PictureJudgement::Kind::whole, .percent = {}});
  EXPECT_TRUE(cache.picture("/a", u"1"_s, 512).isNull()) << "as it was pushed out";
  EXPECT_EQ(cache.judgement(u"1"_s).kind, PictureJudgement::Kind::whole);
}

}  // namespace
}  // namespace norvo
