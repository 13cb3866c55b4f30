// The disk reports of a Linux system, made from one answer of lsblk.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/BlockDevices.h"
#include "platform/linux/MountTable.h"
#include "storage/DiskUtility.h"

namespace norvo {

class LsblkReport {
 public:
  // Nullopt when `output` is not what lsblk --json --bytes writes (read_block_devices). Of volumes
  // that are mounted over each other the one is seen that `mounts` names; the last in lsblk's order
  // when it names none of them.
  static std::optional<LsblkReport> parse(std::string_view output, const MountTable& mounts = {});

  // The mount paths of each volume at which it is seen, in lsblk's order. Removable are volumes
  // whose whole disk has a removable medium, can be unplugged while the system runs, or is a card.
  std::vector<std::filesystem::path> removable_mount_paths() const;
  std::vector<std::filesystem::path> mount_paths() const;

  // The report on the device that is seen at `path`, or that `path` names by its kernel name or
  // its node. Nullopt when there is none. "BusProtocol" is "Disk Image" for what lies on a loop
  // device, "OpticalDeviceType" is there for what lies in an optical drive, "ParentWholeDisk" is
  // the disk below all partitions and mappings, and for a disk the disk itself.
  std::optional<DiskReport> info(const std::filesystem::path& path) const;

 private:
  LsblkReport(std::vector<BlockDevice> devices, const MountTable& mounts);

  const BlockDevice* find_name(std::string_view name) const;
  const BlockDevice* find(const std::filesystem::path& path) const;
  const BlockDevice& whole_disk_of(const BlockDevice& device) const;
  bool is_removable(const BlockDevice& disk) const;
  std::vector<std::filesystem::path> seen_paths(bool removable_only) const;

  std::vector<BlockDevice> devices_;
  std::map<std::filesystem::path, std::size_t> seen_;  // index of the device at each mount path
};

// The name of a file system as people know it; `type` itself when it is not known here.
Text file_system_name(TextView type, TextView version);

}  // namespace norvo
