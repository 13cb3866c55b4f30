// One photo search of a card.
#pragma once

#include "CardSearch.h"
#include "engine/PhotoScan.h"

namespace norvo::test {

class PhotoSearch : public CardSearch {
 public:
  static constexpr const char* search_root = "Norvo Birch Results/Photo Search";

  explicit PhotoSearch(const std::string& drawing, std::uint64_t start = 0);

  // Runs one pass and returns its result.
  bool run(Pass pass, const SignatureTable& table,
           std::size_t block_sectors = SectorReader::default_block_sectors);
};

// How many entries the set-up of a pass records before its first sector.
inline constexpr std::size_t general_set_up_entries = 12;
inline constexpr std::size_t thorough_set_up_entries = 10;

using Scenario = ScenarioOf<PhotoSearch>;

// As expect_found_everywhere().
void expect_found(const Scenario& scenario, const Found& expected);

}  // namespace norvo::test
