// How a program with a window starts: it asks once for the right to read drives, and runs the
// application with that right and no other.
#pragma once

#include <functional>

#include "engine/Device.h"

namespace norvo {

// The application proper: makes its window, runs its event loop and returns the exit status. It
// gets the argument count and vector of the process, unchanged. `opener` opens drives (and disk
// images, which are opened with the person's own rights), may be used by several threads at once
// and outlives the application. No thread and no toolkit object exists when it is called.
using Application = std::function<int(int argc, char** argv, DeviceOpener& opener)>;

// The whole of main(): the first thing that the process does, on its main thread, before any
// thread or toolkit object is made.
//
// With 1, 2 or 3 arguments (the program's own path counted) the process asks the system for the
// administrator right, starts a second copy of the bundle's executable with the arguments "a", "b"
// and "c", and ends at once with status 0, whether or not that worked: it does not return then, and
// runs no clean-up handler. Nothing is shown but the system's own password prompt.
//
// With any other number of arguments `application` runs and its status is returned. It finds the
// null device on standard streams that were closed; where that cannot be had the status is 1, and
// `application` is not called.
//
// On Linux it runs as the person who asked, in that person's home and session and without any
// capability, while `opener` reaches a second process that can do nothing but open block devices
// for reading; a process whose rights cannot be given up completely ends with status 1 before
// `application` is called. No program that it starts can gain rights (sudo and the like do not work
// there), and no other process of the person can look into it. A process that it forks without
// running another program must close its descriptors, or it keeps the way to the opener. Started by
// root for nobody else it runs as root, and started by a person with four or more arguments with
// that person's rights. On macOS it keeps the administrator right.
int start_program(int argc, char** argv, const Application& application);

}  // namespace norvo
