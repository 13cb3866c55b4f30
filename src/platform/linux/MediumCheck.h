// Whether there is anything in a drive.
#pragma once

#include "util/UniqueFd.h"

namespace norvo {

// ENOMEDIUM when the open block device `fd` has no bytes: a card reader without a card is opened
// like one with a card, as nothing waits for it (O_NONBLOCK). 0 otherwise. Any thread.
int medium_error(const UniqueFd& fd);

}  // namespace norvo
