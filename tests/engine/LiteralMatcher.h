// The header search as it is told: record by record, byte by byte, nothing prepared.
#pragma once

#include <cstddef>

#include "engine/HeaderMatcher.h"
#include "sigdb/SignatureRecord.h"

namespace norvo::test {

// The index of the first record of `table` that matches, or HeaderMatcher::no_record.
std::size_t literal_match(const SignatureTable& table, const std::byte* sector,
                          EmptyHeader empty_header);

}  // namespace norvo::test
