// Running a tool of the system for its output, with limits.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace norvo {

struct ProgramLimits {
  std::chrono::milliseconds time;
  std::size_t output_bytes;
};

struct ProgramResult {
  enum class End {
    exited,           // with `status`
    died,             // of a signal
    not_started,      // no such program, no right to run it, or the path is not absolute
    timed_out,        // killed with all that it had started in its process group
    too_much_output,  // killed in the same way
  };

  End end = End::not_started;
  int status = 0;      // exit status
  std::string output;  // standard output, never more than the limit; empty unless it exited
};

// Runs the program at the absolute path `executable` to the end of its output and of itself. No
// shell takes part; it reads from the null device, its error output goes there, and its environment
// holds a plain search path and the C locale only. Any thread; blocks for up to the time limit and,
// when the program does not die at once, a second more.
ProgramResult run_program(const std::filesystem::path& executable,
                          const std::vector<std::string>& arguments, const ProgramLimits& limits);

}  // namespace norvo
