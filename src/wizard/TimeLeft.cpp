#include "wizard/TimeLeft.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace norvo {
namespace {

constexpr std::chrono::seconds memory{60};
constexpr std::chrono::seconds least_knowledge{10};
constexpr std::chrono::seconds slice{5};

Text amount(double least, double most, TextView one, TextView many) {
  const auto from = static_cast<std::uint64_t>(std::floor(least));
  const auto to = static_cast<std::uint64_t>(std::ceil(most));
  if (from == 0 && to <= 1) return u"Less than a minute";
  if (from == 0) return u"Less than " + decimal(to) + u" " + Text(many);
  if (from == to) return u"About " + decimal(to) + u" " + Text(to == 1 ? one : many);
  return u"About " + decimal(from) + u" to " + decimal(to) + u" " + Text(many);
}

// A speed as it is printed on cards and drives: MB is a million bytes.
Text speed(double sectors_a_second) {
  constexpr double sector_bytes = 512;
  constexpr std::array<TextView, 4> units{u" B/s", u" KB/s", u" MB/s", u" GB/s"};
  double number = sectors_a_second * sector_bytes;
  std::size_t unit = 0;
  for (; number >= 999.5 && unit + 1 < units.size(); ++unit) number /= 1000;
  // Two digits at least, as far as there are any.
  const auto tenths = static_cast<std::uint64_t>(std::llround(number * 10));
  const bool shows_tenth = unit != 0 && tenths < 100;
  Text text = decimal(shows_tenth ? tenths / 10 : static_cast<std::uint64_t>(std::llround(number)));
  if (shows_tenth) text += u"." + decimal(tenths % 10);
  return text + Text(units.at(unit));
}

}  // namespace

void TimeLeft::begin(double sectors) {
  total_ = sectors;
  samples_.clear();
}

void TimeLeft::add(Clock::time_point now, double sectors) {
  samples_.push_back({now, sectors});
  while (samples_.size() > 1 && now - samples_.front().time > memory) samples_.pop_front();
}

// In sectors a second, over the last few seconds. With enough samples for that.
double TimeLeft::current_rate() const {
  const Sample& last = samples_.back();
  const auto begin = std::find_if(samples_.rbegin(), samples_.rend(), [&](const Sample& sample) {
    return last.time - sample.time >= slice;
  });
  const std::chrono::duration<double> seconds = last.time - begin->time;
  return (last.sectors - begin->sectors) / seconds.count();
}

Text TimeLeft::text() const {
  if (samples_.empty() || samples_.back().time - samples_.front().time < least_knowledge) return {};
  // The slowest and the fastest stretch of a few seconds bound what is to be expected.
  double slowest = std::numeric_limits<double>::infinity();
  double fastest = 0;
  auto first = samples_.begin();
  for (const Sample& sample : samples_) {
    if (sample.time - first->time < slice) continue;
    const std::chrono::duration<double> seconds = sample.time - first->time;
    const double rate = (sample.sectors - first->sectors) / seconds.count();
    slowest = std::min(slowest, rate);
    fastest = std::max(fastest, rate);
    ++first;
  }
  const double rest = std::max(0.0, total_ - samples_.back().sectors);
  if (!(slowest > 0) || !std::isfinite(slowest)) return {};
  const double least = rest / fastest;
  const double most = rest / slowest;
  constexpr double minute = 60;
  constexpr double hour = 3600;
  const bool hours = least >= 2 * hour;
  const double unit = hours ? hour : minute;
  return amount(least / unit, most / unit, hours ? u"hour" : u"minute",
                hours ? u"hours" : u"minutes") +
         u" left in this pass, " + speed(current_rate());
}

}  // namespace norvo
