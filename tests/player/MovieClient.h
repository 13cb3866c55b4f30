// What a movie player reported, for tests, with waiting.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/player/MoviePlayer.h"

namespace norvo::test {

class MovieClient {
 public:
  // To be handed to the player; this object outlives it.
  MoviePlayer::Callback callback() {
    return [this](const MovieEvent& event) {
      const std::lock_guard lock(mutex_);
      events_.push_back(event);
      changed_.notify_all();
    };
  }

  // Waits until `count` events of this kind belong to `movie`.
  bool wait_for(MovieEvent::Kind kind, std::uint64_t movie, std::size_t count = 1) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, std::chrono::seconds(30), [&] {
      return static_cast<std::size_t>(
                 std::count_if(events_.begin(), events_.end(), [&](const MovieEvent& event) {
                   return event.kind == kind && event.movie == movie;
                 })) >= count;
    });
  }

  std::vector<MovieEvent> of(MovieEvent::Kind kind) const {
    const std::lock_guard lock(mutex_);
    std::vector<MovieEvent> found;
    for (const MovieEvent& event : events_) {
      if (event.kind == kind) found.push_back(event);
    }
    return found;
  }
  std::size_t size() const {
    const std::lock_guard lock(mutex_);
    return events_.size();
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<MovieEvent> events_;
};

}  // namespace norvo::test
