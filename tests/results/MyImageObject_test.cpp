// The three ways to make an item, and what a view shows of it.
#include "results/MyImageObject.h"

#include <gtest/gtest.h>

#include <string>

namespace norvo::test {
namespace {

std::span<const std::byte> span_of(const std::string& text) {
  return std::as_bytes(std::span(text));
}

TEST(MyImageObject, OfAPathHasPathNameAndIdentifierOnly) {
  EXPECT_EQ(MyImageObject::initWithImage_Path("/d/a.jpg", u"a.jpg", u"GND00001.jpg"),
            (MyImageObject{.imageData = nullptr,
                           .path = "/d/a.jpg",
                           .image = {},
                           .image_Name = u"a.jpg",
                           .image_UID = u"GND00001.jpg",
                           .File_Start_Sector = 0,
                           .File_End_Sector = 0}));
}

TEST(MyImageObject, OfDataOwnsACopyOfTheBytes) {
  std::string bytes = "picture";
  const auto item = MyImageObject::initWithImage_data(span_of(bytes), u"a.jpg", u"uid");
  bytes = "changed";
  ASSERT_NE(item.imageData, nullptr);
  const std::string kept = "picture";
  EXPECT_TRUE(std::ranges::equal(*item.imageData, span_of(kept)));
  EXPECT_EQ(item.image_Name, u"a.jpg");
  EXPECT_EQ(item.image_UID, u"uid");
  EXPECT_TRUE(item.path.empty());
}

TEST(MyImageObject, OfAnImageKeepsItsSectors) {
  const auto item = MyImageObject::initWithImage({.file_type = u"MOV", .points = 16}, u"a.MOV",
                                                 u"uid", 7, 1ULL << 40U);
  EXPECT_EQ(item.image, (IconImage{.file_type = u"MOV", .points = 16}));
  EXPECT_EQ(item.image_Name, u"a.MOV");
  EXPECT_EQ(item.image_UID, u"uid");
  EXPECT_EQ(item.File_Start_Sector, 7U);
  EXPECT_EQ(item.File_End_Sector, 1ULL << 40U);
  EXPECT_TRUE(item.path.empty());
}

TEST(MyImageObject, TakesAnotherPath) {
  auto item = MyImageObject::initWithImage_Path("/d/a.jpg", u"a.jpg", u"uid");
  item.setPath("/app/NoPreview.png");
  EXPECT_EQ(item.path, "/app/NoPreview.png");
  EXPECT_EQ(item.image_Name, u"a.jpg");
}

TEST(Representation, OfAPhotoIsItsFile) {
  for (const char* path : {"/d/a.jpg", "/d/NoPreview.png/a.jpg", "/d/nopreview.png",
                           "/d/NoPreview.png.jpg", "/d/xNoPreview.png"}) {
    EXPECT_EQ(representation_type(0, path), Representation::file_path) << path;
  }
}

TEST(Representation, OfAPhotoWithoutAPictureFileIsItsData) {
  for (const char* path : {"/app/NoPreview.png", "NoPreview.png", ""}) {
    EXPECT_EQ(representation_type(0, path), Representation::data_buffer) << path;
  }
}

TEST(Representation, OfEveryOtherResultIsItsIcon) {
  for (const std::int32_t mode : {1, 2, 3}) {
    for (const char* path : {"/d/a.MOV", "/app/NoPreview.png", ""}) {
      EXPECT_EQ(representation_type(mode, path), Representation::image) << mode << path;
    }
  }
}

}  // namespace
}  // namespace norvo::test
