// Any picture file into a picture and a verdict. For a decoder process: hostile files may crash the
// libraries underneath, loop in them or take all memory. One thread.
#pragma once

#include <cstdint>

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// Loads what decoding needs. Once, before the process gives up its rights. `bytes_per_picture`
// limits a picture in its full size.
void load_decoders(std::uint64_t bytes_per_picture);

// A picture comes with the purpose `picture` only. Throws std::bad_alloc when there is not enough
// memory, and nothing else.
Decoded decode_picture(const FileBytes& file, const DecoderRequest& request);

}  // namespace norvo
