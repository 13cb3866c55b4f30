// How the system schedules the processes that a test has started.
#pragma once

#include <sched.h>
#include <sys/types.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace norvo::test {

// Whether a child of this process has the scheduling policy, SCHED_IDLE for example. One that was
// just started has yet to take its own.
inline bool has_child_with_policy(int policy) {
  const std::filesystem::directory_iterator threads("/proc/self/task");
  return std::any_of(begin(threads), end(threads), [policy](const auto& thread) {
    std::ifstream children(thread.path() / "children");
    for (pid_t child = 0; children >> child;) {
      if (sched_getscheduler(child) == policy) return true;
    }
    return false;
  });
}

}  // namespace norvo::test
