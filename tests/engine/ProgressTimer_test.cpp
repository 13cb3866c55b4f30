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
  // Waits up to ten seconds until there are `count` of them.
  bool reach(std::size_t count) const {
    for (int waited = 0; waited < 1000 && times().size() < count; ++waited) {
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
  ASSERT_TRUE(ticks.reach(4));
  timer.invalidate();
  Clock::time_point before = start;
  Clock::duration shortest = Clock::duration::max();
  for (const Clock::time_point& time : ticks.times()) {
    EXPECT_GE(time - before, milliseconds(450));
    shortest = std::min(shortest, time - before);
    before = time;
  }
  // A busy machine wakes a thread late now and then, though not every time.
  EXPECT_LT(shortest, milliseconds(900));
}

TEST(ProgressTimer, DoesNotTickOnceItIsInvalidated) {
  Ticks ticks;
  ProgressTimer timer;
  timer.start([&] { ticks.add(); });
  timer.invalidate();
  std::this_thread::sleep_for(milliseconds(1200));
  EXPECT_TRUE(ticks.times().empty());
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
  EXPECT_TRUE(second.reach(2));
  EXPECT_TRUE(first.times().empty());
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
