// The preview pictures inside camera raw files. One thread.
#pragma once

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// The embedded preview, upright and within `box`; the sensor's data is never developed. A verdict
// takes unpacking that data and is left open unless `purpose` asks for it.
Decoded decode_raw_preview(Bytes file, PictureSize box, DecoderPurpose purpose);

}  // namespace norvo
