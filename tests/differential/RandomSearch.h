// Random searches for comparing the engine with the plain search.
#pragma once

#include <cstdint>
#include <string>

#include "../plain/PlainSearch.h"

namespace differential {

// The same seed gives the same search everywhere. Even seeds give photo searches, odd ones the
// other modes in turn.
plain::Search random_search(std::uint64_t seed);

// The settings and tables in a few lines, for the message of a failed comparison.
std::string describe(const plain::Search& search);

}  // namespace differential
