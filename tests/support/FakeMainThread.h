// The main thread, as tests have it: done at once, or as a queue that the test's thread drains.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include "wizard/MainThread.h"

namespace norvo::test {

class ImmediateMainThread final : public MainThread {
 public:
  void post(std::function<void()> work) override { work(); }
  void post_after(std::chrono::milliseconds /*delay*/, std::function<void()> work) override {
    work();
  }
  void call_and_wait(const std::function<void()>& work) override { work(); }
};

// The thread that makes it is the main thread; it does the work in run_until() and run_all().
class QueuedMainThread final : public MainThread {
 public:
  void post(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    if (closed_) return;
    queue_.push_back(std::move(work));
    arrived_.notify_all();
  }

  // Posts at once, or in let_delays_pass() when delays are held: a test waits for none.
  void post_after(std::chrono::milliseconds delay, std::function<void()> work) override {
    delays.push_back(delay);
    if (hold_delays) {
      delayed_.push_back(std::move(work));
    } else {
      post(std::move(work));
    }
  }
  void let_delays_pass() {
    for (auto& work : std::exchange(delayed_, {})) post(std::move(work));
    run_all();
  }
  std::vector<std::chrono::milliseconds> delays;  // main thread
  bool hold_delays = false;                       // main thread

  void call_and_wait(const std::function<void()>& work) override {
    if (std::this_thread::get_id() == main_) return work();
    const auto done = std::make_shared<std::promise<void>>();
    std::future<void> answer = done->get_future();
    {
      const std::lock_guard lock(mutex_);
      if (closed_) throw std::runtime_error("the main thread takes no more work");
      queue_.push_back([&work, done] {
        work();
        done->set_value();
      });
      waiting_.push_back(done);
      arrived_.notify_all();
    }
    answer.get();
  }

  // Works until `condition` holds. False when it still does not after a minute.
  bool run_until(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::unique_lock lock(mutex_);
      arrived_.wait_for(lock, std::chrono::milliseconds(5), [&] { return !queue_.empty(); });
      if (!queue_.empty()) run_first(lock);
    }
    return true;
  }

  // Does what has been posted up to now and by that work.
  void run_all() {
    std::unique_lock lock(mutex_);
    while (!queue_.empty()) {
      run_first(lock);
      lock.lock();
    }
  }

  // From now on work is refused; who waits for some is told so.
  void close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    queue_.clear();
    for (const auto& waiter : waiting_) {
      try {
        waiter->set_exception(
            std::make_exception_ptr(std::runtime_error("the main thread takes no more work")));
      } catch (const std::future_error&) {
        continue;  // its work was done
      }
    }
  }

  std::size_t waiting_work() const {
    const std::lock_guard lock(mutex_);
    return queue_.size();
  }

 private:
  // Gives the lock back.
  void run_first(std::unique_lock<std::mutex>& lock) {
    const std::function<void()> work = std::move(queue_.front());
    queue_.pop_front();
    lock.unlock();
    work();
  }

  const std::thread::id main_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  std::deque<std::function<void()>> queue_;
  std::deque<std::shared_ptr<std::promise<void>>> waiting_;
  std::vector<std::function<void()>> delayed_;  // main thread
  bool closed_ = false;
};

}  // namespace norvo::test
