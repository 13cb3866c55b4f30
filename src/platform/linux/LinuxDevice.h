// A Linux device behind a descriptor that somebody opened.
#pragma once

#include <memory>

#include "engine/Device.h"
#include "util/UniqueFd.h"

namespace norvo {

// `fd` is a block device or regular file that is open for reading. Never null.
std::unique_ptr<Device> make_linux_device(UniqueFd fd);

}  // namespace norvo
