// JPEG files, whole and broken. One thread.
#pragma once

#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"
#include "platform/decoder/formats/Orientation.h"

namespace norvo {

// The picture, upright and within `box`. Of a broken file the part that decodes; the rows up to the
// first complaint of the decoder count as decoded. When nothing decodes: the embedded thumbnail, if
// that is intact. `fallback` is the orientation of a file that does not tell its own.
Decoded decode_jpeg(Bytes file, PictureSize box, Orientation fallback = Orientation::upright);

}  // namespace norvo
