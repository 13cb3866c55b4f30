// Bytes as a file without a name, to be handed to a decoder. Any thread.
#pragma once

#include <cstddef>
#include <span>

#include "util/UniqueFd.h"

namespace norvo {

// A descriptor of a file that holds `bytes` and goes with its last descriptor; none when the system
// refuses. In memory where the system has such files, else in its folder for temporary ones.
UniqueFd memory_file(std::span<const std::byte> bytes);

}  // namespace norvo
