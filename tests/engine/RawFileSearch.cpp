#include "RawFileSearch.h"

#include <utility>

namespace norvo::test {

RawFileSearch::RawFileSearch(const std::string& drawing, std::uint64_t start)
    : CardSearch(drawing, start, search_root) {
  request.Recovery_MODE = 1;
}

void RawFileSearch::add_rows(const SignatureTable& table) {
  for (std::size_t r = 0; r < whole_records(table); ++r) {
    const Text& type = table[r * SignatureRecord::stride];
    if (recorder.found_files.NoOfFile(type)) continue;
    recorder.found_files.createSignatureListTableRecord(type, 0, u"", {}, type);
  }
}

Text RawFileSearch::counted(TextView type) const {
  for (std::size_t i = 0; i < recorder.found_files.size(); ++i) {
    const FoundFilesRow row = recorder.found_files.row(i);
    if (row.FileTypes_Hidden == type) return row.NoOfFile;
  }
  return u"no row";
}

bool RawFileSearch::run(Pass pass, const SignatureTable& table, std::size_t block_sectors) {
  return RawFileScan(context(), pass, table, block_sectors).Raw_File_Recovey_Mode();
}

SignatureTable cut_off(const std::vector<TypeRow>& rows, const TypeRow& last, std::size_t entries) {
  SignatureTable table = table_of(rows);
  const SignatureTable broken = table_of({last});
  table.insert(table.end(), broken.begin(), broken.begin() + static_cast<std::ptrdiff_t>(entries));
  return table;
}

void expect_carved(RawFileScenario scenario, const Found& expected) {
  const auto prepare = std::exchange(scenario.prepare, {});
  scenario.prepare = [&](RawFileSearch& search, std::uint64_t start) {
    search.add_rows(scenario.table);
    if (prepare) prepare(search, start);
  };
  expect_found_everywhere(scenario, expected);
}

}  // namespace norvo::test
