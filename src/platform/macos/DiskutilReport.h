// The disk report in what diskutil info -plist writes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>

#include "storage/DiskUtility.h"
#include "util/Text.h"

namespace norvo {

inline constexpr std::size_t diskutil_output_limit = std::size_t{1} << 20;

// Reads a property list in XML whose root is a dictionary: its texts and its integers that are not
// negative, under their keys; of two equal keys the first. Everything else in it is passed over. No
// document type is read and no entity of its own is replaced. Nullopt when `output` is no such list
// (a binary one is none) or larger than `diskutil_output_limit`. Any thread.
std::optional<DiskReport> read_diskutil_report(std::string_view output);

// The raw node of the disk or volume with this identifier: /dev/rdisk2s1 for disk2s1.
std::filesystem::path raw_disk_node(TextView identifier);

}  // namespace norvo
