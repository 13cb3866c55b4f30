#include "engine/Progress.h"

#include <gtest/gtest.h>

#include "support/Recorder.h"

namespace norvo::test {
namespace {

ScanState& set_range(ScanState& state, std::uint64_t start, std::uint64_t end,
                     std::uint64_t index) {
  state.start_sector = start;
  state.end_sector = end;
  state.total_sector = end - start;
  state.for_index = index;
  return state;
}

TEST(SectorLabel, CountsThePercentageFromTheStartAndShowsAbsoluteSectors) {
  EXPECT_EQ(sector_label(1500, 1000, 3000, 2000), u"Sectors 1500 of 3000   ( Completed 25% )");
}

TEST(SectorLabel, RoundsThePercentageDown) {
  EXPECT_EQ(sector_label(1, 0, 3, 3), u"Sectors 1 of 3   ( Completed 33% )");
  EXPECT_EQ(sector_label(199, 0, 200, 200), u"Sectors 199 of 200   ( Completed 99% )");
  EXPECT_EQ(sector_label(7, 7, 9, 2), u"Sectors 7 of 9   ( Completed 0% )");
  EXPECT_EQ(sector_label(9, 7, 9, 2), u"Sectors 9 of 9   ( Completed 100% )");
}

TEST(SectorLabel, CountsInSixtyFourBitsWithoutASign) {
  EXPECT_EQ(sector_label(50'000'000'000, 0, 100'000'000'000, 100'000'000'000),
            u"Sectors 50000000000 of 100000000000   ( Completed 50% )");
  // 2^60 x 100 wraps to 2^62, which is 4 times the total.
  const std::uint64_t total = std::uint64_t{1} << 60U;
  EXPECT_EQ(sector_label(total, 0, total, total),
            u"Sectors 1152921504606846976 of 1152921504606846976   ( Completed 4% )");
}

TEST(TimerTick, ShowsSectorLabelModeLabelAndProgressInThisOrder) {
  ScanState state;
  Recorder recorder;
  state.Curr_Running_Mode_Info.set(u"( the mode )");
  timerTickSetLabel(set_range(state, 1000, 3000, 1500), recorder);
  EXPECT_EQ(
      recorder.recorded(),
      (std::vector<Recorded>{
          ScanOperation(operation::SetSectorLabel{u"Sectors 1500 of 3000   ( Completed 25% )"}),
          ScanOperation(operation::SetModeLabel{u"( the mode )"}),
          ScanOperation(operation::SetProgressValue{500})}));
}

TEST(TimerTick, ShowsOneHundredPercentAtTheEnd) {
  ScanState state;
  Recorder recorder;
  timerTickSetLabel(set_range(state, 1000, 3000, 3000), recorder);
  ASSERT_EQ(recorder.recorded().size(), 3U);
  EXPECT_EQ(recorder.all<operation::SetSectorLabel>()[0].text,
            u"Sectors 3000 of 3000   ( Completed 100% )");
  EXPECT_EQ(recorder.all<operation::SetProgressValue>()[0].value, 2000);
}

TEST(TimerTick, LeavesEverythingUnchangedForAnEmptyRange) {
  ScanState state;
  Recorder recorder;
  timerTickSetLabel(set_range(state, 5, 5, 5), recorder);
  EXPECT_TRUE(recorder.recorded().empty());
}

TEST(TimerTick, LeavesEverythingUnchangedWhenTheIndexHasPassedTheEnd) {
  ScanState state;
  Recorder recorder;
  timerTickSetLabel(set_range(state, 1000, 3000, 3001), recorder);
  EXPECT_TRUE(recorder.recorded().empty());
}

TEST(ShowSectorLabel, SaysNothingForAnEmptyRange) {
  ScanState state;
  Recorder recorder;
  show_sector_label(set_range(state, 5, 5, 5), recorder);
  EXPECT_TRUE(recorder.recorded().empty());
  show_sector_label(set_range(state, 5, 7, 5), recorder);
  EXPECT_EQ(recorder.recorded(), (std::vector<Recorded>{ScanOperation(operation::SetSectorLabel{
                                     u"Sectors 5 of 7   ( Completed 0% )"})}));
}

}  // namespace
}  // namespace norvo::test
