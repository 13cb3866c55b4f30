// Two outcomes of one search, compared as an outside observer would.
#pragma once

#include <optional>
#include <string>

#include "../plain/PlainSearch.h"

namespace differential {

// What differs first (event, file and byte, folder, row or result), or nothing. Posts of the final
// screen in a row count as one: whether the worker posts it again depends on when the first one
// runs.
std::optional<std::string> first_difference(const plain::Outcome& expected,
                                            const plain::Outcome& actual);

}  // namespace differential
