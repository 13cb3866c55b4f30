// Any bytes as a layered picture: where things are, rows, pixels and the embedded thumbnail.

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/Require.h"
#include "platform/decoder/formats/PsdLayout.h"

namespace {

using norvo::fuzz::require;

// Larger pictures take the fuzzer too long; their fields are read all the same.
constexpr std::uint32_t longest_side = 256;

void check_layout(const norvo::PsdLayout& layout) {
  require(layout.size.width >= 1 && layout.size.height >= 1, "a picture has two sides");
  require(layout.size.width <= 300'000 && layout.size.height <= 300'000, "sides have a limit");
  require(layout.colours >= 1 && layout.colours <= 4 && layout.colours <= layout.channels,
          "the colours are among the channels");
  require(layout.sample_bytes == 1 || layout.sample_bytes == 2, "a sample has 8 or 16 bits");
}

void check_thumbnail(const norvo::PsdLayout& layout, norvo::Bytes file) {
  const norvo::Bytes thumbnail = psd_thumbnail(layout);
  if (thumbnail.empty()) return;
  require(thumbnail.data() >= file.data() &&
              thumbnail.data() + thumbnail.size() <= file.data() + file.size(),
          "a thumbnail lies in its file");
}

void check_rows(const norvo::PsdLayout& layout, norvo::Bytes file) {
  const norvo::PsdChannels channels(file, layout);
  std::vector<std::uint8_t> row(channels.row_bytes());
  for (std::uint32_t channel = 0; channel < layout.colours; ++channel) {
    for (std::uint32_t y = 0; y < layout.size.height; ++y) {
      static_cast<void>(channels.read(channel, y, row));
    }
    require(!channels.read(layout.channels, layout.size.height, row) || !layout.in_runs,
            "no runs are found for a row that no channel has");
  }
  for (const std::uint8_t sample : row) {
    require(psd_pixel(layout, {sample, sample, sample, sample}) >> 24U == 0xFF,
            "a pixel is opaque");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const norvo::Bytes file(data, size);
  const auto layout = norvo::read_psd_layout(file);
  if (!layout) return 0;
  check_layout(*layout);
  check_thumbnail(*layout, file);
  const bool is_small = layout->size.width <= longest_side && layout->size.height <= longest_side;
  if (layout->has_picture && is_small) check_rows(*layout, file);
  return 0;
}
