#include "engine/ProgressTimer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace norvo::test {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// When the ticks came.
class Ticks {
 public:
  void add() {
    const std::lock_guard lock(mutex_);
    times_.push_back(Clock::now());
  }
  std::vector<Clock::time_point> times() const {
    const std::lock_guard lock(mutex_);
    return times_;
  }
  std::size_t count() const { return times().size(); }

  // Waits up to a minute until there are `count` of them.
  bool reach(std::size_t count) const {
    for (int waited = 0; waited < 6000 && times().size() < count; ++waited) {
      std::this_thread::sleep_for(milliseconds(10));
    }
    return times().size() >= count;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<Clock::time_point> times_;
};

TEST(ProgressTimer, TicksEveryHalfSecondAndNotAtOnce) {
  Ticks ticks;
  ProgressTimer timer;
  const Clock::time_point start = Clock::now();
  timer.start([&] { ticks.add(); });
  // A busy machine wakes a thread late, though not for ever.
  Clock::duration shortest = Clock::duration::max();
  for (std::size_t count = 4; count <= 60 && shortest >= milliseconds(900); ++count) {
    ASSERT_TRUE(ticks.reach(count));
    shortest = Clock::duration::max();
    Clock::time_point before = start;
    for (const Clock::time_point& time : ticks.times()) {
      shortest = std::min(shortest, time - before);
      before = time;
    }
    EXPECT_GE(shortest, milliseconds(450));
  }
  EXPECT_LT(shortest, milliseconds(900));
}

TEST(ProgressTimer, DoesNotTickOnceItIsInvalidated) {
  Ticks ticks;
  ProgressTimer timer;
  std::size_t before = 0;
  // On a busy machine a tick may come between the two.
  for (int tries = 0; tries < 20; ++tries) {
    const Clock::time_point start = Clock::now();
    timer.start([&] { ticks.add(); });
    before = ticks.count();
    timer.invalidate();
    if (Clock::now() - start < ProgressTimer::interval) break;
  }
  std::this_thread::sleep_for(milliseconds(1200));
  EXPECT_EQ(ticks.count(), before);
}

TEST(ProgressTimer, InvalidatingEndsItsThreadWithoutWaitingForTheNextTick) {
  constexpr int timers = 20;
  const Clock::time_point start = Clock::now();
  for (int started = 0; started < timers; ++started) {
    ProgressTimer timer;
    timer.start([] {});
    timer.invalidate();
    timer.invalidate();
  }
  EXPECT_LT(Clock::now() - start, timers * milliseconds(250)) << "half of what waiting would take";
}

TEST(ProgressTimer, MayBeInvalidatedFromWithinATick) {
  Ticks ticks;
  ProgressTimer timer;
  timer.start([&] {
    ticks.add();
    timer.invalidate();
  });
  ASSERT_TRUE(ticks.reach(1));
  std::this_thread::sleep_for(milliseconds(800));
  EXPECT_EQ(ticks.times().size(), 1U);
}

TEST(ProgressTimer, GoesOnAfterAnExceptionOfATick) {
  Ticks ticks;
  ProgressTimer timer;
  timer.start([&] {
    ticks.add();
    throw std::runtime_error("dropped");
  });
  EXPECT_TRUE(ticks.reach(2));
}

TEST(ProgressTimer, StartingAgainEndsTheTimerBefore) {
  Ticks first;
  Ticks second;
  ProgressTimer timer;
  timer.start([&] { first.add(); });
  timer.start([&] { second.add(); });
  // On a busy machine a tick may come between the two.
  const std::size_t before = first.count();
  EXPECT_TRUE(second.reach(2));
  EXPECT_EQ(first.count(), before);
}

TEST(ProgressTimer, TicksAgainWhenItIsStartedAfterItWasInvalidated) {
  Ticks ticks;
  ProgressTimer timer;
  timer.start([] {});
  timer.invalidate();
  timer.start([&] { ticks.add(); });
  EXPECT_TRUE(ticks.reach(1));
}

TEST(ProgressTimer, MayBeInvalidatedBeforeItWasEverStarted) {
  ProgressTimer timer;
  EXPECT_NO_THROW(timer.invalidate());
}

}  // namespace
}  // namespace norvo::test
