#include "platform/decoder/formats/RawPreview.h"

#include <libraw/libraw.h>

#include <memory>
#include <vector>

#include "platform/decoder/formats/JpegPicture.h"
#include "platform/decoder/formats/Orientation.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

// The library's code for how the camera was held.
Orientation orientation_of_flip(int flip) {
  switch (flip) {
    case 3:
      return Orientation::turned_half;
    case 5:
      return Orientation::turned_left;
    case 6:
      return Orientation::turned_right;
    default:
      return Orientation::upright;
  }
}

std::optional<Picture> bitmap_preview(const libraw_thumbnail_t& preview, PictureSize box,
                                      Orientation orientation) {
  const PictureSize size{.width = preview.twidth, .height = preview.theight};
  const std::size_t needed = std::size_t{3} * size.width * size.height;
  if (needed == 0 || preview.tlength < needed || preview.tcolors != 3) return std::nullopt;
  RowScaler scaler(size, fitted(size, stored_box(box, orientation)));
  std::vector<std::uint32_t> row(size.width);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(preview.thumb);
  for (std::uint32_t y = 0; y < size.height; ++y) {
    for (std::uint32_t& pixel : row) {
      pixel =
          0xFF000000U | std::uint32_t{bytes[0]} << 16U | std::uint32_t{bytes[1]} << 8U | bytes[2];
      bytes += 3;
    }
    scaler.add(row);
  }
  return upright(scaler.finish(), orientation);
}

Decoded decode_preview(LibRaw& raw, PictureSize box) {
  if (raw.unpack_thumb() != LIBRAW_SUCCESS) return {};
  const libraw_thumbnail_t& preview = raw.imgdata.thumbnail;
  const Orientation orientation = orientation_of_flip(raw.imgdata.sizes.flip);
  if (preview.thumb == nullptr) return {};
  if (preview.tformat == LIBRAW_THUMBNAIL_JPEG) {
    return decode_jpeg(Bytes(reinterpret_cast<const std::uint8_t*>(preview.thumb), preview.tlength),
                       box, orientation);
  }
  if (preview.tformat != LIBRAW_THUMBNAIL_BITMAP) return {};
  auto picture = bitmap_preview(preview, box, orientation);
  return picture ? whole(std::move(picture)) : Decoded{};
}

bool sensor_data_unpacks(LibRaw& raw) {
  bool damaged = false;
  // Generic, as the offset's type differs between versions of the library.
  raw.set_dataerror_handler(
      [](void* noted, const char*, auto) { *static_cast<bool*>(noted) = true; }, &damaged);
  const bool unpacked = raw.unpack() == LIBRAW_SUCCESS;
  raw.set_dataerror_handler(nullptr, nullptr);
  return unpacked && !damaged;
}

}  // namespace

Decoded decode_raw_preview(Bytes file, PictureSize box, DecoderPurpose purpose) {
  const auto raw = std::make_unique<LibRaw>();
  raw->set_dataerror_handler(nullptr, nullptr);
  // The library reads only, whatever its signature says.
  if (raw->open_buffer(const_cast<std::uint8_t*>(file.data()), file.size()) != LIBRAW_SUCCESS) {
    return {};
  }
  Decoded preview = decode_preview(*raw, box);
  const bool intact = preview.verdict.completeness == Completeness::whole;
  if (purpose == DecoderPurpose::picture) {
    if (preview.picture) preview.verdict = {};
    return preview;
  }
  if (sensor_data_unpacks(*raw)) return whole({});
  return intact ? embedded_only({}) : preview;
}

}  // namespace norvo
