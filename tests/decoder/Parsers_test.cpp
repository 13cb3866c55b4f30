// Orientation, scaling and what is read of file headers.
#include <gtest/gtest.h>

#include <string>

#include "platform/decoder/formats/Exif.h"
#include "platform/decoder/formats/Orientation.h"
#include "platform/decoder/formats/PictureFormat.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo::test {
namespace {

using namespace std::string_literals;

Bytes bytes_of(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// As stored by a camera held each way, of the upright picture 1 2 3 / 4 5 6.
TEST(Orientation, TurnsAllEightUpright) {
  const Picture expected{.size = {.width = 3, .height = 2}, .pixels = {1, 2, 3, 4, 5, 6}};
  const std::vector<Picture> stored{
      {.size = {.width = 3, .height = 2}, .pixels = {1, 2, 3, 4, 5, 6}},
      {.size = {.width = 3, .height = 2}, .pixels = {3, 2, 1, 6, 5, 4}},
      {.size = {.width = 3, .height = 2}, .pixels = {6, 5, 4, 3, 2, 1}},
      {.size = {.width = 3, .height = 2}, .pixels = {4, 5, 6, 1, 2, 3}},
      {.size = {.width = 2, .height = 3}, .pixels = {1, 4, 2, 5, 3, 6}},
      {.size = {.width = 2, .height = 3}, .pixels = {3, 6, 2, 5, 1, 4}},
      {.size = {.width = 2, .height = 3}, .pixels = {6, 3, 5, 2, 4, 1}},
      {.size = {.width = 2, .height = 3}, .pixels = {4, 1, 5, 2, 6, 3}}};
  for (std::uint32_t number = 1; number <= 8; ++number) {
    EXPECT_EQ(upright(stored[number - 1], orientation_of(number)), expected) << number;
  }
  EXPECT_EQ(orientation_of(0), Orientation::upright);
  EXPECT_EQ(orientation_of(9), Orientation::upright);
}

TEST(RowScaler, FitsTheBoxAndNeverEnlarges) {
  const PictureSize box{.width = 100, .height = 100};
  EXPECT_EQ(fitted({.width = 4000, .height = 3000}, box),
            (PictureSize{.width = 100, .height = 75}));
  EXPECT_EQ(fitted({.width = 3000, .height = 4000}, box),
            (PictureSize{.width = 75, .height = 100}));
  EXPECT_EQ(fitted({.width = 10, .height = 20}, box), (PictureSize{.width = 10, .height = 20}));
  EXPECT_EQ(fitted({.width = 100000, .height = 1}, box), (PictureSize{.width = 100, .height = 1}));
}

TEST(RowScaler, AveragesAreas) {
  // Two by two blocks, and a part of a pixel where the sides do not divide.
  RowScaler halves({.width = 4, .height = 2}, {.width = 2, .height = 1});
  halves.add(std::vector<std::uint32_t>{0xFF000000, 0xFF0000FF, 0, 0});
  halves.add(std::vector<std::uint32_t>{0xFF000000, 0xFF0000FF, 0, 0xFFFFFFFF});
  EXPECT_EQ(halves.finish().pixels, (std::vector<std::uint32_t>{0xFF000080, 0x40404040}));

  RowScaler thirds({.width = 3, .height = 1}, {.width = 2, .height = 1});
  thirds.add(std::vector<std::uint32_t>{0xFF000000, 0xFF000096, 0xFF000000});
  EXPECT_EQ(thirds.finish().pixels, (std::vector<std::uint32_t>{0xFF000032, 0xFF000032}));
}

TEST(RowScaler, AnEvenPictureStaysEvenInEverySize) {
  for (std::uint32_t side = 1; side <= 97; side += 4) {
    for (std::uint32_t target = 1; target <= side; target += 3) {
      RowScaler scaler({.width = side, .height = side}, {.width = target, .height = target});
      const std::vector<std::uint32_t> row(side, 0xFF204060);
      for (std::uint32_t y = 0; y < side; ++y) scaler.add(row);
      for (const std::uint32_t pixel : scaler.finish().pixels) {
        ASSERT_EQ(pixel, 0xFF204060) << side << " to " << target;
      }
    }
  }
}

TEST(RowScaler, RowsThatNeverCameAreTransparent) {
  RowScaler scaler({.width = 2, .height = 8}, {.width = 1, .height = 4});
  for (int y = 0; y < 3; ++y) scaler.add(std::vector<std::uint32_t>{0xFFFFFFFF, 0xFFFFFFFF});
  EXPECT_EQ(scaler.finish().pixels, (std::vector<std::uint32_t>{0xFFFFFFFF, 0x80808080, 0, 0}));
}

TEST(PictureFormat, RawFilesAreToldFromOtherTiffFiles) {
  const std::string tiff = "II*\0\x08\0\0\0\0\0\0\0\0\0"s;
  using Formats = std::vector<PictureFormat>;
  EXPECT_EQ(possible_formats(bytes_of(tiff), "tif"),
            (Formats{PictureFormat::tiff, PictureFormat::raw}));
  EXPECT_EQ(possible_formats(bytes_of(tiff), "nef"),
            (Formats{PictureFormat::raw, PictureFormat::tiff}));
  const std::string dng = "II*\0\x08\0\0\0\x01\0\x12\xC6\x01\0\x04\0\0\0\x01\x04\0\0\0\0\0\0"s;
  EXPECT_EQ(possible_formats(bytes_of(dng), "tif"),
            (Formats{PictureFormat::raw, PictureFormat::tiff}));
  EXPECT_EQ(possible_formats(bytes_of("\0\0\0\x18"s + "ftypcrx "), ""),
            (Formats{PictureFormat::raw}));
  EXPECT_TRUE(possible_formats(bytes_of("<svg/>"s), "svg").empty());
}

TEST(PictureFormat, BoxesEndWhereForeignDataBegins) {
  const std::string boxes = "\0\0\0\x0C"s + "ftypheic" + "\0\0\0\x09"s + "mdat!";
  EXPECT_EQ(length_of_boxes(bytes_of(boxes)), boxes.size());
  EXPECT_EQ(length_of_boxes(bytes_of(boxes + std::string(600, '\0'))), boxes.size());
  EXPECT_EQ(length_of_boxes(bytes_of(boxes + std::string(600, '\xA7'))), boxes.size());
  EXPECT_EQ(length_of_boxes(bytes_of(boxes.substr(0, 15))), 12U);
}

TEST(PictureFormat, AGifIsCompleteWithTheLastBlockOfItsPicture) {
  const std::string head = "GIF89a\1\0\1\0\0\0\0"s + "\x2C" + std::string(9, '\0') + "\2";
  EXPECT_TRUE(gif_picture_is_complete(bytes_of(head + "\2\x4C\1\0"s)));
  EXPECT_FALSE(gif_picture_is_complete(bytes_of(head + "\2\x4C\1"s)));
  EXPECT_FALSE(gif_picture_is_complete(bytes_of(head + "\xFF\x4C\1"s)));
  EXPECT_FALSE(gif_picture_is_complete(bytes_of("GIF89a"s)));
}

}  // namespace
}  // namespace norvo::test
