// How the system schedules the decoders that a test starts.
#pragma once

#include <sched.h>
#include <sys/resource.h>
#include <sys/types.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace norvo::test {

// Those that are started after this is made: some of the test before may still be on their way out.
class NewDecoders {
 public:
  // Whether there is one.
  bool any() const {
    return any_is([](pid_t) { return true; });
  }

  // Whether one has the scheduling policy, SCHED_IDLE for example.
  bool any_has_policy(int policy) const {
    return any_is([policy](pid_t child) {
      if (sched_getscheduler(child) != policy) return false;
      return policy != sched_getscheduler(0) || has_chosen(child);
    });
  }

 private:
  template <class Condition>
  bool any_is(const Condition& condition) const {
    const std::set<pid_t> now = children();
    return std::any_of(now.begin(), now.end(),
                       [&](pid_t child) { return !before_.contains(child) && condition(child); });
  }

  static std::set<pid_t> children() {
    std::set<pid_t> found;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
      std::ifstream file(thread.path() / "children");
      for (pid_t child = 0; file >> child;) found.insert(child);
    }
    return found;
  }

  // One that was just started has this process's policy. It takes its own before it gives up the
  // right to write files.
  static bool has_chosen(pid_t child) {
    rlimit size{};
    return prlimit(child, RLIMIT_FSIZE, nullptr, &size) == 0 && size.rlim_cur == 0;
  }

  const std::set<pid_t> before_ = children();
};

}  // namespace norvo::test
