// HEIC, HEIF and AVIF. One thread.
#pragma once

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// The main picture upright and within `box`. Where the file holds a thumbnail that is large enough,
// that is the picture, and the verdict is left open unless `purpose` asks for it.
Decoded decode_heif(Bytes file, PictureSize box, DecoderPurpose purpose);

}  // namespace norvo
