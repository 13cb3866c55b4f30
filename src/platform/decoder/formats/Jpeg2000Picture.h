// JPEG 2000 files and bare code streams. One thread.
#pragma once

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// Within `box`, at the coarsest resolution that fills it. Of a broken file what there is; the
// verdict takes all resolutions and is left open unless `purpose` asks for it.
Decoded decode_jpeg2000(Bytes file, PictureSize box, DecoderPurpose purpose);

}  // namespace norvo
