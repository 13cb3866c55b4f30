// Where things are in layered PSD and PSB files, and the rows of their flattened picture. Any bytes
// may be given. Facts are those of Adobe's description of the file format. Any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/decoder/Picture.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

enum class PsdMode : std::uint8_t { grey = 1, palette = 2, rgb = 3, cmyk = 4 };

// Its views lie in the file that it was read from.
struct PsdLayout {
  bool large = false;  // the variant for large pictures, with wider fields
  PsdMode mode = PsdMode::rgb;
  PictureSize size;                // each side from 1 to 300,000
  std::uint32_t channels = 0;      // in the file; what is beyond the colours is not looked at
  std::uint32_t colours = 0;       // channels that make a pixel, 1 to 4
  std::uint32_t sample_bytes = 1;  // of 16 bits the upper eight come first
  Bytes palette;
  Bytes resources;
  std::uint64_t data_at = 0;  // behind the field that tells the compression
  bool in_runs = false;
  bool has_picture = false;  // without one only resources can be read
};

// Nullopt when the header is not that of a file whose picture is understood here.
std::optional<PsdLayout> read_psd_layout(Bytes file);

// The rows of each channel; channels lie one after the other in the file.
class PsdChannels {
 public:
  // Both outlive this.
  PsdChannels(Bytes file, const PsdLayout& layout);

  // Fills `row`, of row_bytes(), as far as the file goes. False when not all of the row is there.
  bool read(std::uint32_t channel, std::uint32_t y, std::span<std::uint8_t> row) const;

  std::size_t row_bytes() const { return row_bytes_; }

 private:
  void find_rows();

  Bytes file_;
  const PsdLayout& layout_;
  std::size_t row_bytes_;
  std::vector<std::uint64_t> places_;  // of rows in runs, and the end of the last one
};

// The opaque pixel whose samples, upper eight bits, are `samples`, one for each colour. The layout
// has a picture.
std::uint32_t psd_pixel(const PsdLayout& layout, const std::array<std::uint8_t, 4>& samples);

// The embedded thumbnail, a JPEG file. Empty when there is none.
Bytes psd_thumbnail(const PsdLayout& layout);

}  // namespace norvo
