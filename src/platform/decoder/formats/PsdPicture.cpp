#include "platform/decoder/formats/PsdPicture.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "platform/decoder/formats/ByteReader.h"
#include "platform/decoder/formats/JpegPicture.h"
#include "platform/decoder/formats/RowScaler.h"

namespace norvo {
namespace {

enum class Mode : std::uint8_t { grey = 1, palette = 2, rgb = 3, cmyk = 4 };

// Where things are in the file.
struct Layout {
  bool large = false;  // the variant for large pictures, with wider fields
  Mode mode = Mode::rgb;
  PictureSize size;
  std::uint32_t channels = 0;  // in the file; what is beyond the colours is not looked at
  std::uint32_t colours = 0;   // channels that make a pixel
  std::uint32_t sample_bytes = 1;
  Bytes palette;
  Bytes resources;
  std::uint64_t data_at = 0;  // behind the field that tells the compression
  bool in_runs = false;
};

std::uint32_t colours_of(Mode mode) {
  switch (mode) {
    case Mode::grey:
    case Mode::palette:
      return 1;
    case Mode::rgb:
      return 3;
    case Mode::cmyk:
      return 4;
  }
  return 0;
}

bool read_header(Bytes file, Layout& layout) {
  const auto version = number_at(file, 4, 2);
  const auto channels = number_at(file, 12, 2);
  const auto height = number_at(file, 14, 4);
  const auto width = number_at(file, 18, 4);
  const auto depth = number_at(file, 22, 2);
  const auto mode = number_at(file, 24, 2);
  if (!stands_at(file, 0, "8BPS") || !mode) return false;
  constexpr std::uint32_t longest_side = 300'000;
  const bool sized =
      *width >= 1 && *width <= longest_side && *height >= 1 && *height <= longest_side;
  const bool deep = *depth == 8 || *depth == 16;
  if (*version < 1 || *version > 2 || !sized || !deep || *mode < 1 || *mode > 4) return false;
  layout.large = *version == 2;
  layout.mode = static_cast<Mode>(*mode);
  layout.size = {.width = static_cast<std::uint32_t>(*width),
                 .height = static_cast<std::uint32_t>(*height)};
  layout.channels = static_cast<std::uint32_t>(*channels);
  layout.colours = colours_of(layout.mode);
  layout.sample_bytes = *depth == 16 ? 2 : 1;
  return layout.channels >= layout.colours && layout.channels <= 56;
}

// The sections between header and picture: each begins with its length.
std::optional<Layout> read_layout(Bytes file) {
  Layout layout;
  if (!read_header(file, layout)) return std::nullopt;
  std::uint64_t at = 26;
  const auto section = [&](std::size_t length_bytes) {
    const std::uint64_t length = number_at(file, at, length_bytes).value_or(0);
    const std::uint64_t begin = at + length_bytes;
    at = length > file.size() ? file.size() : begin + length;
    return part_of(file, begin, length);
  };
  layout.palette = section(4);
  layout.resources = section(4);
  section(layout.large ? 8 : 4);
  const auto compression = number_at(file, at, 2);
  layout.data_at = at + 2;
  layout.in_runs = compression == 1U;
  const bool has_picture = compression && *compression <= 1 &&
                           (layout.mode != Mode::palette || layout.palette.size() >= 768);
  if (!has_picture) layout.data_at = file.size();
  return layout;
}

// Unpacks runs into `row`: a number below 128 is followed by that many plus one bytes, one above by
// the byte that repeats. False when the runs do not fill the row.
bool unpack(Bytes runs, std::span<std::uint8_t> row) {
  std::size_t in = 0;
  std::size_t out = 0;
  while (out < row.size() && in + 1 < runs.size()) {
    const std::uint8_t head = runs[in++];
    if (head == 128) continue;
    const bool repeats = head > 128;
    const std::size_t length = repeats ? 257U - head : head + 1U;
    const std::size_t room = std::min(length, row.size() - out);
    const std::size_t there = repeats ? room : std::min(room, runs.size() - in);
    for (std::size_t i = 0; i < there; ++i) row[out + i] = runs[repeats ? in : in + i];
    out += there;
    in += repeats ? 1 : there;
    if (there < room) break;
  }
  return out == row.size();
}

// Hands out the rows of each channel; channels lie one after the other in the file.
class Channels {
 public:
  Channels(Bytes file, const Layout& layout)
      : file_(file),
        layout_(layout),
        row_bytes_(std::uint64_t{layout.size.width} * layout.sample_bytes) {
    if (layout.in_runs) find_rows();
  }

  // False when not all of the row is there.
  bool read(std::uint32_t channel, std::uint32_t y, std::span<std::uint8_t> row) const {
    const std::uint64_t index = std::uint64_t{channel} * layout_.size.height + y;
    if (layout_.in_runs) {
      if (index + 1 >= places_.size()) return false;
      const std::uint64_t begin = places_[static_cast<std::size_t>(index)];
      const std::uint64_t end = places_[static_cast<std::size_t>(index) + 1];
      return unpack(part_of(file_, begin, end - begin), row);
    }
    const Bytes plain = part_of(file_, layout_.data_at + index * row_bytes_, row_bytes_);
    std::copy(plain.begin(), plain.end(), row.begin());
    return plain.size() == row.size();
  }

  std::size_t row_bytes() const { return static_cast<std::size_t>(row_bytes_); }

 private:
  // The lengths of all rows stand before the first one.
  void find_rows() {
    const std::size_t field = layout_.large ? 4 : 2;
    const std::uint64_t all = std::uint64_t{layout_.channels} * layout_.size.height;
    const std::uint64_t used = std::uint64_t{layout_.colours} * layout_.size.height;
    std::uint64_t place = layout_.data_at + all * field;
    if (place >= file_.size()) return;
    for (std::uint64_t i = 0; i < used; ++i) {
      places_.push_back(place);
      place += number_at(file_, layout_.data_at + i * field, field).value_or(0);
    }
    places_.push_back(place);
  }

  Bytes file_;
  const Layout& layout_;
  std::uint64_t row_bytes_;
  std::vector<std::uint64_t> places_;
};

class Pixels {
 public:
  explicit Pixels(const Layout& layout) : layout_(layout) {}

  // The pixel whose samples are `samples`, one for each colour.
  std::uint32_t pixel(const std::array<std::uint32_t, 4>& samples) const {
    switch (layout_.mode) {
      case Mode::grey:
        return rgb(samples[0], samples[0], samples[0]);
      case Mode::palette:
        return rgb(layout_.palette[samples[0]], layout_.palette[256 + samples[0]],
                   layout_.palette[512 + samples[0]]);
      case Mode::rgb:
        return rgb(samples[0], samples[1], samples[2]);
      case Mode::cmyk:  // stored as what the inks leave of the light
        return rgb(samples[0] * samples[3] / 255, samples[1] * samples[3] / 255,
                   samples[2] * samples[3] / 255);
    }
    return 0;
  }

 private:
  static std::uint32_t rgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return 0xFF000000U | red << 16U | green << 8U | blue;
  }

  const Layout& layout_;
};

Decoded decode_composite(Bytes file, const Layout& layout, PictureSize box) {
  if (layout.data_at >= file.size()) return {};
  const Channels channels(file, layout);
  const Pixels pixels(layout);
  RowScaler scaler(layout.size, fitted(layout.size, box));
  std::array<std::vector<std::uint8_t>, 4> samples;
  std::vector<std::uint32_t> row(layout.size.width);
  std::uint32_t complete_rows = 0;
  std::uint32_t shown_rows = 0;
  for (std::uint32_t y = 0; y < layout.size.height; ++y) {
    std::uint32_t there = 0;
    for (std::uint32_t c = 0; c < layout.colours; ++c) {
      samples[c].assign(channels.row_bytes(), layout.mode == Mode::cmyk ? 255 : 0);
      if (channels.read(c, y, samples[c])) ++there;
    }
    if (there == layout.colours) ++complete_rows;
    if (there > 0) ++shown_rows;
    for (std::uint32_t x = 0; x < layout.size.width; ++x) {
      std::array<std::uint32_t, 4> values{};
      // Of 16 bits the upper eight come first.
      for (std::uint32_t c = 0; c < layout.colours; ++c) {
        values[c] = samples[c][std::size_t{x} * layout.sample_bytes];
      }
      row[x] = pixels.pixel(values);
    }
    scaler.add(row);
  }
  if (shown_rows == 0) return {};
  if (complete_rows == layout.size.height) return whole(scaler.finish());
  return partly(scaler.finish(), complete_rows, layout.size.height);
}

Bytes thumbnail_in(Bytes resources) {
  constexpr std::uint64_t thumbnail = 1036;
  constexpr std::uint64_t thumbnail_header = 28;
  std::uint64_t at = 0;
  while (stands_at(resources, at, "8BIM")) {
    const auto id = number_at(resources, at + 4, 2);
    const std::uint64_t name = number_at(resources, at + 6, 1).value_or(0) + 1;
    const std::uint64_t data = at + 6 + name + name % 2;
    const auto length = number_at(resources, data, 4);
    if (!id || !length) break;
    if (*id == thumbnail && *length > thumbnail_header) {
      return part_of(resources, data + 4 + thumbnail_header, *length - thumbnail_header);
    }
    at = data + 4 + *length + *length % 2;
  }
  return {};
}

}  // namespace

Decoded decode_psd(Bytes file, PictureSize box) {
  const std::optional<Layout> layout = read_layout(file);
  if (!layout) return {};
  Decoded decoded = decode_composite(file, *layout, box);
  const Bytes thumbnail = thumbnail_in(layout->resources);
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
