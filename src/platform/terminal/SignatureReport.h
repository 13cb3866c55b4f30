// Names the faults of the signature files in a folder, for their author.
#pragma once

#include <filesystem>
#include <ostream>

namespace norvo {

// Writes one line a fault to `out`: file, line and what is wrong, the files in alphabetical order.
// Returns 0 when there was none, 1 when there were some, 2 when the folder holds no signature file
// (a name that ends in ".dll") or cannot be read, which goes to `err`.
int report_signature_faults(const std::filesystem::path& folder, std::ostream& out,
                            std::ostream& err);

}  // namespace norvo
