// Starting another program: what it is given, and its output as a pipe.
//
// Any thread. A child gets the three standard streams and no other descriptor of this process, and
// the ordinary handling of signals.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "util/UniqueFd.h"

namespace norvo {

// A program that is ready to be started.
struct ChildTask {
  enum class Input {
    null_device,
    fresh_pipe,  // nobody writes to it: the child finds its end at once
    descriptor,  // `input_descriptor`, which stays the caller's
  };
  enum class Errors {
    null_device,
    with_output,  // in the output's pipe, in the order in which they are written
  };

  std::filesystem::path executable;    // absolute; no search path is consulted
  std::vector<std::string> arguments;  // without the program's name
  Input input = Input::null_device;
  int input_descriptor = -1;
  Errors errors = Errors::null_device;
  std::optional<std::vector<std::string>> environment;  // "NAME=value"; this process's without it
  bool own_group = false;                               // it leads a process group of its own
};

struct StartedChild {
  pid_t pid = -1;   // to be waited for; -1 when it was not started
  UniqueFd output;  // the end to read from; open only when the child was started
  int error = 0;    // errno when it was not started
};

// Starts `task`. EINVAL when its path is not absolute.
StartedChild start_child(const ChildTask& task);

// Lets the children of this process be waited for. Who ignores SIGCHLD passes that on to the
// programs it starts, and the system then drops what their children ended with. Called first of
// all, before any thread or child exists.
void keep_ended_children();

// Waits until the child has ended. Its status as waitpid() gives it, or -1 when there is no such
// child.
int wait_for_child(pid_t pid);

}  // namespace norvo
