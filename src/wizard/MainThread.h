// The main thread, as other threads reach it.
#pragma once

#include <chrono>
#include <functional>

namespace norvo {

class MainThread {
 public:
  virtual ~MainThread() = default;

  // Runs `work` on the main thread later, in the order of the calls. Any thread; returns at once.
  virtual void post(std::function<void()> work) = 0;

  // As post(), but not before `delay` has passed. Main thread.
  virtual void post_after(std::chrono::milliseconds delay, std::function<void()> work) = 0;

  // Runs `work` on the main thread and returns when it is done; on the main thread at once. Throws
  // std::runtime_error when the main thread takes no more work because the program ends.
  virtual void call_and_wait(const std::function<void()>& work) = 0;
};

}  // namespace norvo
