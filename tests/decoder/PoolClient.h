// What a pool reported, for tests: results by job, in their order, with waiting.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

#include "platform/decoder/DecoderPool.h"

namespace norvo::test {

class PoolClient {
 public:
  // To be handed to the pool; this object outlives it.
  DecoderPool::Callback callback() {
    return [this](const DecoderResult& result) { take(result); };
  }

  // Waits until `jobs` jobs are ended; false when that does not happen within `patience`.
  bool wait_for(std::size_t jobs, std::chrono::seconds patience = std::chrono::seconds(60)) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [this, jobs] { return ended_ >= jobs; });
  }

  // Copies, in the order in which they came.
  std::vector<DecoderResult> results() const {
    const std::lock_guard lock(mutex_);
    return results_;
  }
  std::vector<DecoderResult> results_of(std::uint64_t id) const {
    std::vector<DecoderResult> found;
    for (const DecoderResult& result : results()) {
      if (result.id == id) found.push_back(result);
    }
    return found;
  }
  std::vector<std::uint64_t> order() const {
    std::vector<std::uint64_t> ids;
    for (const DecoderResult& result : results()) ids.push_back(result.id);
    return ids;
  }

 private:
  void take(const DecoderResult& result) {
    const std::lock_guard lock(mutex_);
    results_.push_back(result);
    if (result.is_last) ++ended_;
    changed_.notify_all();
  }

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<DecoderResult> results_;
  std::size_t ended_ = 0;
};

}  // namespace norvo::test
