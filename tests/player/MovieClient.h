// A movie player, and what it reported, for tests, with waiting.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/player/MoviePlayer.h"

namespace norvo::test {

class MovieClient {
 public:
  explicit MovieClient(MoviePlayerSettings settings)
      : player(std::move(settings), [this](const MovieEvent& event) { note(event); }) {}

  // Whether each event is taken as soon as it comes; at first it is.
  void take_all(bool on) { takes_all_ = on; }

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

  // The first event of `movie` that is one of `kinds`, when it comes within `patience`.
  std::optional<MovieEvent::Kind> first_of(std::uint64_t movie,
                                           const std::vector<MovieEvent::Kind>& kinds,
                                           std::chrono::seconds patience) {
    const auto is_wanted = [&](const MovieEvent& event) {
      return event.movie == movie && std::ranges::find(kinds, event.kind) != kinds.end();
    };
    std::unique_lock lock(mutex_);
    const auto found = [&] { return std::ranges::find_if(events_, is_wanted); };
    if (!changed_.wait_for(lock, patience, [&] { return found() != events_.end(); })) return {};
    return found()->kind;
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
  void note(const MovieEvent& event) {
    {
      const std::lock_guard lock(mutex_);
      events_.push_back(event);
      changed_.notify_all();
    }
    if (takes_all_) player.taken();
  }

  std::atomic<bool> takes_all_{true};
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<MovieEvent> events_;

 public:
  MoviePlayer player;  // ends first: it calls back
};

}  // namespace norvo::test
