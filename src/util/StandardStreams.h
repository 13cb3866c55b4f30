// The standard streams that a program finds when it starts. Only before other threads are there.
#pragma once

namespace norvo {

// Puts /dev/null on those of descriptors 0, 1 and 2 that are closed; false when that failed. A file
// that is opened later would take their numbers, and what is meant for the terminal would be
// written into it.
[[nodiscard]] bool complete_standard_streams();

}  // namespace norvo
