// The disk utility of a Linux system: lsblk, and the kernel's mount table for what lsblk does not
// tell: a file system, and which of several volumes is seen at a place.
#pragma once

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/LsblkReport.h"
#include "storage/DiskUtility.h"

namespace norvo {

// Asks lsblk once for each enumeration and keeps the answer for the info() calls that follow it.
// Needs no rights. Without an answer in time there are no drives.
class LinuxDiskUtility final : public DiskUtility {
 public:
  // `lsblk_places` are absolute paths; the first that can be started is taken. `mount_table` stands
  // for /proc/self/mountinfo. `patience` is how long lsblk may take.
  explicit LinuxDiskUtility(std::vector<std::filesystem::path> lsblk_places = {"/usr/bin/lsblk",
                                                                               "/bin/lsblk"},
                            std::filesystem::path mount_table = "/proc/self/mountinfo",
                            std::chrono::milliseconds patience = std::chrono::seconds(10))
      : lsblk_places_(std::move(lsblk_places)),
        mount_table_(std::move(mount_table)),
        patience_(patience) {}

  std::vector<std::filesystem::path> mountedRemovableMedia() override;
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override;
  std::optional<DiskReport> info(const std::filesystem::path& path) override;

 private:
  void ask();
  void ask_lsblk();
  // Whether there is an lsblk at this place.
  bool ask_lsblk_at(const std::filesystem::path& lsblk);

  std::vector<std::filesystem::path> lsblk_places_;
  std::filesystem::path mount_table_;
  std::chrono::milliseconds patience_;
  std::optional<LsblkReport> report_;
  MountTable mounts_;
};

}  // namespace norvo
