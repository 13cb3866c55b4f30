#include "platform/linux/LsblkReport.h"

#include <algorithm>
#include <array>
#include <utility>

namespace norvo {
namespace {

namespace fs = std::filesystem;

// Mappings lie on mappings; more than this many are no real set-up, or a circle.
constexpr int deepest_mapping = 32;

using Name = std::pair<TextView, TextView>;

constexpr std::array<Name, 19> file_system_names{{
    {u"apfs", u"APFS"},
    {u"bcachefs", u"bcachefs"},
    {u"btrfs", u"Btrfs"},
    {u"exfat", u"ExFAT"},
    {u"f2fs", u"F2FS"},
    {u"hfs", u"Mac OS Standard"},
    {u"hfsplus", u"Mac OS Extended"},
    {u"iso9660", u"ISO 9660"},
    {u"jfs", u"JFS"},
    {u"msdos", u"MS-DOS (FAT)"},
    {u"nilfs2", u"NILFS2"},
    {u"ntfs", u"NTFS"},
    {u"ntfs3", u"NTFS"},
    {u"reiserfs", u"ReiserFS"},
    {u"squashfs", u"SquashFS"},
    {u"udf", u"UDF"},
    {u"vfat", u"MS-DOS (FAT)"},
    {u"xfs", u"XFS"},
    {u"zfs_member", u"ZFS"},
}};

constexpr std::array<Name, 11> transport_names{{
    {u"ata", u"ATA"},
    {u"fc", u"Fibre Channel"},
    {u"iscsi", u"iSCSI"},
    {u"mmc", u"Secure Digital"},
    {u"nvme", u"NVMe"},
    {u"sas", u"SAS"},
    {u"sata", u"SATA"},
    {u"sbp", u"FireWire"},
    {u"spi", u"SCSI"},
    {u"usb", u"USB"},
    {u"virtio", u"Virtio"},
}};

template <std::size_t Count>
std::optional<Text> look_up(const std::array<Name, Count>& names, TextView key) {
  const auto* const found =
      std::find_if(names.begin(), names.end(), [&](const Name& name) { return name.first == key; });
  return found == names.end() ? std::nullopt : std::optional<Text>(found->second);
}

bool is_card(const BlockDevice& disk) {
  return disk.name.starts_with("mmcblk");
}

// Nullopt when neither lsblk nor the disk's name tells.
std::optional<Text> bus_of(const BlockDevice& disk) {
  if (disk.type == u"loop") return u"Disk Image";
  if (!disk.transport.empty()) {
    return look_up(transport_names, disk.transport).value_or(disk.transport);
  }
  if (is_card(disk)) return u"Secure Digital";
  if (disk.name.starts_with("nvme")) return u"NVMe";
  if (disk.name.starts_with("vd")) return u"Virtio";
  return std::nullopt;
}

// Some buses give the vendor as a number, which says nothing to a person.
Text media_name_of(const BlockDevice& disk) {
  const Text vendor = disk.vendor.starts_with(u"0x") ? Text() : disk.vendor;
  return Trim_Str(vendor + u" " + disk.model);
}

bool is_named(const BlockDevice& device, const fs::path& path) {
  return path == device.node || path == device.name || path == fs::path("/dev") / device.name;
}

bool is_named_by(const MountTable& mounts, const fs::path& path, const BlockDevice& device) {
  const auto mount = mounts.find(path);
  return mount != mounts.end() && mount->second.device_number == device.number;
}

}  // namespace

std::optional<LsblkReport> LsblkReport::parse(std::string_view output, const MountTable& mounts) {
  std::optional<std::vector<BlockDevice>> devices = read_block_devices(output);
  if (!devices) return std::nullopt;
  return LsblkReport(std::move(*devices), mounts);
}

LsblkReport::LsblkReport(std::vector<BlockDevice> devices, const MountTable& mounts)
    : devices_(std::move(devices)) {
  for (std::size_t i = 0; i < devices_.size(); ++i) {
    for (const fs::path& path : devices_[i].mount_paths) {
      const auto [seen, is_first] = seen_.try_emplace(path, i);
      if (!is_first && !is_named_by(mounts, path, devices_[seen->second])) seen->second = i;
    }
  }
}

const BlockDevice* LsblkReport::find_name(std::string_view name) const {
  const auto found = std::find_if(devices_.begin(), devices_.end(),
                                  [&](const BlockDevice& device) { return device.name == name; });
  return found == devices_.end() ? nullptr : &*found;
}

const BlockDevice& LsblkReport::whole_disk_of(const BlockDevice& device) const {
  const BlockDevice* disk = &device;
  for (int hops = 0; hops < deepest_mapping; ++hops) {
    const BlockDevice* const below = disk->parent.empty() ? nullptr : find_name(disk->parent);
    if (below == nullptr) break;
    disk = below;
  }
  return *disk;
}

bool LsblkReport::is_removable(const BlockDevice& disk) const {
  if (disk.removable_medium) return true;
  // Only soldered memory has boot partitions of its own; its bus is that of a card all the same.
  if (is_card(disk) && find_name(disk.name + "boot0") != nullptr) return false;
  return disk.hotplug || disk.transport == u"usb" || is_card(disk);
}

std::vector<fs::path> LsblkReport::seen_paths(bool removable_only) const {
  std::vector<fs::path> paths;
  for (std::size_t i = 0; i < devices_.size(); ++i) {
    const std::vector<fs::path>& mounts = devices_[i].mount_paths;
    if (mounts.empty() || (removable_only && !is_removable(whole_disk_of(devices_[i])))) continue;
    for (auto path = mounts.begin(); path != mounts.end(); ++path) {
      // What is mounted twice at one place stands there twice.
      if (seen_.at(*path) == i && std::find(mounts.begin(), path, *path) == path) {
        paths.push_back(*path);
      }
    }
  }
  return paths;
}

std::vector<fs::path> LsblkReport::removable_mount_paths() const {
  return seen_paths(true);
}

std::vector<fs::path> LsblkReport::mount_paths() const {
  return seen_paths(false);
}

const BlockDevice* LsblkReport::find(const fs::path& path) const {
  if (const auto seen = seen_.find(path); seen != seen_.end()) return &devices_[seen->second];
  const auto named = std::find_if(devices_.begin(), devices_.end(), [&](const BlockDevice& device) {
    return is_named(device, path);
  });
  return named == devices_.end() ? nullptr : &*named;
}

std::optional<DiskReport> LsblkReport::info(const fs::path& path) const {
  const BlockDevice* const found = find(path);
  if (found == nullptr) return std::nullopt;
  const BlockDevice& disk = whole_disk_of(*found);
  DiskReport report;
  report.set("DeviceIdentifier", text_from_utf8_lossy(found->name));
  report.set("ParentWholeDisk", text_from_utf8_lossy(disk.name));
  if (found->label) report.set("VolumeName", *found->label);
  if (!found->file_system.empty()) {
    report.set("FilesystemUserVisibleName",
               file_system_name(found->file_system, found->file_system_version));
  }
  if (found->bytes) report.set("IOKitSize", *found->bytes);
  if (const auto bus = bus_of(disk)) report.set("BusProtocol", *bus);
  if (const Text media = media_name_of(disk); !media.empty()) report.set("MediaName", media);
  if (disk.type == u"rom") report.set("OpticalDeviceType", u"CD-ROM");
  return report;
}

Text file_system_name(TextView type, TextView version) {
  // The version of this family is the name that people know: FAT12, FAT16, FAT32.
  if ((type == u"vfat" || type == u"msdos") && version.starts_with(u"FAT")) {
    return u"MS-DOS (" + Text(version) + u")";
  }
  return look_up(file_system_names, type).value_or(Text(type));
}

}  // namespace norvo
