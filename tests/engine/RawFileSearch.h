// One search of a card for videos.
#pragma once

#include "CardSearch.h"
#include "engine/RawFileScan.h"

namespace norvo::test {

class RawFileSearch : public CardSearch {
 public:
  static constexpr const char* search_root = "Norvo Birch Results/Video Search";

  explicit RawFileSearch(const std::string& drawing, std::uint64_t start = 0);

  // Gives each type of the table a row of the found-files table, with a count of 0.
  void add_rows(const SignatureTable& table);

  // The count of a type's row.
  Text counted(TextView type) const;

  // Runs one pass and returns its result.
  bool run(Pass pass, const SignatureTable& table,
           std::size_t block_sectors = SectorReader::default_block_sectors);
};

// How many entries the set-up of a pass records before its first sector.
inline constexpr std::size_t general_file_set_up_entries = 13;
inline constexpr std::size_t thorough_file_set_up_entries = 10;

// A longer header for what a Card draws as J: jpeg()'s and this one go together.
inline TypeRow jfif(const Text& maximum = no_limit) {
  return {u"JFI", maximum, u"FFD8FFE0"};
}

// `rows` and the first `entries` entries of one more record.
SignatureTable cut_off(const std::vector<TypeRow>& rows, const TypeRow& last, std::size_t entries);

using RawFileScenario = ScenarioOf<RawFileSearch>;

// As expect_found_everywhere(), with a row for every type.
void expect_carved(RawFileScenario scenario, const Found& expected);

}  // namespace norvo::test
