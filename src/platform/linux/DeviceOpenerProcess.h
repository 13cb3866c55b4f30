// The device opener's whole life: it answers requests until the window process is gone.
#pragma once

#include "util/UniqueFd.h"

namespace norvo {

// Answers each packet of `socket`, one after the other, with a descriptor of open_block_device or
// its errno. A packet that is no request is answered with EPROTO and changes nothing, as every
// request stands for itself. Returns when the other end is closed.
void answer_device_requests(UniqueFd socket);

}  // namespace norvo
