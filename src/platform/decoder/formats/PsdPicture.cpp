#include "platform/decoder/formats/PsdPicture.h"

#include <array>
#include <optional>
#include <vector>

#include "platform/decoder/formats/JpegPicture.h"
#include "platform/decoder/formats/PsdLayout.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

Decoded decode_composite(Bytes file, const PsdLayout& layout, PictureSize box) {
  if (!layout.has_picture) return {};
  const PsdChannels channels(file, layout);
  RowScaler scaler(layout.size, fitted(layout.size, box));
  std::array<std::vector<std::uint8_t>, 4> samples;
  std::vector<std::uint32_t> row(layout.size.width);
  std::uint32_t complete_rows = 0;
  std::uint32_t shown_rows = 0;
  for (std::uint32_t y = 0; y < layout.size.height; ++y) {
    std::uint32_t there = 0;
    for (std::uint32_t c = 0; c < layout.colours; ++c) {
      samples[c].assign(channels.row_bytes(), layout.mode == PsdMode::cmyk ? 255 : 0);
      if (channels.read(c, y, samples[c])) ++there;
    }
    if (there == layout.colours) ++complete_rows;
    if (there > 0) ++shown_rows;
    for (std::uint32_t x = 0; x < layout.size.width; ++x) {
      std::array<std::uint8_t, 4> values{};
      for (std::uint32_t c = 0; c < layout.colours; ++c) {
        values[c] = samples[c][std::size_t{x} * layout.sample_bytes];
      }
      row[x] = psd_pixel(layout, values);
    }
    scaler.add(row);
  }
  if (shown_rows == 0) return {};
  if (complete_rows == layout.size.height) return whole(scaler.finish());
  return partly(scaler.finish(), complete_rows, layout.size.height);
}

}  // namespace

Decoded decode_psd(Bytes file, PictureSize box) {
  const std::optional<PsdLayout> layout = read_psd_layout(file);
  if (!layout) return {};
  Decoded decoded = decode_composite(file, *layout, box);
  const Bytes thumbnail = psd_thumbnail(*layout);
  const bool is_useless = !decoded.has_something() || decoded.verdict.percent == 0;
  if (is_useless && !thumbnail.empty()) {
    Decoded small = decode_jpeg(thumbnail, box);
    if (small.verdict.completeness == Completeness::whole) {
      return embedded_only(std::move(small.picture));
    }
  }
  return decoded;
}

}  // namespace norvo
