#include "platform/decoder/formats/PsdLayout.h"

#include <algorithm>

#include "platform/decoder/formats/ByteReader.h"

namespace norvo {
namespace {

constexpr std::uint32_t longest_side = 300'000;  // of the large variant, which has the longer ones
constexpr std::uint32_t most_channels = 56;
constexpr std::size_t palette_bytes = 768;  // all reds, then all greens, then all blues

std::uint32_t colours_of(PsdMode mode) {
  switch (mode) {
    case PsdMode::grey:
    case PsdMode::palette:
      return 1;
    case PsdMode::rgb:
      return 3;
    case PsdMode::cmyk:
      return 4;
  }
  return 0;
}

bool read_header(Bytes file, PsdLayout& layout) {
  const auto version = number_at(file, 4, 2);
  const auto channels = number_at(file, 12, 2);
  const auto height = number_at(file, 14, 4);
  const auto width = number_at(file, 18, 4);
  const auto depth = number_at(file, 22, 2);
  const auto mode = number_at(file, 24, 2);
  if (!stands_at(file, 0, "8BPS") || !mode) return false;
  const bool sized =
      *width >= 1 && *width <= longest_side && *height >= 1 && *height <= longest_side;
  const bool deep = *depth == 8 || *depth == 16;
  if (*version < 1 || *version > 2 || !sized || !deep || *mode < 1 || *mode > 4) return false;
  layout.large = *version == 2;
  layout.mode = static_cast<PsdMode>(*mode);
  layout.size = {.width = static_cast<std::uint32_t>(*width),
                 .height = static_cast<std::uint32_t>(*height)};
  layout.channels = static_cast<std::uint32_t>(*channels);
  layout.colours = colours_of(layout.mode);
  layout.sample_bytes = *depth == 16 ? 2 : 1;
  return layout.channels >= layout.colours && layout.channels <= most_channels;
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

}  // namespace

// The sections between header and picture: each begins with its length.
std::optional<PsdLayout> read_psd_layout(Bytes file) {
  PsdLayout layout;
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
  layout.has_picture = compression && *compression <= 1 && layout.data_at < file.size() &&
                       (layout.mode != PsdMode::palette || layout.palette.size() >= palette_bytes);
  return layout;
}

PsdChannels::PsdChannels(Bytes file, const PsdLayout& layout)
    : file_(file),
      layout_(layout),
      row_bytes_(std::size_t{layout.size.width} * layout.sample_bytes) {
  if (layout.in_runs) find_rows();
}

bool PsdChannels::read(std::uint32_t channel, std::uint32_t y, std::span<std::uint8_t> row) const {
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

// The lengths of all rows stand before the first one.
void PsdChannels::find_rows() {
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

std::uint32_t psd_pixel(const PsdLayout& layout, const std::array<std::uint8_t, 4>& samples) {
  const auto opaque = [](std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return 0xFF000000U | red << 16U | green << 8U | blue;
  };
  const std::uint32_t black = samples[3];
  switch (layout.mode) {
    case PsdMode::grey:
      return opaque(samples[0], samples[0], samples[0]);
    case PsdMode::palette:
      return opaque(layout.palette[samples[0]], layout.palette[256U + samples[0]],
                    layout.palette[512U + samples[0]]);
    case PsdMode::rgb:
      return opaque(samples[0], samples[1], samples[2]);
    case PsdMode::cmyk:  // stored as what the inks leave of the light
      return opaque(samples[0] * black / 255, samples[1] * black / 255, samples[2] * black / 255);
  }
  return 0;
}

Bytes psd_thumbnail(const PsdLayout& layout) {
  constexpr std::uint64_t thumbnail = 1036;  // number of the JPEG thumbnail's resource
  constexpr std::uint64_t thumbnail_header = 28;
  const Bytes resources = layout.resources;
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

}  // namespace norvo
