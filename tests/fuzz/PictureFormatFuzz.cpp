// Any bytes as the beginning of a picture file: directories, boxes and blocks.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"
#include "platform/decoder/formats/Exif.h"
#include "platform/decoder/formats/PictureFormat.h"

namespace {

using norvo::fuzz::require;

void check_exif(const norvo::Exif& exif, norvo::Bytes file) {
  if (exif.thumbnail.empty()) return;
  require(exif.thumbnail.data() >= file.data() &&
              exif.thumbnail.data() + exif.thumbnail.size() <= file.data() + file.size(),
          "a thumbnail lies in its file");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const norvo::Bytes file(data, size);
  check_exif(norvo::read_tiff_directories(file), file);
  check_exif(norvo::read_jpeg_exif(file), file);
  require(norvo::length_of_boxes(file) <= size, "boxes end with the file");
  static_cast<void>(norvo::gif_picture_is_complete(file));
  for (const std::string_view extension : {"", "tga", "nef"}) {
    require(norvo::possible_formats(file, extension).size() <= 2, "two decoders at most");
  }
  return 0;
}
