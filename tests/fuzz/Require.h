// How a fuzz target says that something does not hold.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace norvo::fuzz {

// Ends the process, which the fuzzer and the replay both count as a finding.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

}  // namespace norvo::fuzz
