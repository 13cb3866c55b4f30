// The pool's thread: hands jobs to decoder processes, watches them, and passes results on.
// The public functions are for any thread; see DecoderPool.h for what they promise.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <unordered_map>
#include <vector>

#include "platform/decoder/DecoderPool.h"
#include "platform/decoder/DecoderProcess.h"
#include "platform/decoder/JobQueue.h"
#include "platform/decoder/WakePipe.h"

namespace norvo {

class PoolCore {
 public:
  PoolCore(DecoderPoolSettings settings, DecoderPool::Callback callback);
  ~PoolCore();
  PoolCore(const PoolCore&) = delete;
  PoolCore& operator=(const PoolCore&) = delete;

  void request(DecoderJob job);
  void set_priority(std::uint64_t id, std::int32_t priority);
  void cancel(std::uint64_t id);
  void cancel_all();
  void set_background(bool on);
  std::uint64_t started_processes() const { return started_; }

 private:
  using Clock = std::chrono::steady_clock;

  // A job that is not ended: it waits in the queue, or a seat with its serial works on it.
  struct Pending {
    DecoderJob job;
    std::uint32_t serial = 0;  // of the request that was sent last; 0 while it waits
    bool second_try = false;
  };

  // A request on its way to a decoder.
  struct Work {
    JobQueue::Entry entry;
    DecoderJob job;
    std::uint32_t serial = 0;
  };

  // The place of one process, which is replaced when it has to be.
  struct Seat {
    std::optional<DecoderProcess> process;
    unsigned files = 0;  // that the process was given
    std::optional<Work> work;
    Clock::time_point begin;
    Clock::time_point deadline;  // when its time is looked at
    Clock::time_point end;       // of all patience
    std::optional<std::chrono::nanoseconds> computed_before;
  };

  void run();
  void wait();
  void look_at(Seat& seat);
  bool is_background(const Seat& seat) const;
  std::optional<DecoderFailure> time_is_over(Seat& seat) const;
  void give_work();
  std::optional<Work> next_work();
  void begin(Seat& seat, Work work);
  bool send(Seat& seat, const DecoderRequest& request, int file);
  void shorten_cancelled();
  void hasten();
  void make_room();
  void put_back(Seat& seat);
  void answered(Seat& seat);
  void failed(Seat& seat, DecoderFailure failure);
  bool give_back(const Work& work, bool counts_as_try);
  void hand_over(const Work& work, DecoderResult result);
  void dismiss(Seat& seat);
  void bury();

  const DecoderPoolSettings settings_;
  const DecoderPool::Callback callback_;
  WakePipe wake_;

  // Guards the queue, the jobs and the end; not held while files or processes are touched.
  std::mutex mutex_;
  JobQueue queue_;
  std::unordered_map<std::uint64_t, Pending> jobs_;
  bool ending_ = false;

  // Only the pool's thread touches these.
  std::vector<Seat> seats_;
  std::vector<DecoderProcess> dying_;
  std::uint32_t serials_ = 0;

  // Any thread.
  std::atomic<std::uint64_t> started_ = 0;
  std::atomic<bool> background_ = false;

  std::thread thread_;
};

}  // namespace norvo
