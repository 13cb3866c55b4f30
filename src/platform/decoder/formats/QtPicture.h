// The formats that the toolkit reads: BMP, GIF, icons, portable maps, PNG, TGA, TIFF, WebP, XBM.
#pragma once

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"
#include "platform/decoder/formats/PictureFormat.h"

namespace norvo {

// Loads the toolkit's plug-ins for good, and limits what one picture may take. Once, before the
// process gives up its rights.
void load_qt_decoders(std::uint64_t bytes_per_picture);

// Upright and within `box`. The verdict of some formats takes a second look and is left open unless
// `purpose` asks for it.
Decoded decode_with_qt(Bytes file, PictureFormat format, PictureSize box, DecoderPurpose purpose);

}  // namespace norvo
