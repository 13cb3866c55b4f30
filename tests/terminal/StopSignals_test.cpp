// Signals change the whole process, so each test runs in a process of its own.

#include "platform/terminal/StopSignals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace norvo {
namespace {

constexpr int as_expected = 42;

[[noreturn]] void end_child(bool good) {
  std::_Exit(good ? as_expected : 1);
}

template <typename Body>
void expect_in_child(Body body) {
  EXPECT_EXIT(end_child(body()), testing::ExitedWithCode(as_expected), "");
}

class StopSignalsDeathTest : public testing::TestWithParam<int> {};

TEST_P(StopSignalsDeathTest, SetsThePublishedFlag) {
  expect_in_child([] {
    install_stop_signals();
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    if (stop_now != 0) return false;
    raise(GetParam());
    return stop_now == 1;
  });
}

TEST_P(StopSignalsDeathTest, BeforeAFlagIsPublishedSetsItAtOnce) {
  expect_in_child([] {
    install_stop_signals();
    raise(GetParam());
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    return stop_now == 1;
  });
}

TEST_P(StopSignalsDeathTest, LeavesAFlagAloneThatIsNoLongerPublished) {
  expect_in_child([] {
    install_stop_signals();
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    publish_stop_flag(nullptr);
    raise(GetParam());
    return stop_now == 0;
  });
}

TEST_P(StopSignalsDeathTest, MayComeMoreThanOnce) {
  expect_in_child([] {
    install_stop_signals();
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    raise(GetParam());
    stop_now = 0;
    raise(GetParam());
    return stop_now == 1;
  });
}

INSTANTIATE_TEST_SUITE_P(InterruptAndTerminate, StopSignalsDeathTest,
                         testing::Values(SIGINT, SIGTERM));

TEST(BrokenPipeDeathTest, IsNothingToDieOf) {
  expect_in_child([] {
    install_stop_signals();
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return false;
    close(ends[0]);
    return write(ends[1], "x", 1) == -1 && stop_now == 0;
  });
}

TEST(StopSignalsFlagDeathTest, StaysUnsetWithoutASignal) {
  expect_in_child([] {
    install_stop_signals();
    std::atomic<std::int32_t> stop_now{0};
    publish_stop_flag(&stop_now);
    return stop_now == 0;
  });
}

}  // namespace
}  // namespace norvo
