#include "PlainController.h"

#include <cerrno>

#include "PlainText.h"

namespace plain {
namespace {

constexpr std::uint64_t kShownItemLimit = 2000;

std::string extension_of(const std::string& path) {
  const std::string name = last_component(path);
  const std::size_t stop = name.rfind('.');
  return stop == std::string::npos ? std::string() : name.substr(stop + 1);
}

std::string trimmed(const std::string& path) {
  return to_utf8(Trim_Str(*from_utf8(path)));
}

}  // namespace

Controller::Controller(const Search& wanted)
    : search(wanted),
      drive{wanted.device},
      file_system(wanted),
      Shown_Item_Count(wanted.initial_shown_item_count) {
  for (const Text& type : wanted.row_types) {
    nsSIGFileInfoDataObject.push_back({to_utf8(type), "0", "", "", to_utf8(type)});
  }
}

void Controller::set_mode_label(const std::string& pass) {
  const std::string text =
      pass == "GEN" ? "( Currently performing Search based on: Norvo General Recovery Procedure )"
                    : "( Currently performing Search based on: Norvo Thorough Scanning Algorithm )";
  events.push_back({.kind = EventKind::kModeLabel, .pass = pass, .text = text});
}

void Controller::set_range() {
  start_sector = search.entire_disk ? 0 : search.range_start;
  end_sector = search.entire_disk ? search.sectors_val : search.range_end;
  for_index = start_sector;
}

bool Controller::open_device() {
  if (!search.device.openable) {
    return false;
  }
  pFile_Disk = std::make_unique<DeviceStream>(drive);
  return true;
}

std::string Controller::make_pass_folder(const std::string& pass, const std::string& mode_folder) {
  const std::string root =
      join(join(search.destination, to_utf8(search.results_folder)), mode_folder);
  std::string general = join(root, "General Recovery Results");
  create_folder_or_fail(general);
  if (pass == "GEN") {
    return general;
  }
  std::string thorough = join(root, "Omitted (recovered by Thorough Scan)");
  create_folder_or_fail(thorough);
  return thorough;
}

void Controller::position_at_start() {
  if (start_sector != 0) {
    for_index = start_sector;
    // Nobody looks at the outcome: a refused position leaves the device at its beginning.
    pFile_Disk->position_at(start_sector << 9);
  }
}

void Controller::build_working_table(const std::vector<Text>& table) {
  REC_PROC_Array = table;
  Fol_Cnt_Array = make_folder_counters(REC_PROC_Array);
}

void Controller::read_sector(Sector& sector, Sector& compare) {
  if (!pFile_Disk->read(sector)) {
    if (!pFile_Disk->position_at(for_index << 9)) {
      compare = sector;
    }
  }
  ++for_index;
}

bool Controller::count_file(FolderCounter& counter) const {
  ++counter.count;
  if (counter.count < 50000) {
    return false;
  }
  const Text next = next_folder_name(counter.folder);
  if (next.empty()) {
    return false;
  }
  counter.count = 0;
  counter.folder = next;
  return true;
}

void Controller::create_folder_or_fail(const std::string& path) {
  if (!file_system.Create_Folder(path)) {
    throw SavingFailure{};
  }
}

void Controller::clear_shown_items_if_full(const std::string& notice) {
  if (Shown_Item_Count < kShownItemLimit) {
    return;
  }
  events.push_back({.kind = EventKind::kClearing, .text = notice});
  Shown_Item_Count = 0;
  images = 0;
}

void Controller::note_report(const std::string& path, const std::string& name,
                             const std::string& uid) {
  events.push_back({.kind = EventKind::kReport, .path = path, .name = name, .uid = uid});
  ++reports_;
  if (search.stop_after_reports && reports_ == *search.stop_after_reports) {
    stop_now = 1;
  }
}

void Controller::addImageWithPath(const std::string& path, const std::string& name,
                                  const std::string& uid) {
  note_report(path, name, uid);
  if (images >= kShownItemLimit) {
    ++Shown_Item_Count;
    return;
  }
  if (Shown_Item_Count >= kShownItemLimit || trimmed(path).empty()) {
    return;
  }
  ++images;
  ++Shown_Item_Count;
}

void Controller::addImageWithPath_2(const std::string& path, const std::string& name,
                                    const std::string& uid) {
  note_report(path, name, uid);
  if (images >= kShownItemLimit) {
    ++Shown_Item_Count;
    return;
  }
  if (Shown_Item_Count >= kShownItemLimit || trimmed(path).empty()) {
    return;
  }
  ++images;
  update_row(trimmed(path), name);
  ++Shown_Item_Count;
}

void Controller::update_row(const std::string& trimmed_path, const std::string& name) {
  const std::string extension = extension_of(trimmed_path);
  for (Row& row : nsSIGFileInfoDataObject) {
    if (row.FileTypes_Hidden == extension) {
      const auto count = static_cast<std::uint64_t>(to_integer_64(*from_utf8(row.NoOfFile))) + 1;
      row = {extension, std::to_string(count), name, trimmed_path, extension};
      return;
    }
  }
}

void Controller::post_final_screen() {
  events.push_back({.kind = EventKind::kFinalScreen});
}

void Controller::show_saving_failure() {
  const std::string text =
      "\nUnable to continue saving recovered data.\n\nEither Destination Drive is inaccessible or "
      "there is no free space available in drive to save recovered data.";
  events.push_back({.kind = EventKind::kMessage, .text = text});
}

void Controller::show_device_error() {
  const int error = search.device.open_errno;
  events.push_back({.kind = EventKind::kDeviceError,
                    .error_number = error,
                    .permission = error == EPERM || error == EACCES});
}

void flush_and_close(std::unique_ptr<OutputStream>& stream) {
  if (!stream) {
    return;
  }
  const std::unique_ptr<OutputStream> closing = std::move(stream);
  if (!closing->flush_and_close()) {
    throw SavingFailure{};
  }
}

}  // namespace plain
