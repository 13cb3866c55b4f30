// Starting a process that nobody waits for.
#pragma once

#include <string>
#include <vector>

namespace norvo {

// Starts the executable `command[0]` (an absolute path) with the rest of `command` as arguments,
// in a session of its own, with nothing on its standard streams and no other descriptor of the
// caller. Returns at once with 0, or with the errno of the failure to start anything; that the
// executable itself cannot be run is not told. It has the caller's environment but for the
// variables named in `left_out`.
//
// The new process keeps a living parent, which does nothing but wait for it: pkexec refuses to work
// for a parent that is gone, and the caller goes at once. Only in a process without other threads.
int start_detached(const std::vector<std::string>& command,
                   const std::vector<std::string>& left_out = {});

}  // namespace norvo
