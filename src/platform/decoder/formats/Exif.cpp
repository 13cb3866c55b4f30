#include "platform/decoder/formats/Exif.h"

#include "platform/decoder/formats/ByteReader.h"

namespace norvo {
namespace {

// Numbers of TIFF 6.0, of Exif (CIPA DC-008: the two of the thumbnail in the second directory) and,
// the last one, of Adobe's DNG.
enum Tag : std::uint16_t {
  new_subfile_type = 0x00FE,
  orientation = 0x0112,
  thumbnail_offset = 0x0201,
  thumbnail_length = 0x0202,
  dng_version = 0xC612,
};

class Directory {
 public:
  Directory(Bytes tiff, ByteOrder order, std::uint64_t at) : tiff_(tiff), order_(order), at_(at) {
    entries_ = number_at(tiff_, at_, 2, order_).value_or(0);
  }

  std::optional<std::uint64_t> value(Tag tag) const {
    for (std::uint64_t i = 0; i < entries_; ++i) {
      const std::uint64_t entry = at_ + 2 + 12 * i;
      const auto found = number_at(tiff_, entry, 2, order_);
      if (!found) return std::nullopt;
      if (*found != tag) continue;
      constexpr std::uint64_t type_short = 3;
      const bool is_short = number_at(tiff_, entry + 2, 2, order_) == type_short;
      return number_at(tiff_, entry + 8, is_short ? 2 : 4, order_);
    }
    return std::nullopt;
  }

  std::uint64_t next() const {
    return number_at(tiff_, at_ + 2 + 12 * entries_, 4, order_).value_or(0);
  }

 private:
  Bytes tiff_;
  ByteOrder order_;
  std::uint64_t at_;
  std::uint64_t entries_ = 0;
};

bool is_start_of_frame(std::uint64_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

}  // namespace

Exif read_tiff_directories(Bytes tiff) {
  Exif exif;
  const bool little = stands_at(tiff, 0, "II");
  if (!little && !stands_at(tiff, 0, "MM")) return exif;
  const ByteOrder order = little ? ByteOrder::little : ByteOrder::big;
  const auto first_at = number_at(tiff, 4, 4, order);
  if (!first_at || *first_at == 0) return exif;
  const Directory first(tiff, order, *first_at);
  if (const auto number = first.value(orientation)) {
    exif.orientation = orientation_of(static_cast<std::uint32_t>(*number));
  }
  exif.is_raw = first.value(dng_version).has_value();
  exif.is_reduced = (first.value(new_subfile_type).value_or(0) & 1U) != 0;
  const std::uint64_t second_at = first.next();
  if (second_at == 0) return exif;
  const Directory second(tiff, order, second_at);
  const auto offset = second.value(thumbnail_offset);
  const auto length = second.value(thumbnail_length);
  if (offset && length) exif.thumbnail = part_of(tiff, *offset, *length);
  return exif;
}

Exif read_jpeg_exif(Bytes jpeg) {
  constexpr std::uint64_t application_1 = 0xE1;
  constexpr std::uint64_t start_of_scan = 0xDA;
  constexpr std::string_view name("Exif\0\0", 6);
  std::uint64_t at = 2;
  while (number_at(jpeg, at, 1) == 0xFFU) {
    const auto marker = number_at(jpeg, at + 1, 1);
    const auto length = number_at(jpeg, at + 2, 2);
    if (!marker || !length || *length < 2) break;
    if (*marker == start_of_scan || is_start_of_frame(*marker)) break;
    if (*marker == application_1 && stands_at(jpeg, at + 4, name)) {
      return read_tiff_directories(part_of(jpeg, at + 10, *length - 2));
    }
    at += 2 + *length;
  }
  return {};
}

}  // namespace norvo
