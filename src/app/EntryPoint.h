// The first decision of the process: get the administrator right and start a second copy with it,
// or be that copy.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "app/Elevation.h"
#include "util/Text.h"

namespace norvo {

// How the process was started: 1 until the argument count is known, then the argument count. A
// record; nothing branches on it.
extern std::int32_t Main_Calling;

// "argc value : 0  " and the program path.
extern Text main_call_argc;

// What the entry point is joined to.
struct StartUp {
  Authorization& authorization;
  ProcessEnd& process_end;
  std::function<std::string()> bundle_path;  // the main bundle's path on disk
  std::function<int(int argc, char** argv)> run_application;
};

// Main thread, once, before anything else.
//
// With 1, 2 or 3 arguments: asks for the administrator right, starts the bundle's executable with
// it and the arguments "a", "b" and "c", and ends the process at once with status 0 whatever
// failed; it does not return then. A right that is refused ends it before anything is started. With
// every other count (the values are never looked at) it runs the application and returns its
// status. Shows nothing: all messages go to the diagnostic sink.
int entry_point(int argc, char** argv, const StartUp& start_up);

}  // namespace norvo
