// The drive list of an edition, for --list-drives.
#pragma once

#include <ostream>
#include <string>

#include "storage/DriveList.h"

namespace norvo {

// One line a drive, in the list's order, below a line of headings, in columns. Names are shown
// without characters that steer a terminal.
std::string drive_table(const DriveList& list);

// Writes the loaded `list` to `out`, as a table or with `json` as one event a drive. An empty list
// is a sentence on `err` that says what to do, and nothing on `out`. `USE_HARD_DISK` is what the
// list was made with.
void report_drives(const DriveList& list, bool USE_HARD_DISK, bool json, std::ostream& out,
                   std::ostream& err);

}  // namespace norvo
