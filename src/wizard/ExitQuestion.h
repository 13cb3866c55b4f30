// Leaving the program, from the exit button and from the window's close control alike.
#pragma once

#include "util/Alert.h"
#include "wizard/Desktop.h"

namespace norvo {

// Asks; on Yes asks the application to end, whatever runs: a search ends with the process, and what
// it has written stays. On any other answer nothing changes. Main thread.
void Exit_App(AlertPanel& panel, Desktop& desktop);

}  // namespace norvo
