// Any bytes as the output of lsblk and, behind a zero byte, as the kernel's table of mounts: read,
// listed and shown. Bytes without a zero byte are both.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "platform/linux/LsblkReport.h"
#include "platform/linux/MountTable.h"
#include "storage/DriveList.h"

namespace {

using norvo::DiskReport;
using norvo::LsblkReport;
using norvo::Text;
using norvo::fuzz::require;
using Paths = std::vector<std::filesystem::path>;

class ReportedDrives final : public norvo::DiskUtility {
 public:
  explicit ReportedDrives(const LsblkReport& report) : report_(report) {}
  Paths mountedRemovableMedia() override { return report_.removable_mount_paths(); }
  Paths mountedLocalVolumePaths() override { return report_.mount_paths(); }
  std::optional<DiskReport> info(const std::filesystem::path& path) override {
    return report_.info(path);
  }

 private:
  const LsblkReport& report_;
};

void check_paths(const LsblkReport& report) {
  const Paths all = report.mount_paths();
  for (const std::filesystem::path& path : all) {
    require(path.is_absolute(), "a mount path is absolute");
    require(std::count(all.begin(), all.end(), path) == 1, "a mount path is listed once");
    const std::optional<DiskReport> volume = report.info(path);
    require(volume.has_value(), "a mounted volume has a report");
    require(!volume->text("DeviceIdentifier").value_or(u"").empty(), "a volume has an identifier");
    require(!volume->text("ParentWholeDisk").value_or(u"").empty(), "a volume has a whole disk");
  }
  for (const std::filesystem::path& path : report.removable_mount_paths()) {
    require(std::find(all.begin(), all.end(), path) != all.end(), "removable volumes are mounted");
  }
}

void check_mounts(const norvo::MountTable& mounts) {
  for (const auto& [path, file_system] : mounts) {
    require(path.is_absolute(), "a mount path is absolute");
    require(!file_system.type.starts_with(u"fuse"),
            "the kernel does not name what a program serves");
    require(file_system.device_number.find(' ') == std::string::npos, "a number is one word");
  }
}

void check_list(const LsblkReport& report) {
  ReportedDrives drives(report);
  norvo::DriveList list(drives, true);
  list.Reload_Drive_list_Function();
  require(list.numberOfRows() <= report.mount_paths().size(), "a volume has one row at most");
  for (std::size_t row = 0; row < list.numberOfRows(); ++row) {
    for (const norvo::DriveColumn& column : norvo::drive_columns) {
      const std::optional<Text> shown = list.objectValue(column.identifier, row);
      require(shown.has_value(), "each cell of a row is there");
      require(norvo::displayable(*shown) == *shown, "a cell steers no display");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t end = bytes.find('\0');
  const bool is_both = end == std::string_view::npos;
  const norvo::MountTable mounts =
      norvo::mounted_file_systems(is_both ? bytes : bytes.substr(end + 1));
  check_mounts(mounts);
  const std::optional<LsblkReport> report = LsblkReport::parse(bytes.substr(0, end), mounts);
  if (!report) return 0;
  check_paths(*report);
  check_list(*report);
  return 0;
}
