// Commands for the shell: only for texts that the program itself puts together. Tools of the system
// whose answers are read run without a shell (util/RunProgram).
#pragma once

#include "util/ChildProcess.h"
#include "util/Text.h"

namespace norvo {

// The shell with `command`, ready to be started and reading from the null device. Any thread.
ChildTask taskForShellCommand(TextView command);

// Runs `command` to the end of its output and returns what it wrote to standard output and standard
// error, in the order in which it was written; bytes that are no UTF-8 show as U+FFFD. Empty when
// the shell could not be started. The exit status does not matter. Any thread; blocks as long as
// the command or anything it has started holds its output open.
Text executeShellCommandSynchronously(TextView command);

}  // namespace norvo
