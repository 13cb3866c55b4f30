// What the copy that was started with the administrator right does before it is a program with a
// window.
#pragma once

#include "platform/Start.h"

namespace norvo {

// Runs `application` and returns its status. Main thread, before any other thread or toolkit object
// exists. None of the standard streams is closed.
//
// As root, with a person behind it (PKEXEC_UID, or SUDO_UID without it): splits in two. This
// process becomes the person and runs `application` with an opener that asks the other one, which
// keeps the right to read devices, nothing else, and ends with this process. Descriptors other than
// the standard streams are closed. 1, without running `application`, when the person is unknown or
// the split fails; the process ends with 1 when its rights cannot be given up.
//
// As root for nobody else (a SUDO_UID of 0, too), or with ordinary rights: changes nothing.
int run_with_reading_right(int argc, char** argv, const Application& application);

}  // namespace norvo
