// The loop of a decoder process. The process's only thread calls it.
#pragma once

#include <functional>

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/formats/Decoded.h"
#include "platform/decoder/formats/FileBytes.h"

namespace norvo {

using Decode = std::function<Decoded(const FileBytes& file, const DecoderRequest& request)>;

// Answers requests on `socket` until its other end closes (true). False when that breaks the
// protocol, and when `decode` runs out of memory (std::bad_alloc): a file may have taken it that
// was decoded before, so the process must end and leave this one to the next.
bool serve_requests(int socket, const Decode& decode);

}  // namespace norvo
