// What the program with a window needs of the operating system beyond System.h. Each system
// implements these functions in a folder of its own.
#pragma once

#include <memory>

#include "wizard/SleepGuard.h"

namespace norvo {

std::unique_ptr<SleepGuard> make_system_sleep_guard();

}  // namespace norvo
