// A test body in a process of its own, for what cannot be undone.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace norvo::test {

// Runs `body` in a child and returns the status that it ended with; -1 when it died of a signal.
// The body reports by its return value alone, as what a test expects is not heard from there.
inline int status_in_child(const std::function<int()>& body) {
  const pid_t child = fork();
  if (child == 0) _exit(body());
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

}  // namespace norvo::test
