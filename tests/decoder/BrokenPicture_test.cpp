// Pictures that are cut off or overwritten: what is shown of them, and what is said about them.
#include <fcntl.h>
#include <gtest/gtest.h>

#include "decoder/PictureFiles.h"
#include "platform/decoder/formats/DecodePicture.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;

class BrokenPicture : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { load_decoders(std::uint64_t{512} << 20U); }

  // The first `percent` of the file's bytes.
  static std::string cut(const std::string& name, std::size_t percent) {
    const std::string content = read_file(picture_folder() / name);
    return content.substr(0, content.size() * percent / 100);
  }

  Decoded decode(const std::string& name, const std::string& content, DecoderPurpose purpose) {
    const fs::path path = folder_.path() / name;
    write_file(path, content);
    const UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const FileBytes bytes(file.get());
    return decode_picture(bytes, {.serial = 1,
                                  .purpose = purpose,
                                  .box = {.width = 100, .height = 100},
                                  .extension = path.extension().native().substr(1)});
  }
  Decoded picture_of(const std::string& name, const std::string& content) {
    return decode(name, content, DecoderPurpose::picture);
  }
  Verdict verdict_of(const std::string& name, const std::string& content) {
    return decode(name, content, DecoderPurpose::verdict).verdict;
  }

  TemporaryFolder folder_;
};

TEST_F(BrokenPicture, TheDecodedPartOfACutJpegIsShownAndCounted) {
  const Decoded decoded = picture_of("a.jpg", cut("noisy.jpg", 60));
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict.completeness, Completeness::partly);
  ASSERT_TRUE(decoded.verdict.percent);
  EXPECT_NEAR(*decoded.verdict.percent, 58, 8);
  EXPECT_GT(colour_at(*decoded.picture, 4, 4)[0], 150) << "the upper part is there";
  EXPECT_EQ(colour_at(*decoded.picture, 4, 14)[0], -1) << "nothing is made up for the rest";
}

TEST_F(BrokenPicture, ThePercentageOfAJpegGrowsWithItsLength) {
  int before = -1;
  for (const std::size_t percent : {20U, 40U, 60U, 80U, 95U}) {
    const Verdict verdict = picture_of("a.jpg", cut("noisy.jpg", percent)).verdict;
    ASSERT_TRUE(verdict.percent) << percent;
    EXPECT_GT(*verdict.percent, before) << percent;
    before = *verdict.percent;
  }
}

TEST_F(BrokenPicture, AForeignSectorInAJpegIsNoticed) {
  std::string content = cut("noisy.jpg", 100);
  for (std::size_t i = 0; i < 512; ++i) content[16384 + i] = static_cast<char>(i * 7);
  const Decoded decoded = picture_of("a.jpg", content);
  EXPECT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict.completeness, Completeness::partly);
}

TEST_F(BrokenPicture, ACutProgressiveJpegIsPartlyThere) {
  const Decoded decoded = picture_of("a.jpg", cut("progressive.jpg", 60));
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict.completeness, Completeness::partly);
  EXPECT_LE(distance_from_fields(*decoded.picture), 60);
}

TEST_F(BrokenPicture, TheIntactThumbnailStandsForAJpegWithoutItsPicture) {
  std::string content = read_file(picture_folder() / "thumbnail.jpg").substr(0, 4096);
  ASSERT_LE(distance_from_fields(*picture_of("a.jpg", content).picture), 60);
  // Behind the thumbnail there is nothing but zeros.
  const std::size_t frame = content.find("\xFF\xD8", 4);
  const std::size_t end = content.find("\xFF\xD9", frame) + 2;
  content.resize(end);
  const Decoded decoded = picture_of("a.jpg", content + std::string(20000, '\0'));
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict, plain_verdict(Completeness::embedded_only));
  EXPECT_LE(distance_from_fields(*decoded.picture), 8);
}

TEST_F(BrokenPicture, RowsThatDidNotDecodeAreClearInACutPng) {
  const std::string content = cut("noisy.png", 50);
  const Decoded decoded = picture_of("a.png", content);
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict.completeness, Completeness::not_known);
  EXPECT_GT(colour_at(*decoded.picture, 4, 2)[0], 150);
  for (std::uint32_t x = 0; x < 16; ++x) EXPECT_LE(colour_at(*decoded.picture, x, 15)[0], 0) << x;
  const Verdict verdict = verdict_of("a.png", content);
  EXPECT_EQ(verdict.completeness, Completeness::partly);
  ASSERT_TRUE(verdict.percent);
  EXPECT_NEAR(*verdict.percent, 50, 8);
}

TEST_F(BrokenPicture, PlainFormatsCountTheRowsThatAreThere) {
  for (const char* const name : {"rgb.bmp", "rgb.ppm", "plain.tif"}) {
    const Verdict verdict = verdict_of(name, cut(name, 50));
    EXPECT_TRUE(verdict.completeness == Completeness::partly ||
                verdict.completeness == Completeness::nothing)
        << name;
    EXPECT_LE(verdict.percent.value_or(0), 60) << name;
  }
  EXPECT_NEAR(verdict_of("rgb.bmp", cut("rgb.bmp", 50)).percent.value_or(0), 49, 3);
}

TEST_F(BrokenPicture, ATgaFileHasTheRowsThatItHasRoomFor) {
  const std::string content = read_file(picture_folder() / "rgb.tga");  // 320 by 200, 3 bytes each
  constexpr std::size_t header = 18;
  const Decoded half = picture_of("a.tga", content.substr(0, header + 100 * 320 * 3));
  ASSERT_TRUE(half.picture);
  EXPECT_EQ(half.verdict.completeness, Completeness::partly);
  EXPECT_EQ(half.verdict.percent, 50);
  EXPECT_EQ(picture_of("a.tga", content.substr(0, header + 320 * 3 - 1)).verdict.completeness,
            Completeness::nothing);
  EXPECT_EQ(verdict_of("a.tga", content).completeness, Completeness::whole);
  EXPECT_EQ(verdict_of("a.tga", content.substr(0, header)).completeness, Completeness::nothing);
}

TEST_F(BrokenPicture, AFormatWithoutRowsIsPartlyThereOrNotAtAll) {
  for (const char* const name :
       {"rgb.gif", "rgb.webp", "lossless.webp", "rgb.jp2", "large.jxl", "rgb.heic", "rgb.avif",
        "packed.tif", "plain.psd", "runs.psd", "rgb.icns", "rgb.ico", "rgb.tga", "rgb.png",
        "rgb.xpm", "rgb.mng"}) {
    const Verdict verdict = verdict_of(name, cut(name, 60));
    EXPECT_NE(verdict.completeness, Completeness::whole) << name;
    EXPECT_NE(verdict.completeness, Completeness::not_known) << name;
  }
}

TEST_F(BrokenPicture, TheIntactThumbnailStandsForAHeicWithoutItsPicture) {
  // The thumbnail is stored behind the picture, which is overwritten.
  std::string content = read_file(picture_folder() / "thumbnail.heic");
  const std::size_t data = content.find("mdat") + 4;
  for (std::size_t i = data; i < data + 20000; ++i) content[i] = '\x5A';
  const Decoded quick = picture_of("a.heic", content);
  const Verdict verdict = verdict_of("a.heic", content);
  ASSERT_TRUE(quick.picture);
  EXPECT_LE(distance_from_fields(*quick.picture), 60);
  EXPECT_EQ(verdict, plain_verdict(Completeness::embedded_only));
}

TEST_F(BrokenPicture, TheIntactThumbnailStandsForALayeredFileWithoutItsPicture) {
  const std::string content = read_file(picture_folder() / "thumbnail.psd").substr(0, 3000);
  const Decoded decoded = picture_of("a.psd", content);
  ASSERT_TRUE(decoded.picture);
  EXPECT_EQ(decoded.verdict, plain_verdict(Completeness::embedded_only));
  EXPECT_LE(distance_from_fields(*decoded.picture), 8);
}

TEST_F(BrokenPicture, TheIntactPreviewStandsForACameraFileThatIsCutOff) {
  const std::string content = cut("orientation6.dng", 50);
  const Decoded quick = picture_of("a.dng", content);
  ASSERT_TRUE(quick.picture);
  EXPECT_LE(distance_from_fields(*quick.picture), 8);
  EXPECT_EQ(verdict_of("a.dng", content), plain_verdict(Completeness::embedded_only));
}

}  // namespace
}  // namespace norvo::test
