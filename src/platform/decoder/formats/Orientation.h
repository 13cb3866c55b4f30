// The eight ways in which a camera may have been held. Functions of their arguments.
#pragma once

#include <cstdint>

#include "platform/decoder/Picture.h"

namespace norvo {

// The numbers of the Exif tag: where the first row and the first column of the stored picture are.
enum class Orientation : std::uint8_t {
  upright = 1,
  mirrored = 2,
  turned_half = 3,
  upside_down_mirrored = 4,
  transposed = 5,
  turned_right = 6,  // must be turned right to be upright
  transversed = 7,
  turned_left = 8,
};

// `upright` for a number that is none of the eight.
Orientation orientation_of(std::uint32_t number);

// Whether width and height change places.
bool swaps_sides(Orientation orientation);

// The box in which the stored picture must fit so that the upright one fits `box`.
PictureSize stored_box(PictureSize box, Orientation orientation);

Picture upright(Picture stored, Orientation orientation);

}  // namespace norvo
