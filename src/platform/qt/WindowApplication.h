// The program with a window, from the toolkit's application object to its end.
#pragma once

#include "engine/Device.h"

namespace norvo {

// The arguments that make a start the copy with the right to read ("a", "b" and "c", but only their
// number counts) may be followed by disk images, which the drive list then offers.
//
// Runs the edition whose bundle the running executable lies in, and returns the exit status: 0, or
// 1 when there is no edition to run, which is said in a window. A search that still runs when the
// person leaves ends with the process. Main thread, once.
int run_window_application(int argc, char** argv, DeviceOpener& opener);

}  // namespace norvo
