// The disk utility of macOS: diskutil, asked about one volume at a time.
#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "storage/DiskUtility.h"

namespace norvo {

// The system's lists of mounted volumes.
class MountedVolumes {
 public:
  virtual ~MountedVolumes() = default;

  // Mount paths, in the system's order. Empty when they cannot be told.
  virtual std::vector<std::filesystem::path> removable() = 0;
  virtual std::vector<std::filesystem::path> local() = 0;
};

class DiskutilUtility final : public DiskUtility {
 public:
  // `volumes` must outlive the utility; `diskutil` is an absolute path. `patience` is how long it
  // may take for one answer: a dying drive can keep it busy for some seconds.
  explicit DiskutilUtility(MountedVolumes& volumes,
                           std::filesystem::path diskutil = "/usr/sbin/diskutil",
                           std::chrono::milliseconds patience = std::chrono::seconds(30))
      : volumes_(volumes), diskutil_(std::move(diskutil)), patience_(patience) {}

  std::vector<std::filesystem::path> mountedRemovableMedia() override {
    return volumes_.removable();
  }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override { return volumes_.local(); }

  // Runs diskutil; nullopt when that takes too long, too.
  std::optional<DiskReport> info(const std::filesystem::path& path) override;

 private:
  MountedVolumes& volumes_;
  std::filesystem::path diskutil_;
  std::chrono::milliseconds patience_;
};

}  // namespace norvo
