// A disk utility whose volumes a test writes down.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "storage/DiskUtility.h"

namespace norvo::test {

class FakeDiskUtility final : public DiskUtility {
 public:
  std::vector<std::filesystem::path> mountedRemovableMedia() override { return removable; }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override { return local; }
  std::optional<DiskReport> info(const std::filesystem::path& path) override {
    asked.push_back(path);
    const auto report = reports.find(path);
    return report == reports.end() ? std::nullopt : std::optional(report->second);
  }

  std::vector<std::filesystem::path> removable;
  std::vector<std::filesystem::path> local;
  std::map<std::filesystem::path, DiskReport> reports;
  std::vector<std::filesystem::path> asked;
};

// The report on a volume that is offered.
inline DiskReport card_report(TextView identifier = u"disk2s1", TextView name = u"CARD") {
  DiskReport report;
  report.set("DeviceIdentifier", identifier);
  report.set("VolumeName", name);
  report.set("FilesystemUserVisibleName", u"MS-DOS (FAT32)");
  report.set("IOKitSize", std::uint64_t{16008609792});
  report.set("ParentWholeDisk", u"disk2");
  report.set("BusProtocol", u"USB");
  return report;
}

}  // namespace norvo::test
