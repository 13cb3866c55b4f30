// Any bytes as the beginning of a picture file: directories, boxes and blocks, and as a TGA file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "platform/decoder/formats/Exif.h"
#include "platform/decoder/formats/PictureFormat.h"
#include "platform/decoder/formats/TgaFile.h"

namespace {

using norvo::fuzz::require;

void check_exif(const norvo::Exif& exif, norvo::Bytes file) {
  if (exif.thumbnail.empty()) return;
  require(exif.thumbnail.data() >= file.data() &&
              exif.thumbnail.data() + exif.thumbnail.size() <= file.data() + file.size(),
          "a thumbnail lies in its file");
}

void check_tga(norvo::Bytes file) {
  constexpr std::size_t footer_length = 26;
  const std::vector<std::uint8_t> ended = norvo::with_tga_footer(file);
  require(ended.size() == file.size() + footer_length &&
              std::equal(file.begin(), file.end(), ended.begin()),
          "a footer stands behind all of the file");
  const std::uint32_t rows = norvo::tga_rows(file);
  if (rows == 0) return;
  const std::uint32_t width = file[12] + 256U * file[13];
  const std::uint32_t height = file[14] + 256U * file[15];
  const std::uint64_t row = std::uint64_t{width} * ((file[16] + 7U) / 8U);
  require(rows <= height, "a picture has its rows at most");
  require(rows * row < file.size(), "rows have room in their file");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const norvo::Bytes file(data, size);
  check_exif(norvo::read_tiff_directories(file), file);
  check_exif(norvo::read_jpeg_exif(file), file);
  require(norvo::length_of_boxes(file) <= size, "boxes end with the file");
  check_tga(file);
  static_cast<void>(norvo::gif_picture_is_complete(file));
  for (const std::string_view extension : {"", "tga", "nef"}) {
    require(norvo::possible_formats(file, extension).size() <= 2, "two decoders at most");
  }
  return 0;
}
