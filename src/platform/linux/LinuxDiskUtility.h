// The disk utility of a Linux system: lsblk, and the kernel's mount table where lsblk does not know
// a file system.
#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/LsblkReport.h"
#include "storage/DiskUtility.h"

namespace norvo {

// Asks lsblk once for each enumeration and keeps the answer for the info() calls that follow it.
// Needs no rights. Without an answer within ten seconds there are no drives.
class LinuxDiskUtility final : public DiskUtility {
 public:
  // `lsblk_places` are absolute paths; the first that can be started is taken. `mount_table` stands
  // for /proc/self/mountinfo.
  explicit LinuxDiskUtility(std::vector<std::filesystem::path> lsblk_places = {"/usr/bin/lsblk",
                                                                               "/bin/lsblk"},
                            std::filesystem::path mount_table = "/proc/self/mountinfo")
      : lsblk_places_(std::move(lsblk_places)), mount_table_(std::move(mount_table)) {}

  std::vector<std::filesystem::path> mountedRemovableMedia() override;
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override;
  std::optional<DiskReport> info(const std::filesystem::path& path) override;

 private:
  void ask();
  void ask_lsblk();

  std::vector<std::filesystem::path> lsblk_places_;
  std::filesystem::path mount_table_;
  std::optional<LsblkReport> report_;
  std::map<std::filesystem::path, Text> mounted_types_;
};

}  // namespace norvo
