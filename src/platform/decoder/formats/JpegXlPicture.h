// JPEG XL. One thread.
#pragma once

#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// Upright and within `box`; of a file that is cut off what there is so far.
Decoded decode_jpeg_xl(Bytes file, PictureSize box);

}  // namespace norvo
