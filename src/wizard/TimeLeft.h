// How long a pass still takes, as a range that the recent speed supports, and that speed. Main
// thread.
#pragma once

#include <chrono>
#include <deque>

#include "util/Text.h"

namespace norvo {

class TimeLeft {
 public:
  using Clock = std::chrono::steady_clock;

  // A pass over `sectors` begins.
  void begin(double sectors);

  // `sectors` of the pass have been searched at `now`.
  void add(Clock::time_point now, double sectors);

  // "About 3 to 4 minutes left in this pass, 92 MB/s"; empty while it cannot be told: before there
  // are ten seconds of progress, and while nothing moves.
  Text text() const;

 private:
  double current_rate() const;

  struct Sample {
    Clock::time_point time;
    double sectors;
  };
  double total_ = 0;
  std::deque<Sample> samples_;  // of the last minute
};

}  // namespace norvo
