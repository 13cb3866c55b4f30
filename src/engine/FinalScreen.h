// The end of every search, and the request to end it early. Main thread.
#pragma once

#include "engine/ScanOperations.h"
#include "engine/ScanRequest.h"
#include "engine/ScanState.h"
#include "util/Alert.h"

namespace norvo {

// Ends a scan that still runs, closes the streams as a safety net (never those of a running pass),
// says where the files are, and leaves the screen as it stays until the person goes back. Safe to
// run twice for one search.
void Final_or_Stop_Screen(const ScanRequest& request, ScanState& state, ScanOperations& operations);

// The Stop button: asks, and on Yes requests the stop, which the pass sees before its next sector,
// and returns true.
bool stop_usb_disk(AlertPanel& panel, ScanState& state);

}  // namespace norvo
