// The block devices of a Linux system, read from what lsblk says about them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/Text.h"

namespace norvo {

// A device as lsblk shows it. Texts that lsblk does not know are empty.
struct BlockDevice {
  std::string name;            // the kernel's: sdb1, dm-0
  std::string parent;          // name of the device that it lies on; empty for a whole disk
  std::filesystem::path node;  // /dev/sdb1, /dev/mapper/name
  std::string number;          // 8:17: the kernel's numbers, as the mount table has them
  Text type;                   // disk, part, rom, loop, crypt, ...
  std::optional<std::uint64_t> bytes;
  bool removable_medium = false;
  bool hotplug = false;
  Text transport;  // of whole disks only: usb, sata, ...
  Text vendor;
  Text model;
  std::optional<Text> label;  // nullopt when lsblk was not asked for it or gave no text
  Text file_system;
  Text file_system_version;
  std::vector<std::filesystem::path> mount_paths;  // absolute; swap has none
};

// Reads the output of lsblk --json --bytes, new or old, nested or flat. Each device stands there
// once, parents first, in lsblk's order. What has the wrong type counts as not there. Nullopt when
// `output` is no such text, larger than `lsblk_output_limit` or nested beyond every real set-up.
// Any thread.
std::optional<std::vector<BlockDevice>> read_block_devices(std::string_view output);

inline constexpr std::size_t lsblk_output_limit = std::size_t{4} << 20;

}  // namespace norvo
