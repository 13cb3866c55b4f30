// Any bytes as the output of diskutil: read, and shown as a drive.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "platform/macos/DiskutilReport.h"
#include "storage/DriveList.h"

namespace {

using norvo::DiskReport;
using norvo::Text;
using norvo::fuzz::require;
using Paths = std::vector<std::filesystem::path>;

class OneVolume final : public norvo::DiskUtility {
 public:
  explicit OneVolume(const std::optional<DiskReport>& report) : report_(report) {}
  Paths mountedRemovableMedia() override { return {"/Volumes/X"}; }
  Paths mountedLocalVolumePaths() override { return {"/Volumes/X"}; }
  std::optional<DiskReport> info(const std::filesystem::path& /*path*/) override { return report_; }

 private:
  const std::optional<DiskReport>& report_;
};

bool is_offered(const DiskReport& report) {
  return !report.text("DeviceIdentifier").value_or(u"").empty() &&
         report.text("BusProtocol") != u"Disk Image" &&
         report.text("OpticalDeviceType").value_or(u"").find(u"CD") == Text::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::optional<DiskReport> report = norvo::read_diskutil_report(bytes);
  OneVolume volume(report);
  norvo::DriveList list(volume, false);
  list.Reload_Drive_list_Function();
  const bool offered = report && is_offered(*report);
  require(list.numberOfRows() == (offered ? 1U : 0U), "a volume that may be offered has a row");
  if (!offered) return 0;
  for (const norvo::DriveColumn& column : norvo::drive_columns) {
    const std::optional<Text> shown = list.objectValue(column.identifier, 0);
    require(shown.has_value(), "each cell of a row is there");
    require(norvo::displayable(*shown) == *shown, "a cell steers no display");
  }
  const norvo::MyDataObject& row = list.nsMutaryOfDataObject().front();
  require(row.nsStrVolName.empty() == !report->text("VolumeName").has_value(),
          "only an absent name is empty");
  return 0;
}
