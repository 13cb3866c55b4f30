// Random drives, most of whose sectors have something to do with the signatures.
#pragma once

#include <vector>

#include "../plain/PlainSearch.h"
#include "RandomTable.h"
#include "SplitMix.h"

namespace differential {

// A drive on which headers of `tables` stand at, near and beside their places.
plain::Device random_device(SplitMix& random, const Alphabet& alphabet,
                            const std::vector<const std::vector<plain::Text>*>& tables);

}  // namespace differential
