#include "storage/DriveList.h"

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string>
#include <utility>

#include "util/Numbers.h"

namespace norvo {
namespace {

constexpr std::uint64_t bytes_per_sector = 512;

// Volumes of the system itself, and places that only look like volumes.
bool is_hidden_place(const std::filesystem::path& path) {
  const std::string& text = path.native();
  return text.find("/private/") != std::string::npos ||
         text.find("/System/Volumes/") != std::string::npos;
}

bool is_never_offered(const DiskReport& report) {
  return report.text("BusProtocol") == u"Disk Image" ||
         Find_Str(report.text("OpticalDeviceType").value_or(u""), u"CD");
}

Text size_of(const DiskReport& report) {
  return decimal(report.number("IOKitSize").value_or(0));
}

// A text that ends before the first character that is no digit.
float leading_digits(TextView text) {
  std::string digits;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') break;
    digits.push_back(static_cast<char>(c));
  }
  return std::strtof(digits.c_str(), nullptr);
}

}  // namespace

void DriveList::Reload_Drive_list_Function() {
  rows_.clear();
  getVolumeToFSGetInfo();
}

void DriveList::getVolumeToFSGetInfo() {
  const auto paths = use_hard_disk_ ? disk_utility_.mountedLocalVolumePaths()
                                    : disk_utility_.mountedRemovableMedia();
  const std::size_t first = rows_.size();
  for (const std::filesystem::path& path : paths) {
    if (is_hidden_place(path)) continue;
    find_disk_info(path);
    drop_repetition(first);
  }
}

// Drops the last row when one of those from `first` on is about the same volume.
void DriveList::drop_repetition(std::size_t first) {
  if (rows_.size() <= first) return;
  const auto from = rows_.begin() + static_cast<std::ptrdiff_t>(first);
  const auto last = rows_.end() - 1;
  const bool is_repetition = std::any_of(from, last, [&](const MyDataObject& row) {
    return row.nsStrDiskIdentifier == last->nsStrDiskIdentifier;
  });
  if (is_repetition) rows_.pop_back();
}

void DriveList::find_disk_info(const std::filesystem::path& path) {
  parent_disk_size_.clear();
  parent_media_name_.clear();
  const std::optional<DiskReport> report = disk_utility_.info(path);
  if (!report || is_never_offered(*report)) return;

  const Text identifier = report->text("DeviceIdentifier").value_or(u"");
  if (identifier.empty()) return;
  // Only a name that is there and empty is replaced; the cell of an absent one stays empty.
  const std::optional<Text> name = report->text("VolumeName");
  const Text shown_name = name == u"" ? u"Untitled" : name.value_or(u"");
  const Text size = size_of(*report);
  const auto sectors = static_cast<std::uint64_t>(integer64_value(size)) / bytes_per_sector;
  rows_.push_back(MyDataObject::initWithString1(
      identifier, shown_name, report->text("FilesystemUserVisibleName").value_or(u""),
      getMPSize(size), report->text("ParentWholeDisk").value_or(u""), decimal(sectors)));
}

void DriveList::find_disk_info_PARENT(const std::filesystem::path& disk) {
  const DiskReport report = disk_utility_.info(disk).value_or(DiskReport());
  parent_disk_size_ = size_of(report);
  parent_media_name_ = report.text("MediaName").value_or(u"");
}

std::optional<Text> DriveList::objectValue(TextView column_identifier, std::size_t row) const {
  const auto* const column = std::find_if(
      drive_columns.begin(), drive_columns.end(),
      [&](const DriveColumn& candidate) { return candidate.identifier == column_identifier; });
  if (column == drive_columns.end() || row >= rows_.size()) return std::nullopt;
  return displayable(rows_[row].*column->field);
}

void DriveList::deleteSelectedRow(std::optional<std::size_t> selected_row) {
  if (!selected_row || *selected_row >= rows_.size()) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*selected_row));
}

Text getMPSize(TextView bytes) {
  constexpr std::array<const char*, 4> larger_units{" KB", " MB", " GB", " TB"};
  float value = leading_digits(bytes);
  std::string unit = "bytes";
  for (const char* const larger : larger_units) {
    if (!(value > 1024)) break;
    value /= 1024;
    unit = larger;
  }
  // A decimal point whatever the person's locale.
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::fixed << std::setprecision(2) << value << ' ' << unit << ' ';
  return text_from_utf8_lossy(text.str());
}

}  // namespace norvo
