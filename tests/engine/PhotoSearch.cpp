#include "PhotoSearch.h"

namespace norvo::test {

PhotoSearch::PhotoSearch(const std::string& drawing, std::uint64_t start)
    : CardSearch(drawing, start, search_root) {
}

bool PhotoSearch::run(Pass pass, const SignatureTable& table, std::size_t block_sectors) {
  return PhotoScan(context(), pass, table, block_sectors).Photo_Recovey_Mode();
}

void expect_found(const Scenario& scenario, const Found& expected) {
  expect_found_everywhere(scenario, expected);
}

}  // namespace norvo::test
