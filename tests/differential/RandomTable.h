// Random signature tables that are hard on a header search.
#pragma once

#include <cstdint>
#include <vector>

#include "../plain/PlainSearch.h"
#include "SplitMix.h"

namespace differential {

// The few byte values of which headers and sectors of one search are made, so that headers occur
// by chance and overlap.
using Alphabet = std::vector<std::uint8_t>;

Alphabet random_alphabet(SplitMix& random);

// A flat table, seldom empty, seldom with an incomplete last record. `mode` as in plain::Search.
std::vector<plain::Text> random_table(SplitMix& random, const Alphabet& alphabet, int mode);

}  // namespace differential
