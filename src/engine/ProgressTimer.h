// A repeating timer on a thread of its own.
//
// Made, started and destroyed by one owner; invalidate() may be called from any thread, also from
// within the tick.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace norvo {

class ProgressTimer {
 public:
  static constexpr std::chrono::milliseconds interval{500};

  ProgressTimer() = default;
  ProgressTimer(const ProgressTimer&) = delete;
  ProgressTimer& operator=(const ProgressTimer&) = delete;
  ~ProgressTimer();

  // Ends a timer that still runs, then calls `tick` every `interval` until invalidated. An
  // exception of a tick is dropped.
  void start(std::function<void()> tick);

  // No tick begins after this returns; one that is running may still end.
  void invalidate();

 private:
  void run(const std::function<void()>& tick);
  void finish();

  std::thread thread_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool valid_ = false;
};

}  // namespace norvo
