#include "CardSearch.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

#include "support/FileTree.h"

namespace norvo::test {
namespace fs = std::filesystem;

CardSearch::CardSearch(const std::string& drawing, std::uint64_t start, fs::path search_root)
    : card(drawing), search_root_(std::move(search_root)) {
  card.put_on(medium, start, sectors_behind);
  request.device_path = "/dev/test-card";
  request.destination = folder.path();
  request.Rec_Folder_Name = u"Norvo Birch Results";
  request.sectors_val = medium.made_sectors;
  request.entire_disk = false;
  request.sector_range = true;
  request.start_slider_val = decimal(start);
  request.end_slider_val = decimal(start + card.size());
}

ScanContext CardSearch::context() {
  return {.request = request,
          .state = state,
          .opener = opener,
          .results = recorder,
          .operations = recorder,
          .timer = timer,
          .read_with_helper = read_with_helper,
          .witnesses = witnesses};
}

fs::path CardSearch::pass_path(Pass pass) const {
  return folder.path() / search_root_ /
         (pass == Pass::general ? "General Recovery Results"
                                : "Omitted (recovered by Thorough Scan)");
}

Found CardSearch::found(Pass pass) const {
  Found files;
  const fs::path root = pass_path(pass);
  for (const std::string& entry : entries_below(root)) {
    if (!entry.ends_with('/')) files[entry] = card.describe(bytes_of(root / entry));
  }
  return files;
}

std::vector<std::string> CardSearch::reported(Pass pass) const {
  std::vector<std::string> paths;
  for (const Report& report : recorder.all<Report>()) {
    paths.push_back(report.path.lexically_relative(pass_path(pass)).native());
  }
  return paths;
}

void CardSearch::expect_runs_give_the_files(const RunCollector& collector) const {
  const std::vector<Report> reports = recorder.all<Report>();
  EXPECT_EQ(collector.finished().size(), reports.size());
  for (const Report& report : reports) {
    const auto seen = collector.finished().find(report.path);
    ASSERT_NE(seen, collector.finished().end()) << report.path;
    const std::vector<std::byte> content = bytes_of(report.path);
    EXPECT_EQ(seen->second.bytes, content) << report.path;
    EXPECT_EQ(bytes_at(medium, seen->second.runs), content) << report.path;
  }
}

std::vector<Recorded> CardSearch::recorded_from(std::size_t first) const {
  std::vector<Recorded> entries = recorder.recorded();
  const auto count = static_cast<std::ptrdiff_t>(std::min(first, entries.size()));
  entries.erase(entries.begin(), entries.begin() + count);
  return entries;
}

bool CardSearch::timer_survives(const std::function<void()>& run_pass) {
  return ticks_after(run_pass, std::chrono::minutes(1));
}

bool CardSearch::timer_ends(const std::function<void()>& run_pass) {
  return !ticks_after(run_pass, std::chrono::milliseconds(1400));
}

bool CardSearch::ticks_after(const std::function<void()>& run_pass,
                             std::chrono::milliseconds limit) {
  // A tick that is running may outlast this function.
  const auto ticks = std::make_shared<std::atomic<int>>(0);
  timer.start([ticks] { ++*ticks; });
  run_pass();
  const int before = *ticks;
  const auto end = std::chrono::steady_clock::now() + limit;
  while (*ticks == before && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  timer.invalidate();
  return *ticks != before;
}

std::string Alignment::text() const {
  return "start " + std::to_string(start) + ", blocks of " + std::to_string(block_sectors) +
         (blocks_fail_whole ? ", blocks fail whole" : "") +
         (helper ? ", with the helping thread" : "");
}

std::vector<Alignment> alignments(bool with_unreadable_sectors) {
  std::vector<Alignment> all;
  for (const std::uint64_t start : {0ULL, 1ULL, 2ULL, 510ULL, 512ULL, 5'000'000'000ULL}) {
    for (const std::size_t block_sectors : {1U, 2U, 3U, 7U, 512U}) {
      all.push_back({.start = start, .block_sectors = block_sectors});
      if (with_unreadable_sectors) {
        all.push_back({.start = start, .block_sectors = block_sectors, .blocks_fail_whole = true});
      }
    }
    all.push_back({.start = start, .block_sectors = 2, .helper = true});
  }
  return all;
}

}  // namespace norvo::test
