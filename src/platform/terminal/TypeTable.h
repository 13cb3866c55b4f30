// The check list of file types, for --list-types.
#pragma once

#include <ostream>
#include <string>

#include "sigdb/FileTypeCheckList.h"

namespace norvo {

// One line a type, in the list's order, below a line of titles: extension, whether only the
// Thorough pass finds it, description. Control characters of a signature file show as U+FFFD.
std::string type_table(const FileTypeCheckList& list);

// Writes `list` to `out`, as a table or with `json` as one event a type.
void report_types(const FileTypeCheckList& list, bool json, std::ostream& out);

}  // namespace norvo
