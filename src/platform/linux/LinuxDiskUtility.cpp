#include "platform/linux/LinuxDiskUtility.h"

#include "util/Files.h"
#include "util/RunProgram.h"

namespace norvo {
namespace {

// The second list is for versions that refuse a column of the first one.
constexpr const char* columns =
    "PATH,KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,FSVER,"
    "MOUNTPOINTS";
constexpr const char* older_columns =
    "KNAME,PKNAME,MAJ:MIN,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,MOUNTPOINT";

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
    ProgramResult result = run_lsblk(lsblk, columns, patience_);
    if (result.end == ProgramResult::End::not_started) continue;
    // A status other than 0 can also mean that some devices went away meanwhile.
    report_ = LsblkReport::parse(result.output, mounts_);
    if (!report_ && result.end == ProgramResult::End::exited) {
      result = run_lsblk(lsblk, older_columns, patience_);
      report_ = LsblkReport::parse(result.output, mounts_);
    }
    return;
  }
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
