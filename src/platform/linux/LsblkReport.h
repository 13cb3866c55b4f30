// The disk reports of a Linux system, made from one answer of lsblk.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/BlockDevices.h"
#include "storage/DiskUtility.h"

namespace norvo {

class LsblkReport {
 public:
  // Nullopt when `output` is not what lsblk --json --bytes writes (read_block_devices).
  static std::optional<LsblkReport> parse(std::string_view output);

  // The first mount path of each mounted volume, in lsblk's order; a volume that is mounted at
  // several places counts once. Removable are volumes whose whole disk has a removable medium, can
  // be unplugged while the system runs, or is a card.
  std::vector<std::filesystem::path> removable_mount_paths() const;
  std::vector<std::filesystem::path> mount_paths() const;

  // The report on the device that is mounted at `path`, or that `path` names by its kernel name or
  // its node. Nullopt when there is none. "BusProtocol" is "Disk Image" for what lies on a loop
  // device, "OpticalDeviceType" is there for what lies in an optical drive, "ParentWholeDisk" is
  // the disk below all partitions and mappings, and for a disk the disk itself.
  std::optional<DiskReport> info(const std::filesystem::path& path) const;

 private:
  explicit LsblkReport(std::vector<BlockDevice> devices) : devices_(std::move(devices)) {}

  const BlockDevice* find_name(std::string_view name) const;
  const BlockDevice& whole_disk_of(const BlockDevice& device) const;
  bool is_removable(const BlockDevice& disk) const;
  std::vector<std::filesystem::path> first_mount_paths(bool removable_only) const;

  std::vector<BlockDevice> devices_;
};

// The name of a file system as people know it; `type` itself when it is not known here.
Text file_system_name(TextView type, TextView version);

}  // namespace norvo
