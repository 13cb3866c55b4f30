// The progress label's format and arithmetic, and the refresh that the timer makes. Any thread.
#pragma once

#include <cstdint>

#include "engine/ScanOperations.h"
#include "engine/ScanState.h"
#include "util/Text.h"

namespace norvo {

// "Sectors <index> of <end>   ( Completed <percent>% )". The percentage counts from `start`, in
// whole percent, rounded down; `total` must not be 0.
Text sector_label(std::uint64_t index, std::uint64_t start, std::uint64_t end, std::uint64_t total);

// The label for the counters of `state`; nothing for an empty range, which has no percentage.
void show_sector_label(const ScanState& state, ScanOperations& operations);

// One refresh: sector label, mode label, progress bar. Nothing for an empty range or when the index
// has passed the end.
void timerTickSetLabel(const ScanState& state, ScanOperations& operations);

}  // namespace norvo
