// One readable list of what happened, in its order, into which all stand-ins of a test write.
#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace norvo::test {

// Any thread.
class EventLog {
 public:
  void add(std::string entry) {
    const std::lock_guard lock(mutex_);
    entries_.push_back(std::move(entry));
  }

  std::vector<std::string> entries() const {
    const std::lock_guard lock(mutex_);
    return entries_;
  }

  void clear() {
    const std::lock_guard lock(mutex_);
    entries_.clear();
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> entries_;
};

}  // namespace norvo::test
