// Random searches are worth something only while they reach the rules they are made for.
#include "RandomSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "OutcomeComparison.h"
#include "SplitMix.h"

namespace differential {
namespace {

using plain::EventKind;

constexpr std::uint64_t kSeeds = 2000;

int percent_of(std::uint64_t part) {
  return static_cast<int>(part * 100 / kSeeds);
}

std::uint64_t count_events(const plain::Outcome& outcome, EventKind kind) {
  return static_cast<std::uint64_t>(
      std::count_if(outcome.events.begin(), outcome.events.end(),
                    [kind](const plain::Event& event) { return event.kind == kind; }));
}

// How many of the searches show what.
std::map<std::string, std::uint64_t> survey() {
  std::map<std::string, std::uint64_t> seen;
  for (std::uint64_t seed = 1; seed <= kSeeds; ++seed) {
    const plain::Search search = random_search(seed);
    const plain::Outcome outcome = plain::run(search);
    const std::uint64_t reports = count_events(outcome, EventKind::kReport);
    std::set<std::string> paths;
    for (const plain::Event& event : outcome.events) {
      paths.insert(event.path);
    }
    seen["mode " + std::to_string(search.mode)] += 1;
    seen["any file"] += reports > 0;
    seen["ten files"] += reports >= 10;
    seen["a name twice"] += reports > 0 && paths.size() < reports + 1;
    seen["long file"] += std::any_of(outcome.files.begin(), outcome.files.end(), [](const auto& f) {
      return f.second.size() > std::size_t{512} * 512;
    });
    seen["long device"] += search.device.bytes.size() > std::size_t{512} * 512;
    seen["unreadable"] += !search.device.unreadable.empty();
    seen["clearing"] += count_events(outcome, EventKind::kClearing) > 0;
    seen["exception"] += count_events(outcome, EventKind::kExceptionMessage) > 0;
    seen["saving failure"] += count_events(outcome, EventKind::kMessage) > 0;
    seen["device error"] += count_events(outcome, EventKind::kDeviceError) > 0;
    seen["stopped"] += !outcome.general_result || outcome.thorough_result == false;
    seen["thorough file"] +=
        std::any_of(outcome.files.begin(), outcome.files.end(),
                    [](const auto& f) { return f.first.find("/Omitted") != std::string::npos; });
  }
  return seen;
}

TEST(RandomSearches, ReachWhatTheyAreMadeFor) {
  const std::map<std::string, std::uint64_t> seen = survey();
  for (const auto& [what, count] : seen) {
    RecordProperty(what, std::to_string(count));
  }
  EXPECT_GE(percent_of(seen.at("any file")), 70);
  EXPECT_GE(percent_of(seen.at("ten files")), 20);
  EXPECT_GE(percent_of(seen.at("thorough file")), 20);
  EXPECT_GE(percent_of(seen.at("unreadable")), 15);
  EXPECT_GE(percent_of(seen.at("long device")), 4);
  EXPECT_GE(percent_of(seen.at("stopped")), 5);
  EXPECT_GE(seen.at("long file"), 8U);
  for (const char* rare :
       {"clearing", "exception", "saving failure", "device error", "a name twice"}) {
    EXPECT_GE(seen.at(rare), 5U) << rare;
  }
  for (const char* mode : {"mode 0", "mode 1", "mode 2", "mode 3"}) {
    EXPECT_GE(percent_of(seen.at(mode)), 10) << mode;
  }
}

TEST(RandomSearches, AreTheSameForTheSameSeed) {
  SplitMix random(1234567);
  EXPECT_EQ(random.next(), 6457827717110365317U);
  EXPECT_EQ(random.next(), 3203168211198807973U);
  const plain::Search first = random_search(77);
  const plain::Search again = random_search(77);
  EXPECT_EQ(describe(first), describe(again));
  EXPECT_EQ(first.device.bytes, again.device.bytes);
  EXPECT_NE(describe(first), describe(random_search(79)));
}

plain::Outcome small_outcome() {
  plain::Outcome outcome;
  outcome.events = {{.kind = EventKind::kReport, .path = "/d/a"}, {}};
  outcome.files["/d/a"] = {1, 2, 3};
  outcome.folders = {"/d/f"};
  outcome.rows = {{"A", "1", "a", "/d/a", "A"}};
  return outcome;
}

TEST(OutcomeComparison, FindsEveryKindOfDifference) {
  const plain::Outcome expected = small_outcome();
  EXPECT_EQ(first_difference(expected, small_outcome()), std::nullopt);
  std::vector<plain::Outcome> others(10, expected);
  others[0].events[0].uid = "x";
  others[1].events.pop_back();
  others[2].events.insert(others[2].events.begin(), plain::Event{.kind = EventKind::kClearing});
  others[3].files["/d/a"][2] = 4;
  others[4].files["/d/a"].push_back(4);
  others[5].files["/d/b"] = {};
  others[6].folders.insert("/d/g");
  others[7].rows[0].NoOfFile = "2";
  others[8].thorough_result = true;
  others[9].shown_item_count = 1;
  for (const plain::Outcome& other : others) {
    EXPECT_NE(first_difference(expected, other), std::nullopt) << &other - others.data();
    EXPECT_NE(first_difference(other, expected), std::nullopt) << &other - others.data();
  }
  EXPECT_NE(first_difference(expected, others[3])->find("byte 2"), std::string::npos);
}

TEST(OutcomeComparison, TakesRepeatedFinalScreensForOne) {
  plain::Outcome repeated = small_outcome();
  repeated.events.push_back({});
  EXPECT_EQ(first_difference(small_outcome(), repeated), std::nullopt);
}

}  // namespace
}  // namespace differential
