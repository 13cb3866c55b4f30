// One search of a card into a fresh folder, with everything around it in the test's hands.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/PassSteps.h"
#include "engine/SectorReader.h"
#include "support/Card.h"
#include "support/FakeDevice.h"
#include "support/Recorder.h"
#include "support/RunCollector.h"
#include "support/TableBuilder.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {

// Paths below the pass folder and what the files hold, as Card::describe tells it.
using Found = std::map<std::string, std::string>;

class CardSearch {
 public:
  static constexpr std::uint64_t sectors_behind = 5;

  // The range is the card, which lies on the medium from sector `start` on. `search_root` is the
  // search's folder, relative to the destination.
  CardSearch(const std::string& drawing, std::uint64_t start, std::filesystem::path search_root);

  ScanContext context();

  std::filesystem::path pass_path(Pass pass) const;
  Found found(Pass pass = Pass::general) const;

  // Paths of the reports, relative to the pass folder, in their order.
  std::vector<std::string> reported(Pass pass = Pass::general) const;

  // Each reported file was seen by a witness of `collector`: its bytes are those of the file and
  // those of the medium at its runs.
  void expect_runs_give_the_files(const RunCollector& collector) const;

  // What was recorded from entry `first` on.
  std::vector<Recorded> recorded_from(std::size_t first) const;

  // Whether a progress timer that was started before `run_pass` still ticks after it; a tick that
  // comes late on a busy machine counts.
  bool timer_survives(const std::function<void()>& run_pass);

  // Whether such a timer is silent after `run_pass`, for the time of more than two ticks.
  bool timer_ends(const std::function<void()>& run_pass);

  Card card;
  FakeMedium medium;
  TemporaryFolder folder;
  Recorder recorder;
  ScanState state;
  ScanRequest request;
  ProgressTimer timer;
  FakeOpener opener{medium};
  bool read_with_helper = false;
  FileWitnesses* witnesses = nullptr;

 private:
  bool ticks_after(const std::function<void()>& run_pass, std::chrono::milliseconds limit);

  std::filesystem::path search_root_;
};

// Where the card lies, and how it is read.
struct Alignment {
  std::uint64_t start = 0;
  std::size_t block_sectors = 0;
  bool blocks_fail_whole = false;
  bool helper = false;

  std::string text() const;
};
std::vector<Alignment> alignments(bool with_unreadable_sectors);

template <typename Search>
struct ScenarioOf {
  std::string drawing;
  SignatureTable table;
  // Changes the search before it runs; `start` is where the card begins.
  std::function<void(Search& search, std::uint64_t start)> prepare = {};
  // For drives on which reading ahead changes what is read later.
  bool without_helper = false;
};

// Runs a General pass for several reading blocks and start sectors, with and without the helping
// thread, and on drives that shorten a block at an unreadable sector as well as on those that
// refuse it. The pass must end normally, find exactly these files every time, and report each of
// them once. Most runs have witnesses, to whom the files' runs must be told as they are.
template <typename Search>
void expect_found_everywhere(const ScenarioOf<Search>& scenario, const Found& expected) {
  const bool unreadable = scenario.drawing.find('x') != std::string::npos;
  for (const Alignment& where : alignments(unreadable)) {
    if (where.helper && scenario.without_helper) continue;
    SCOPED_TRACE(where.text());
    Search search(scenario.drawing, where.start);
    search.medium.blocks_fail_whole = where.blocks_fail_whole;
    search.read_with_helper = where.helper;
    RunCollector collector;
    const bool witnessed = where.block_sectors != 7;
    if (witnessed) search.witnesses = &collector;
    if (scenario.prepare) scenario.prepare(search, where.start);
    EXPECT_TRUE(search.run(Pass::general, scenario.table, where.block_sectors));
    EXPECT_EQ(search.found(), expected);
    if (witnessed) search.expect_runs_give_the_files(collector);
    std::vector<std::string> reported = search.reported();
    std::sort(reported.begin(), reported.end());
    std::vector<std::string> wanted;
    for (const auto& [path, content] : expected) wanted.push_back(path);
    EXPECT_EQ(reported, wanted);
  }
}

}  // namespace norvo::test
