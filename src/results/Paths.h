// Paths of recovered files as the lists show and count them. Any thread.
#pragma once

#include <filesystem>

#include "util/Text.h"

namespace norvo {

// The path without white space and line ends at both ends. A path that is no UTF-8 has none that a
// text would show and stays as it is.
std::filesystem::path trimmed_path(const std::filesystem::path& path);

// What follows the last full stop of the trimmed path's last component; empty without one.
Text extension_of(const std::filesystem::path& path);

}  // namespace norvo
