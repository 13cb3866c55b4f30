// What the toolkit's reader of TGA files leaves to be done. Places in header and footer are those
// of version 2.0 of Truevision's format. Any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

// The file with a footer behind all that stands there. The reader wants one at the very end; yet a
// recovered file has something else there, and files of the format's first version have none. The
// footer points to nothing, so the picture is read as the header tells.
std::vector<std::uint8_t> with_tga_footer(Bytes file);

// How many rows of an uncompressed picture the file has room for, not more than the picture's
// height. The reader makes rows up that are not there.
std::uint32_t tga_rows(Bytes file);

}  // namespace norvo
