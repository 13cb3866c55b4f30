#include "engine/SourceRuns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace norvo {
namespace {

using Kind = SectorOrigin::Kind;
using testing::ElementsAre;

SectorOrigin from(Kind kind, std::uint64_t sector) {
  return {.kind = kind, .sector = sector};
}

SourceRun run(Kind kind, std::uint64_t sector, std::uint64_t sectors) {
  return {.origin = from(kind, sector), .sectors = sectors};
}

TEST(SourceRuns, SectorsThatFollowEachOtherOnTheDeviceAreOneRun) {
  SourceRuns runs;
  runs.add(from(Kind::read, 7), 1);
  runs.add(from(Kind::read, 8), 512);
  runs.add(from(Kind::read, 520), 3);
  EXPECT_THAT(runs.all(), ElementsAre(run(Kind::read, 7, 516)));
}

TEST(SourceRuns, ASectorThatWasReadTwiceBeginsANewRun) {
  SourceRuns runs;
  runs.add(from(Kind::read, 7), 2);
  runs.add(from(Kind::read, 8), 1);
  runs.add(from(Kind::read, 10), 1);
  EXPECT_THAT(runs.all(),
              ElementsAre(run(Kind::read, 7, 2), run(Kind::read, 8, 1), run(Kind::read, 10, 1)));
}

TEST(SourceRuns, RepetitionsOfOneSectorAreOneRunApartFromTheSectorItself) {
  SourceRuns runs;
  runs.add(from(Kind::read, 7), 1);
  runs.add(from(Kind::repeated, 7), 1);
  runs.add(from(Kind::repeated, 7), 1);
  runs.add(from(Kind::repeated, 8), 1);
  runs.add(from(Kind::read, 8), 1);
  EXPECT_THAT(runs.all(), ElementsAre(run(Kind::read, 7, 1), run(Kind::repeated, 7, 2),
                                      run(Kind::repeated, 8, 1), run(Kind::read, 8, 1)));
}

TEST(SourceRuns, SectorsOfUnknownOriginAreOneRun) {
  SourceRuns runs;
  runs.add({}, 1);
  runs.add({}, 2);
  EXPECT_THAT(runs.all(), ElementsAre(run(Kind::unknown, 0, 3)));
}

TEST(SourceRuns, AreEmptyAfterClearing) {
  SourceRuns runs;
  runs.add(from(Kind::read, 7), 1);
  runs.clear();
  EXPECT_TRUE(runs.all().empty());
  runs.add(from(Kind::read, 8), 1);
  EXPECT_THAT(runs.all(), ElementsAre(run(Kind::read, 8, 1)));
}

}  // namespace
}  // namespace norvo
