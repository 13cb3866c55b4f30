#include "engine/ProgressTimer.h"

#include <exception>
#include <utility>

#include "util/Diagnostics.h"

namespace norvo {

ProgressTimer::~ProgressTimer() {
  finish();
}

void ProgressTimer::start(std::function<void()> tick) {
  finish();
  {
    const std::lock_guard lock(mutex_);
    valid_ = true;
  }
  thread_ = std::thread([this, tick = std::move(tick)] { run(tick); });
}

void ProgressTimer::invalidate() {
  const std::lock_guard lock(mutex_);
  valid_ = false;
  wake_.notify_all();
}

void ProgressTimer::run(const std::function<void()>& tick) {
  std::unique_lock lock(mutex_);
  while (!wake_.wait_for(lock, interval, [this] { return !valid_; })) {
    lock.unlock();
    try {
      tick();
    } catch (const std::exception& reason) {
      Show_NSLog_Message(text_from_utf8_lossy(reason.what()));
    }
    lock.lock();
  }
}

void ProgressTimer::finish() {
  invalidate();
  if (thread_.joinable()) thread_.join();
}

}  // namespace norvo
