#include "platform/linux/LinuxDiskUtility.h"

#include "platform/linux/MountTable.h"
#include "util/Files.h"
#include "util/RunProgram.h"

namespace norvo {
namespace {

// The second list is for versions that refuse a column of the first one.
constexpr const char* columns =
    "PATH,KNAME,PKNAME,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,FSVER,MOUNTPOINTS";
constexpr const char* older_columns =
    "KNAME,PKNAME,TYPE,SIZE,RM,HOTPLUG,TRAN,VENDOR,MODEL,LABEL,FSTYPE,MOUNTPOINT";

ProgramResult run_lsblk(const std::filesystem::path& lsblk, const char* wanted) {
  return run_program(lsblk, {"--json", "--bytes", "-o", wanted},
                     {.time = std::chrono::seconds(10), .output_bytes = lsblk_output_limit});
}

}  // namespace

void LinuxDiskUtility::ask() {
  report_.reset();
  ask_lsblk();
  const auto table = read_whole_file(mount_table_, mount_table_limit);
  mounted_types_ = mounted_file_systems(table.value_or(""));
}

void LinuxDiskUtility::ask_lsblk() {
  for (const std::filesystem::path& lsblk : lsblk_places_) {
    ProgramResult result = run_lsblk(lsblk, columns);
    if (result.end == ProgramResult::End::not_started) continue;
    // A status other than 0 can also mean that some devices went away meanwhile.
    report_ = LsblkReport::parse(result.output);
    if (!report_ && result.end == ProgramResult::End::exited) {
      report_ = LsblkReport::parse(run_lsblk(lsblk, older_columns).output);
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
  const auto type = mounted_types_.find(path);
  // lsblk asks the device manager, which may not run.
  if (report && !report->text("FilesystemUserVisibleName") && type != mounted_types_.end()) {
    report->set("FilesystemUserVisibleName", file_system_name(type->second, u""));
  }
  return report;
}

}  // namespace norvo
