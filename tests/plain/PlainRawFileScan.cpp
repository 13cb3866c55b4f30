#include "PlainRawFileScan.h"

#include <stdexcept>

#include "PlainText.h"

namespace plain {

RawFileScan::RawFileScan(Controller& controller, const std::string& pass)
    : c_(controller), pass_(pass) {
}

const Text& RawFileScan::entry(std::size_t record, std::size_t field) const {
  return c_.REC_PROC_Array.at(record + field);
}

bool RawFileScan::Raw_File_Recovey_Mode() {
  try {
    if (pass_ == "GEN") {
      c_.MultiHeader_Array.clear();
      c_.images = 0;
    }
    c_.set_mode_label(pass_);
    c_.pFile_Disk.reset();
    c_.set_range();
    if (!c_.open_device()) {
      return end_by_device_failure();
    }
    set_up();
    return scan();
  } catch (const SavingFailure&) {
    return end_by_saving_failure();
  } catch (const std::out_of_range&) {
    // An incomplete record was read past its end. Files being carved stay as they are.
    c_.pFile_Disk.reset();
    return true;
  }
}

void RawFileScan::set_up() {
  static const std::array<const char*, 4> mode_folders = {"", "Video Search", "File Search",
                                                          "Audio File Search"};
  pass_folder_ =
      c_.make_pass_folder(pass_, mode_folders.at(static_cast<std::size_t>(c_.search.mode)));
  c_.position_at_start();
  c_.build_working_table(pass_ == "GEN" ? c_.search.general : c_.search.thorough_table);
}

bool RawFileScan::scan() {
  c_.for_index = c_.start_sector;
  while (c_.for_index < c_.end_sector && !c_.REC_PROC_Array.empty()) {
    if (c_.stop_now == 1) {
      return end_by_stop();
    }
    c_.read_sector(sector_, Zero_Sector_);
    if (sector_ != Zero_Sector_) {
      search_headers();
    }
    continue_files();
  }
  return end_normally();
}

void RawFileScan::search_headers() {
  for (std::size_t record = 0; record < c_.REC_PROC_Array.size(); record += 7) {
    if (type_matches(record)) {
      close_all_for_new_header();
      header_found_ = true;
      carved_size_ += 512;
      open_files_like(record);
      break;
    }
  }
  if (header_found_) {
    c_.clear_shown_items_if_full(
        "To maintain the speed of recovery, file window is cleared after every 2000 files.");
    carving_ = true;
  }
}

bool RawFileScan::type_matches(std::size_t record) const {
  const Text& H = entry(record, 2);
  const auto L = static_cast<std::int64_t>(H.size() / 2);
  const Text& R = entry(record, 3);
  const std::int64_t G = to_integer_32(entry(record, 6));
  const bool is_numeric = R != u"1" && R != u"nn";

  std::int64_t p = is_numeric ? std::int64_t{to_integer_32(R)} - 1 : 0;
  const std::int64_t limit = R == u"nn" ? 512 : p + L;
  bool match_flag = false;
  const auto byte_is = [this](std::int64_t position, std::int64_t value) {
    return position >= 0 && position <= 511 && sector_[static_cast<std::size_t>(position)] == value;
  };
  while (p < limit && byte_is(p, G) && (!is_numeric || p < 507)) {
    for (std::int64_t k = 0; k < L; ++k) {
      if (byte_is(p, hex2int(H.substr(static_cast<std::size_t>(2 * k), 2)))) {
        ++p;
        match_flag = true;
      } else {
        if (match_flag) {
          --p;
        }
        match_flag = false;
        break;
      }
    }
    if (match_flag) {
      return true;
    }
    if (R != u"nn") {
      return false;
    }
    ++p;
  }
  return false;
}

void RawFileScan::close_all_for_new_header() {
  while (!c_.MultiHeader_Array.empty()) {
    write_unchecked(c_.MultiHeader_Array.front());
    close_and_report(0);
    if (c_.MultiHeader_Array.empty()) {
      carved_size_ = 0;
    }
  }
}

// Every type from the one found on whose header text goes with the found one, itself included.
void RawFileScan::open_files_like(std::size_t first) {
  for (std::size_t other = first; other < c_.REC_PROC_Array.size(); other += 7) {
    const bool is_part = Find_Str(entry(first, 2), entry(other, 2));
    if (is_part ||
        (Find_Str(entry(other, 2), entry(first, 2)) && entry(first, 3) == entry(other, 3))) {
      open_file(other);
    }
  }
}

void RawFileScan::open_file(std::size_t record) {
  const Text& type = entry(record, 0);
  // Counted, and its folder made, even when no slot is left for the file.
  FolderCounter& counter = counter_of(c_.Fol_Cnt_Array, type);
  c_.count_file(counter);
  const std::string folder = join(pass_folder_, to_utf8(counter.folder));
  slot_in_work_ = Output_Slot_Table_.size();
  c_.create_folder_or_fail(folder);

  std::size_t slot = 0;
  while (slot < Output_Slot_Table_.size() && Output_Slot_Table_[slot]) {
    ++slot;
  }
  if (slot == Output_Slot_Table_.size()) {
    return;
  }
  slot_in_work_ = slot;
  ++file_number_;
  const std::string name = to_utf8(
      Generate_File_Name(c_.search.mode, c_.nsSIGFileInfoDataObject, file_number_, type, type));
  const std::string path = join(folder, name);
  c_.MultiHeader_Array.push_back(
      {type, entry(record, 1), entry(record, 2), slot, path, name, name});
  Output_Slot_Table_[slot] = c_.file_system.open_wb_plus(path);
  if (!Output_Slot_Table_[slot] || Output_Slot_Table_[slot]->write(sector_) == 0) {
    throw SavingFailure{};
  }
}

void RawFileScan::continue_files() {
  if (!carving_) {
    return;
  }
  if (!header_found_) {
    carved_size_ += 512;
  }
  std::size_t index = 0;
  while (index < c_.MultiHeader_Array.size()) {
    const CarvedFile& file = c_.MultiHeader_Array[index];
    const auto maximum = static_cast<std::uint64_t>(to_integer_64(file.maximum));
    if (carved_size_ < maximum) {
      slot_in_work_ = file.slot;
      if (!header_found_ && Output_Slot_Table_[file.slot]->write(sector_) == 0) {
        throw SavingFailure{};
      }
      ++index;
    } else {
      write_unchecked(file);
      close_and_report(index);
    }
  }
  header_found_ = false;
  if (c_.MultiHeader_Array.empty()) {
    carved_size_ = 0;
  }
}

// A file left over from a pass that an exception ended has no stream in this pass's slots.
void RawFileScan::write_unchecked(const CarvedFile& file) {
  if (Output_Slot_Table_[file.slot]) {
    Output_Slot_Table_[file.slot]->write(sector_);
  }
}

void RawFileScan::close_and_report(std::size_t index) {
  const CarvedFile file = c_.MultiHeader_Array[index];
  slot_in_work_ = file.slot;
  flush_and_close(Output_Slot_Table_[file.slot]);
  c_.addImageWithPath_2(file.path, file.name, file.uid);
  c_.MultiHeader_Array.erase(c_.MultiHeader_Array.begin() + static_cast<std::ptrdiff_t>(index));
}

bool RawFileScan::end_normally() {
  while (!c_.MultiHeader_Array.empty()) {
    write_unchecked(c_.MultiHeader_Array.front());
    close_and_report(0);
  }
  c_.pFile_Disk.reset();
  return true;
}

bool RawFileScan::end_by_stop() {
  c_.stop_now = 0;
  c_.pFile_Disk.reset();
  for (std::size_t slot = 0; slot < Output_Slot_Table_.size(); ++slot) {
    slot_in_work_ = slot;
    flush_and_close(Output_Slot_Table_[slot]);
  }
  for (const CarvedFile& file : c_.MultiHeader_Array) {
    c_.addImageWithPath_2(file.path, file.name, file.uid);
  }
  c_.post_final_screen();
  return false;
}

// Unlike the photo scan, the count of shown items stays.
bool RawFileScan::end_by_device_failure() {
  c_.stop_now = 0;
  c_.stop_screen_already_show = 1;
  c_.show_device_error();
  return false;
}

bool RawFileScan::end_by_saving_failure() {
  c_.stop_now = 0;
  c_.pFile_Disk.reset();
  if (slot_in_work_ < Output_Slot_Table_.size()) {
    Output_Slot_Table_[slot_in_work_].reset();
  }
  c_.show_saving_failure();
  c_.post_final_screen();
  return false;
}

}  // namespace plain
