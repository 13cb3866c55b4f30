// What is said of the time that a pass still takes.
#include "wizard/TimeLeft.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <regex>
#include <string>
#include <utility>

namespace norvo::test {
namespace {

using std::chrono::milliseconds;

// A pass that is looked at twice a second.
class Pass {
 public:
  explicit Pass(double sectors) { time_left_.begin(sectors); }

  // Goes on for `seconds` at `speed` sectors a second, which may depend on the second.
  void run(int seconds, const std::function<double(int)>& speed) {
    for (int tick = 0; tick < 2 * seconds; ++tick) {
      now_ += milliseconds(500);
      done_ += speed(tick / 2) / 2;
      time_left_.add(now_, done_);
    }
  }
  void run(int seconds, double speed) {
    run(seconds, [speed](int) { return speed; });
  }
  // What is said, without the speed behind it.
  std::string text() const {
    const std::string all = utf8_from_text(time_left_.text());
    return all.substr(0, all.find(','));
  }
  std::string speed() const {
    const std::string all = utf8_from_text(time_left_.text());
    return all.empty() ? "" : all.substr(all.find(',') + 2);
  }
  void begin(double sectors) {
    time_left_.begin(sectors);
    done_ = 0;
  }
  void add_now() { time_left_.add(now_, done_); }
  double done() const { return done_; }

 private:
  TimeLeft time_left_;
  TimeLeft::Clock::time_point now_;
  double done_ = 0;
};

TEST(TimeLeft, IsUnknownAtFirst) {
  Pass pass(1e6);
  EXPECT_EQ(pass.text(), "");
  pass.add_now();
  EXPECT_EQ(pass.text(), "");
  pass.run(9, 1000);
  EXPECT_EQ(pass.text(), "");
}

TEST(TimeLeft, IsKnownAfterTenSeconds) {
  Pass pass(1e6);
  pass.add_now();
  pass.run(10, 1000);
  EXPECT_EQ(pass.text(), "About 16 to 17 minutes left in this pass");
}

TEST(TimeLeft, IsUnknownWhileNothingMoves) {
  Pass pass(1e6);
  pass.run(30, 0.0);
  EXPECT_EQ(pass.text(), "");
}

TEST(TimeLeft, IsUnknownWhileTheDriveStallsAndForAMinuteAfter) {
  Pass pass(1e7);
  pass.run(30, 1000);
  EXPECT_NE(pass.text(), "");
  pass.run(10, 0.0);
  EXPECT_EQ(pass.text(), "");
  pass.run(30, 1000);
  EXPECT_EQ(pass.text(), "");
  pass.run(40, 1000);
  EXPECT_NE(pass.text(), "");
}

TEST(TimeLeft, OfAnEvenPassIsNamedOnce) {
  Pass pass(121'000);
  pass.add_now();
  pass.run(61, 1000);
  EXPECT_EQ(pass.text(), "About 1 minute left in this pass");
}

TEST(TimeLeft, UnderAMinuteIsNotCountedDown) {
  Pass pass(100'000);
  pass.run(60, 1000);
  EXPECT_EQ(pass.text(), "Less than a minute left in this pass");
}

TEST(TimeLeft, SpansWhatTheSlowAndTheFastStretchesSuggest) {
  Pass pass(1e6);
  pass.run(60, [](int second) { return second < 30 ? 500.0 : 1500.0; });
  // 940,000 sectors are left: 10.4 minutes at the fast speed and 31.3 at the slow one.
  EXPECT_EQ(pass.text(), "About 10 to 32 minutes left in this pass");
}

TEST(TimeLeft, OfALongPassIsInHours) {
  Pass pass(1e8);
  pass.run(30, 1000);
  EXPECT_EQ(pass.text(), "About 27 to 28 hours left in this pass");
}

TEST(TimeLeft, StaysInMinutesUpToTwoHours) {
  Pass pass(7'170'000);
  pass.run(30, 1000);
  EXPECT_EQ(pass.text(), "About 119 minutes left in this pass");
}

TEST(TimeLeft, ForgetsWhatIsOlderThanAMinute) {
  Pass pass(1e6);
  pass.run(60, 100);
  pass.run(70, 2000);
  // 854,000 sectors at 2000 a second are 7.1 minutes.
  EXPECT_EQ(pass.text(), "About 7 to 8 minutes left in this pass");
}

TEST(TimeLeft, ThatMayBeUnderAMinuteHasNoLeastAmount) {
  Pass pass(90'000);
  pass.run(30, 1000);
  pass.run(30, 500);
  EXPECT_EQ(pass.text(), "Less than 2 minutes left in this pass");
}

TEST(TimeLeft, IsForgottenWhenTheNextPassBegins) {
  Pass pass(1e6);
  pass.run(30, 1000);
  pass.begin(1e6);
  EXPECT_EQ(pass.text(), "");
  pass.run(9, 1000);
  EXPECT_EQ(pass.text(), "");
}

TEST(TimeLeft, AtTheEndIsNeverNegative) {
  Pass pass(60'000);
  pass.run(60, 1000);
  EXPECT_EQ(pass.text(), "Less than a minute left in this pass");
  pass.run(5, 1000);  // beyond the end
  EXPECT_EQ(pass.text(), "Less than a minute left in this pass");
}

TEST(TimeLeft, OfAnEmptyPassIsShortOrUnknown) {
  Pass pass(0);
  pass.run(30, 0.0);
  EXPECT_EQ(pass.text(), "");
}

TEST(TimeLeft, IsFollowedByTheSpeed) {
  TimeLeft time_left;
  time_left.begin(10'500'000);
  for (int second = 0; second <= 20; ++second) {
    time_left.add(TimeLeft::Clock::time_point(std::chrono::seconds(second)), second * 20'000.0);
  }
  EXPECT_EQ(utf8_from_text(time_left.text()), "About 8 to 9 minutes left in this pass, 10 MB/s");
}

TEST(Speed, IsThatOfTheLastFiveSeconds) {
  Pass pass(1e9);
  pass.run(60, 1e6);
  EXPECT_EQ(pass.speed(), "512 MB/s");
  pass.run(4, 1e5);
  EXPECT_EQ(pass.speed(), "143 MB/s") << "one second of the fast ones";
  pass.run(1, 1e5);
  EXPECT_EQ(pass.speed(), "51 MB/s");
}

TEST(Speed, HasAFractionWhereThereIsOneDigitOnly) {
  const std::pair<double, std::string> speeds[] = {
      {1, "512 B/s"},       {0.01, "5 B/s"},         {2, "1.0 KB/s"},         {15, "7.7 KB/s"},
      {19.4, "9.9 KB/s"},   {19.5, "10 KB/s"},       {1951, "999 KB/s"},      {1953, "1.0 MB/s"},
      {180'000, "92 MB/s"}, {1'951'000, "999 MB/s"}, {1'953'000, "1.0 GB/s"}, {1e10, "5120 GB/s"}};
  for (const auto& [sectors, said] : speeds) {
    Pass pass(1e15);
    pass.run(11, sectors);
    EXPECT_EQ(pass.speed(), said) << sectors;
  }
}

TEST(Speed, IsUnknownAsLongAsTheTimeIs) {
  Pass pass(1e6);
  pass.run(9, 1000);
  EXPECT_EQ(pass.speed(), "");
  pass.run(30, 1000);
  EXPECT_EQ(pass.speed(), "512 KB/s");
  pass.run(10, 0.0);
  EXPECT_EQ(pass.speed(), "");
}

TEST(TimeLeft, IsAlwaysARangeFromSmallToLargeThatHoldsTheTruth) {
  const std::regex range("About ([0-9]+) to ([0-9]+) (minutes|hours) left in this pass");
  for (const double speed : {1.0, 333.0, 1000.0, 12345.0, 1e6}) {
    for (const double sectors : {1e6, 3e7, 1e9, 1e12}) {
      Pass pass(sectors);
      pass.run(45, [&](int second) { return speed * (1 + 0.3 * std::sin(second)); });
      std::smatch found;
      const std::string text = pass.text();
      if (text == "Less than a minute left in this pass") {
        EXPECT_LT((sectors - pass.done()) / speed, 60 * 1.5);
        continue;
      }
      ASSERT_TRUE(std::regex_match(text, found, range)) << text;
      const double least = std::stod(found[1]);
      const double most = std::stod(found[2]);
      const double truth = (sectors - pass.done()) / speed / (found[3] == "hours" ? 3600 : 60);
      EXPECT_LT(least, most) << text;
      EXPECT_LE(least, truth) << text;
      EXPECT_GE(most, truth) << text;
    }
  }
}

}  // namespace
}  // namespace norvo::test
