// Photos that exist in memory only, and the placeholder.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "results/Gallery.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::span<const std::byte> bytes_of(const std::string& text) {
  return std::as_bytes(std::span(text));
}

std::string text_of(const ImageData& data) {
  if (!data) return "none";
  return {reinterpret_cast<const char*>(data->data()), data->size()};
}

// Makes "small <bytes>" of what it is given, but nothing of what is broken.
class FakeMaker final : public ThumbnailMaker {
 public:
  std::vector<std::string> asked;

  std::vector<std::byte> png_thumbnail(std::span<const std::byte> encoded,
                                       std::uint32_t pixels) override {
    const std::string given(reinterpret_cast<const char*>(encoded.data()), encoded.size());
    asked.push_back(given + " at " + std::to_string(pixels));
    if (given == "broken") return {};
    const std::string made = "small " + given;
    const auto bytes = bytes_of(made);
    return {bytes.begin(), bytes.end()};
  }
};

class GalleryData : public testing::Test {
 protected:
  GalleryData() {
    write_file(placeholder_, "placeholder");
    gallery_.load_placeholder(placeholder_);
  }

  ItemReport add(const std::string& bytes) {
    return gallery_.addImageWithData(bytes_of(bytes), u"a.jpg", u"uid", maker_);
  }
  void fill() {
    for (std::uint64_t i = 0; i < Gallery::item_limit; ++i) {
      gallery_.addImageWithPath("/d/a.jpg", u"a.jpg", u"other");
    }
  }

  TemporaryFolder folder_;
  std::filesystem::path placeholder_ = folder_.path() / "NoPreview.png";
  FakeMaker maker_;
  Gallery gallery_;
};

TEST_F(GalleryData, IsAnItemWithAThumbnailOfTheBytes) {
  EXPECT_TRUE(add("photo").item_added);
  ASSERT_EQ(gallery_.size(), 1U);
  const MyImageObject item = *gallery_.item(0);
  EXPECT_EQ(text_of(item.imageData), "small photo");
  EXPECT_EQ(item.image_Name, u"a.jpg");
  EXPECT_EQ(item.image_UID, u"uid");
  EXPECT_TRUE(item.path.empty());
  EXPECT_EQ(gallery_.Shown_Item_Count(), 1U);
  EXPECT_THAT(maker_.asked, ElementsAre("photo at 100"));
}

TEST_F(GalleryData, HasThePlaceholdersBytesWithoutAThumbnail) {
  EXPECT_TRUE(add("broken").item_added);
  EXPECT_EQ(text_of(gallery_.item(0)->imageData), "placeholder");
  EXPECT_EQ(gallery_.Shown_Item_Count(), 1U);
}

TEST_F(GalleryData, WithoutBytesAddsNothing) {
  EXPECT_FALSE(add("").item_added);
  EXPECT_EQ(gallery_.size(), 0U);
  EXPECT_EQ(gallery_.Shown_Item_Count(), 0U);
  EXPECT_THAT(maker_.asked, IsEmpty());
}

TEST_F(GalleryData, ScrollsToTheLastItemAtEverySixthCount) {
  std::string scrolled;
  for (int i = 0; i < 13; ++i) scrolled += add("photo").scroll_to_last ? 'S' : '.';
  EXPECT_EQ(scrolled, ".....S.....S.");
}

TEST_F(GalleryData, IsOnlyCountedByAFullList) {
  fill();
  EXPECT_FALSE(add("photo").item_added);
  EXPECT_FALSE(add("").item_added);
  EXPECT_EQ(gallery_.size(), 2000U);
  EXPECT_EQ(gallery_.Shown_Item_Count(), 2002U);
  EXPECT_THAT(maker_.asked, IsEmpty()) << "nobody would see it";
}

TEST_F(GalleryData, IsIgnoredWhenTheCountIsFullThoughTheListIsNot) {
  fill();
  gallery_.empty_images();
  EXPECT_FALSE(add("photo").item_added);
  EXPECT_EQ(gallery_.size(), 0U);
  EXPECT_EQ(gallery_.Shown_Item_Count(), 2000U);
}

TEST_F(GalleryData, OfAPhotoThatCannotBeShownIsThePlaceholdersUnderItsName) {
  gallery_.addImageWithPath("/d/a.jpg", u"a.jpg", u"1");
  gallery_.addImageWithPath("/d/b.jpg", u"b.jpg", u"2");
  gallery_.show_placeholder(u"2");
  gallery_.show_placeholder(u"3");
  const MyImageObject item = *gallery_.item(1);
  EXPECT_EQ(text_of(item.imageData), "placeholder");
  EXPECT_EQ(item.path, placeholder_);
  EXPECT_EQ(item.image_Name, u"b.jpg");
  EXPECT_EQ(item.image_UID, u"2");
  EXPECT_EQ(*gallery_.item(0), MyImageObject::initWithImage_Path("/d/a.jpg", u"a.jpg", u"1"));
}

TEST_F(GalleryData, IsEmptyWhenThePlaceholderIsMissing) {
  Gallery gallery;
  gallery.load_placeholder(folder_.path() / "missing");
  const std::string broken = "broken";
  EXPECT_TRUE(gallery.addImageWithData(bytes_of(broken), u"a", u"1", maker_).item_added);
  EXPECT_EQ(text_of(gallery.item(0)->imageData), "");
}

}  // namespace
}  // namespace norvo::test
