// The kernel's own table of mounted file systems.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string_view>

#include "util/Text.h"

namespace norvo {

inline constexpr std::size_t mount_table_limit = std::size_t{4} << 20;

// The type of the file system that is seen at each mount path, from the content of
// /proc/self/mountinfo. Lines of another form, and types that only say that some program serves the
// file system, are passed over. Any thread.
std::map<std::filesystem::path, Text> mounted_file_systems(std::string_view table);

}  // namespace norvo
