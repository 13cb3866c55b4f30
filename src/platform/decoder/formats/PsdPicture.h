// The flattened picture of layered PSD and PSB files. One thread.
#pragma once

#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// Greys, palettes, RGB and CMYK of 8 or 16 bits, uncompressed or in runs, within `box`. What is not
// there is black, or white for inks. When no row decodes: the embedded thumbnail, if it is intact.
Decoded decode_psd(Bytes file, PictureSize box);

}  // namespace norvo
