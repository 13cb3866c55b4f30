// The engine against the plain search on seeded random searches. NORVO_SEEDS="first count" chooses
// other seeds than the usual ones.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "../plain/PlainSearch.h"
#include "EngineHarness.h"
#include "OutcomeComparison.h"
#include "RandomSearch.h"

namespace differential {
namespace {

constexpr std::uint64_t kUsualFirst = 1;
constexpr std::uint64_t kUsualCount = 6000;
constexpr int kShownFailures = 5;

struct SeedRange {
  std::uint64_t first = kUsualFirst;
  std::uint64_t count = kUsualCount;
};

SeedRange seeds() {
  SeedRange range;
  // Read before any search starts a thread.
  if (const char* wanted = std::getenv("NORVO_SEEDS")) {  // NOLINT(concurrency-mt-unsafe)
    std::istringstream in(wanted);
    in >> range.first >> range.count;
    EXPECT_FALSE(in.fail()) << "NORVO_SEEDS is \"first count\", not \"" << wanted << '"';
  }
  return range;
}

// Compares the searches of all seeds that are wanted; further failures are only counted.
template <typename Wanted>
void compare(Wanted is_wanted, bool with_helper = false) {
  const SeedRange range = seeds();
  int failures = 0;
  std::uint64_t compared = 0;
  for (std::uint64_t seed = range.first; seed < range.first + range.count; ++seed) {
    const plain::Search search = random_search(seed);
    if (!is_wanted(search)) {
      continue;
    }
    ++compared;
    const auto difference = first_difference(plain::run(search), run_engine(search, with_helper));
    if (difference && ++failures <= kShownFailures) {
      ADD_FAILURE() << "seed " << seed << "\n" << *difference << "\n" << describe(search);
    }
  }
  EXPECT_EQ(failures, 0) << "of " << compared << " searches";
  if (compared == 0) {
    GTEST_SKIP() << "none of the chosen seeds has such a mode";
  }
}

TEST(Differential, PhotoSearchesEqualThePlainOnes) {
  compare([](const plain::Search& search) { return search.mode == 0; });
}

TEST(Differential, RawFileSearchesEqualThePlainOnes) {
  compare([](const plain::Search& search) { return search.mode != 0; });
}

// A drive that is pulled by the reading itself is left out: whoever reads ahead pulls it earlier.
TEST(Differential, SearchesWithAReadingHelperEqualThePlainOnes) {
  constexpr std::size_t several_blocks = 600 * 512;
  compare(
      [](const plain::Search& search) {
        return !search.device.gone_after_sector && search.device.bytes.size() > several_blocks;
      },
      true);
}

}  // namespace
}  // namespace differential
