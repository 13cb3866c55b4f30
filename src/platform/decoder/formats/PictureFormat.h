// Which decoder a file is for: by its first bytes, and by its extension where these do not tell.
// Functions of their arguments.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

enum class PictureFormat : std::uint8_t {
  bmp,
  gif,
  heif,  // HEIC and AVIF, too
  icns,
  ico,
  jpeg,
  jpeg2000,
  jpeg_xl,
  mng,
  pbm,  // the family of portable maps
  png,
  psd,
  raw,
  tga,
  tiff,
  webp,
  xbm,
  xpm,
};

// The decoders to try, the likeliest one first; empty when none reads this. `extension` is in small
// letters.
std::vector<PictureFormat> possible_formats(Bytes file, std::string_view extension);

// The length of the boxes at the beginning of a file that is made of boxes. Recovered files have
// other data behind them, which decoders take amiss.
std::size_t length_of_boxes(Bytes file);

// Whether the data of a GIF's first picture is there up to its end.
bool gif_picture_is_complete(Bytes gif);

}  // namespace norvo
