// What the device opener opens and what it refuses. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "util/UniqueFd.h"

namespace norvo {

// The most bytes that the path of a device has.
inline constexpr std::size_t longest_device_path = 255;

// Whether `path` may be asked for, judged by its text alone: a canonical path of something below
// /dev. No component is empty, "." or "..", no slash stands at the end, no byte is zero, and it has
// no more than longest_device_path bytes.
bool is_device_path(std::string_view path);

struct OpenedNode {
  UniqueFd fd;    // open for reading only
  int error = 0;  // errno when there is none
};

// Opens the block device at `path`. EACCES for a path that is no device path, ELOOP when it or a
// folder on the way is a link, ENOTBLK for what is no block device (which is then not opened:
// opening some other devices does something already), ENOMEDIUM for a drive without a medium, else
// the errno of the system.
OpenedNode open_block_device(const std::string& path);

}  // namespace norvo
