#include "platform/linux/LinuxDiskUtility.h"

#include <array>

#include "util/Files.h"
#include "util/RunProgram.h"

namespace norvo {
namespace {

// A version that does not know one of the columns refuses them all, so each list is for versions
// that refuse the one before.
constexpr std::array<const char*, 3> column_lists{
    "PATH,KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,FSVER,"
    "MOUNTPOINTS",
    "PATH,KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,FSVER,"
    "MOUNTPOINT",
    "KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,MOUNTPOINT"};

ProgramResult run_lsblk(const std::filesystem::path& lsblk, const char* wanted,
                        std::chrono::milliseconds patience) {
  return run_program(lsblk, {"--json", "--bytes", "-o", wanted},
                     {.time = patience, .output_bytes = lsblk_output_limit});
}

}  // namespace

void LinuxDiskUtility::ask() {
  report_.reset();
  mounts_ = mounted_file_systems(read_whole_file(mount_table_, mount_table_limit).value_or(""));
  ask_lsblk();
}

void LinuxDiskUtility::ask_lsblk() {
  for (const std::filesystem::path& lsblk : lsblk_places_) {
    if (ask_lsblk_at(lsblk)) return;
  }
}

bool LinuxDiskUtility::ask_lsblk_at(const std::filesystem::path& lsblk) {
  for (const char* const columns : column_lists) {
    const ProgramResult result = run_lsblk(lsblk, columns, patience_);
    if (result.end == ProgramResult::End::not_started) return false;
    // A status other than 0 can also mean that some devices went away meanwhile.
    report_ = LsblkReport::parse(result.output, mounts_);
    if (report_ || result.end != ProgramResult::End::exited) break;
  }
  return true;
}

std::vector<std::filesystem::path> LinuxDiskUtility::mountedRemovableMedia() {
  ask();
  return report_ ? report_->removable_mount_paths() : std::vector<std::filesystem::path>();
}

std::vector<std::filesystem::path> LinuxDiskUtility::mountedLocalVolumePaths() {
  ask();
  return report_ ? report_->mount_paths() : std::vector<std::filesystem::path>();
}

std::optional<DiskReport> LinuxDiskUtility::info(const std::filesystem::path& path) {
  if (!report_) ask();
  std::optional<DiskReport> report = report_ ? report_->info(path) : std::nullopt;
  if (!report || report->text("FilesystemUserVisibleName")) return report;
  // lsblk asks the device manager, which may not run.
  const auto mount = mounts_.find(path);
  if (mount != mounts_.end() && !mount->second.type.empty()) {
    report->set("FilesystemUserVisibleName", file_system_name(mount->second.type, u""));
  }
  return report;
}

}  // namespace norvo
