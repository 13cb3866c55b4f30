// Good pictures of every format, in this process.
#include "platform/decoder/formats/DecodePicture.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <ostream>

#include "decoder/PictureFiles.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr PictureSize box{.width = 100, .height = 100};

Decoded decode(const fs::path& path, DecoderPurpose purpose = DecoderPurpose::picture) {
  static const bool loaded = (load_decoders(std::uint64_t{512} << 20U), true);
  EXPECT_TRUE(loaded);
  const UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  EXPECT_TRUE(file) << path;
  const std::string extension = path.extension().native();
  const FileBytes bytes(file.get());
  return decode_picture(
      bytes,
      {.serial = 1,
       .purpose = purpose,
       .box = box,
       .extension = portable_extension(extension.empty() ? extension : extension.substr(1))});
}

struct Sample {
  const char* name;
  int tolerance;  // of a channel, for what the encoder loses
  bool in_grey = false;
};

std::ostream& operator<<(std::ostream& out, const Sample& sample) {
  return out << sample.name;
}

class GoodPicture : public ::testing::TestWithParam<Sample> {};

TEST_P(GoodPicture, HasItsColoursSizeAndVerdict) {
  const fs::path path = picture_folder() / GetParam().name;
  const Decoded decoded = decode(path);
  ASSERT_TRUE(decoded.picture);
  const bool is_icon = path.extension() == ".ico" || path.extension() == ".icns";
  EXPECT_EQ(decoded.picture->size, (PictureSize{.width = 100, .height = is_icon ? 100U : 63U}));
  EXPECT_EQ(decoded.picture->pixels.size(), 100U * (is_icon ? 100U : 63U));
  EXPECT_LE(distance_from_fields(*decoded.picture, GetParam().in_grey), GetParam().tolerance);
  const auto now = decoded.verdict.completeness;
  EXPECT_TRUE(now == Completeness::whole || now == Completeness::not_known);
  EXPECT_EQ(decode(path, DecoderPurpose::verdict).verdict.completeness, Completeness::whole);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, GoodPicture,
    ::testing::Values(
        Sample{"baseline.jpg", 8}, Sample{"noisy.jpg", 60}, Sample{"progressive.jpg", 60},
        Sample{"grey.jpg", 6, true}, Sample{"inks.jpg", 12}, Sample{"orientation1.jpg", 8},
        Sample{"orientation2.jpg", 8}, Sample{"orientation3.jpg", 8}, Sample{"orientation4.jpg", 8},
        Sample{"orientation5.jpg", 8}, Sample{"orientation6.jpg", 8}, Sample{"orientation7.jpg", 8},
        Sample{"orientation8.jpg", 8}, Sample{"thumbnail.jpg", 60}, Sample{"rgb.png", 0},
        Sample{"palette.png", 16}, Sample{"grey16.png", 2, true}, Sample{"noisy.png", 60},
        Sample{"rgb.gif", 16}, Sample{"rgb.bmp", 0}, Sample{"rgb.ico", 1}, Sample{"rgb.icns", 1},
        Sample{"rgb.ppm", 0}, Sample{"grey.pgm", 1, true}, Sample{"rgb.tga", 0},
        Sample{"plain.tif", 0}, Sample{"packed.tif", 60}, Sample{"turned.tif", 0},
        Sample{"rgb.webp", 12}, Sample{"lossless.webp", 60}, Sample{"rgb.jp2", 60},
        Sample{"stream.j2k", 12}, Sample{"rgb.heic", 12}, Sample{"rgb.avif", 12},
        Sample{"thumbnail.heic", 60}, Sample{"rgb.jxl", 2}, Sample{"large.jxl", 60},
        Sample{"plain.psd", 0}, Sample{"runs.psd", 0}, Sample{"grey.psd", 1, true},
        Sample{"inks.psd", 2}, Sample{"thumbnail.psd", 60}, Sample{"large.psb", 0},
        Sample{"orientation1.dng", 8}, Sample{"orientation6.dng", 8}, Sample{"rgb.xpm", 0},
        Sample{"rgb.mng", 60}));

TEST(DecodePicture, BitmapsOfOneBitAreBlackAndWhite) {
  for (const char* const name : {"bits.pbm", "bits.xbm"}) {
    const Decoded decoded = decode(picture_folder() / name);
    ASSERT_TRUE(decoded.picture) << name;
    // Yellow is brighter than blue, dithered.
    EXPECT_GT(colour_at(*decoded.picture, 12, 12)[0], colour_at(*decoded.picture, 4, 12)[0] + 60)
        << name;
  }
}

TEST(DecodePicture, ASmallPictureIsNotEnlarged) {
  const Decoded decoded = decode(picture_folder() / "tiny.jpg");
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.picture->size, (PictureSize{.width = 3, .height = 2}));
}

TEST(DecodePicture, ATransparentPictureKeepsItsAlpha) {
  const Decoded decoded = decode(picture_folder() / "transparent.png");
  ASSERT_TRUE(decoded.picture);
  EXPECT_TRUE(is_premultiplied(decoded.picture->pixels));
  EXPECT_EQ(decoded.picture->pixels[0] >> 24U, 128U);
  EXPECT_NEAR(static_cast<double>(decoded.picture->pixels[0] >> 16U & 0xFFU), 110, 2);
}

TEST(DecodePicture, TheContentDecidesAndNotTheExtension) {
  const TemporaryFolder folder;
  for (const char* const name : {"rgb.png", "rgb.heic", "plain.psd", "baseline.jpg"}) {
    const fs::path path = folder.path() / "file.tga";
    write_file(path, read_file(picture_folder() / name));
    EXPECT_TRUE(decode(path).picture) << name;
  }
}

TEST(DecodePicture, WhatLiesBehindARecoveredPictureDoesNotMatter) {
  const TemporaryFolder folder;
  for (const char* const name : {"baseline.jpg", "rgb.png", "rgb.gif", "rgb.heic", "rgb.avif",
                                 "rgb.jp2", "rgb.jxl", "rgb.webp", "plain.tif", "runs.psd"}) {
    // The last one begins like a box that is too short to be one.
    for (const std::string& behind :
         {std::string(5000, '\0'), std::string(5000, '\xA7'), "\0\0\0\3abcd"s + "more"}) {
      const fs::path path = folder.path() / name;
      write_file(path, read_file(picture_folder() / name) + behind);
      const Decoded decoded = decode(path);
      ASSERT_TRUE(decoded.picture) << name << static_cast<int>(behind.back());
      EXPECT_LE(distance_from_fields(*decoded.picture), 60) << name;
      EXPECT_EQ(decode(path, DecoderPurpose::verdict).verdict.completeness, Completeness::whole)
          << name << static_cast<int>(behind.back());
    }
  }
}

// Of these no verdict can be had.
TEST(DecodePicture, WhatLiesBehindAPictureWithoutAVerdictDoesNotMatterEither) {
  const TemporaryFolder folder;
  for (const char* const name : {"rgb.tga", "rgb.bmp", "rgb.ppm", "rgb.ico", "rgb.icns"}) {
    const fs::path path = folder.path() / name;
    write_file(path, read_file(picture_folder() / name) + std::string(980, '\xA7'));
    const Decoded decoded = decode(path);
    ASSERT_TRUE(decoded.picture) << name;
    EXPECT_LE(distance_from_fields(*decoded.picture), 1) << name;
  }
}

TEST(DecodePicture, ATgaFileOfTheFirstVersionHasNoFooter) {
  const TemporaryFolder folder;
  const std::string with_footer = read_file(picture_folder() / "rgb.tga");
  ASSERT_EQ(with_footer.substr(with_footer.size() - 18, 16), "TRUEVISION-XFILE");
  const fs::path path = folder.path() / "FIRST.TGA";
  write_file(path, with_footer.substr(0, with_footer.size() - 26));
  const Decoded decoded = decode(path);
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(distance_from_fields(*decoded.picture), 0);
}

TEST(DecodePicture, NoPictureAtAllIsNothing) {
  const TemporaryFolder folder;
  const fs::path path = folder.path() / "file.jpg";
  const std::string scalable = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
  for (const std::string& content :
       {std::string(), std::string("\xFF\xD8\xFF\xE0", 4), std::string(5000, 'x'), scalable}) {
    write_file(path, content);
    for (const auto purpose : {DecoderPurpose::picture, DecoderPurpose::verdict}) {
      const Decoded decoded = decode(path, purpose);
      EXPECT_FALSE(decoded.picture) << content.substr(0, 9);
      EXPECT_EQ(decoded.verdict, plain_verdict(Completeness::nothing)) << content.substr(0, 9);
    }
  }
}

}  // namespace
}  // namespace norvo::test
