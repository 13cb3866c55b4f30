#include <sys/mount.h>
#include <sys/param.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/System.h"
#include "platform/macos/DiskutilReport.h"
#include "platform/macos/DiskutilUtility.h"
#include "storage/ShellCommand.h"

namespace norvo {
namespace {

class MacMountedVolumes final : public MountedVolumes {
 public:
  std::vector<std::filesystem::path> removable() override {
    return with_flags(MNT_LOCAL | MNT_REMOVABLE);
  }
  std::vector<std::filesystem::path> local() override { return with_flags(MNT_LOCAL); }

 private:
  static std::vector<std::filesystem::path> with_flags(std::uint32_t flags) {
    struct statfs* volumes = nullptr;
    const int count = getmntinfo(&volumes, MNT_NOWAIT);
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < count; ++i) {
      if ((volumes[i].f_flags & flags) == flags) paths.emplace_back(volumes[i].f_mntonname);
    }
    return paths;
  }
};

class MacDiskUtility final : public DiskUtility {
 public:
  std::vector<std::filesystem::path> mountedRemovableMedia() override {
    return diskutil_.mountedRemovableMedia();
  }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override {
    return diskutil_.mountedLocalVolumePaths();
  }
  std::optional<DiskReport> info(const std::filesystem::path& path) override {
    return diskutil_.info(path);
  }

 private:
  MacMountedVolumes volumes_;
  DiskutilUtility diskutil_{volumes_};
};

class MacPrivacyReset final : public PrivacyReset {
 public:
  void run(TextView command) override { executeShellCommandSynchronously(command); }
};

}  // namespace

std::unique_ptr<DiskUtility> make_system_disk_utility() {
  return std::make_unique<MacDiskUtility>();
}

std::unique_ptr<PrivacyReset> make_system_privacy_reset() {
  return std::make_unique<MacPrivacyReset>();
}

std::filesystem::path raw_node(TextView identifier) {
  return raw_disk_node(identifier);
}

Text permission_help() {
  return {};
}

}  // namespace norvo
