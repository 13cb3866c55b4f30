// The kernel's own table of mounted file systems.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "util/Text.h"

namespace norvo {

inline constexpr std::size_t mount_table_limit = std::size_t{4} << 20;

struct MountedFileSystem {
  Text type;                  // empty when it only says that some program serves the file system
  std::string device_number;  // 8:17, as lsblk's MAJ:MIN; of no device for some file systems

  bool operator==(const MountedFileSystem&) const = default;
};

// The file system that is seen at each mount path.
using MountTable = std::map<std::filesystem::path, MountedFileSystem>;

// Reads the content of /proc/self/mountinfo. Lines of another form are passed over. Any thread.
MountTable mounted_file_systems(std::string_view table);

}  // namespace norvo
