#include "platform/decoder/formats/Orientation.h"

#include <utility>

namespace norvo {

Orientation orientation_of(std::uint32_t number) {
  const bool known = number >= 1 && number <= 8;
  return known ? static_cast<Orientation>(number) : Orientation::upright;
}

bool swaps_sides(Orientation orientation) {
  return orientation >= Orientation::transposed;
}

PictureSize stored_box(PictureSize box, Orientation orientation) {
  return swaps_sides(orientation) ? PictureSize{.width = box.height, .height = box.width} : box;
}

Picture upright(Picture stored, Orientation orientation) {
  if (orientation == Orientation::upright) return stored;
  const bool swapped = swaps_sides(orientation);
  const bool from_right =
      orientation == Orientation::mirrored || orientation == Orientation::turned_half ||
      orientation == Orientation::transversed || orientation == Orientation::turned_left;
  const bool from_below =
      orientation == Orientation::turned_half || orientation == Orientation::upside_down_mirrored ||
      orientation == Orientation::turned_right || orientation == Orientation::transversed;
  Picture turned{.size = stored_box(stored.size, orientation), .pixels = {}};
  turned.pixels.reserve(stored.pixels.size());
  for (std::uint32_t y = 0; y < turned.size.height; ++y) {
    for (std::uint32_t x = 0; x < turned.size.width; ++x) {
      const std::uint32_t column = swapped ? y : x;
      const std::uint32_t row = swapped ? x : y;
      const std::uint32_t from_x = from_right ? stored.size.width - 1 - column : column;
      const std::uint32_t from_y = from_below ? stored.size.height - 1 - row : row;
      turned.pixels.push_back(stored.pixels[std::size_t{from_y} * stored.size.width + from_x]);
    }
  }
  return turned;
}

}  // namespace norvo
