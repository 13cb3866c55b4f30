// The check list of file types as a table for people.
#pragma once

#include <string>

#include "sigdb/FileTypeCheckList.h"

namespace norvo {

// One line a type, in the list's order, below a line of titles: extension, whether only the
// Thorough pass finds it, description. Control characters of a signature file show as U+FFFD.
std::string type_table(const FileTypeCheckList& list);

}  // namespace norvo
