#include "PlainPhotoScan.h"

#include <stdexcept>

#include "PlainText.h"

namespace plain {

PhotoScan::PhotoScan(Controller& controller, const std::string& pass)
    : c_(controller), pass_(pass) {
}

bool PhotoScan::Photo_Recovey_Mode() {
  try {
    if (pass_ == "GEN") {
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
    // An incomplete record was read past its end. Device and output file stay open.
    c_.events.push_back({.kind = EventKind::kExceptionMessage});
    return true;
  }
}

void PhotoScan::set_up() {
  pass_folder_ = c_.make_pass_folder(pass_, "Photo Search");
  c_.position_at_start();
  c_.build_working_table(pass_ == "GEN" ? c_.search.general : c_.search.thorough_table);
}

bool PhotoScan::scan() {
  c_.for_index = c_.start_sector;
  while (c_.for_index < c_.end_sector && !c_.REC_PROC_Array.empty()) {
    if (c_.stop_now == 1) {
      return end_by_stop();
    }
    c_.read_sector(sector_, compare_);
    if (sector_ != compare_ && find_header()) {
      relieve_gallery();
      close_previous_file();
      open_new_file();
    }
    write_sector();
  }
  return end_normally();
}

bool PhotoScan::find_header() {
  for (std::size_t record = 0; record < c_.REC_PROC_Array.size(); record += 7) {
    if (record_matches(record)) {
      return true;
    }
  }
  return false;
}

bool PhotoScan::record_matches(std::size_t record) {
  extension_ = c_.REC_PROC_Array.at(record);
  current_maximum_ = to_integer_64(c_.REC_PROC_Array.at(record + 1));
  const Text header = c_.REC_PROC_Array.at(record + 2);
  const auto length = static_cast<std::int64_t>(header.size() / 2);
  const Text offset = c_.REC_PROC_Array.at(record + 3);
  const std::int64_t first_byte = to_integer_32(c_.REC_PROC_Array.at(record + 6));
  const bool is_numeric = offset != u"1" && offset != u"nn";

  std::int64_t p = is_numeric ? std::int64_t{to_integer_32(offset)} - 1 : 0;
  const std::int64_t e = offset == u"nn" ? 512 : p + length;
  while (p < e) {
    if (p < 0 || p > 511 || sector_[static_cast<std::size_t>(p)] != first_byte) {
      return false;
    }
    if (is_numeric && p >= 507) {
      return false;
    }
    std::int64_t matched = 0;
    while (matched < length) {
      const Text digits = header.substr(static_cast<std::size_t>(2 * matched), 2);
      if (p > 511 || sector_[static_cast<std::size_t>(p)] != hex2int(digits)) {
        if (matched > 0) {
          --p;
        }
        break;
      }
      ++p;
      ++matched;
    }
    if (matched == length) {
      return true;
    }
    if (offset != u"nn") {
      return false;
    }
    ++p;
  }
  return false;
}

void PhotoScan::relieve_gallery() {
  c_.clear_shown_items_if_full(
      "To maintain the speed of recovery, thumbnail preview window is cleared after every 2000 "
      "thumbnails.");
}

// The sector with the new header is also the last one of the file before it.
void PhotoScan::close_previous_file() {
  if (files_started_ >= 1 && !file_finished_) {
    c_.pFile_op->write(sector_);
    close_and_report();
  }
}

void PhotoScan::open_new_file() {
  file_finished_ = false;
  file_in_progress_ = true;
  ++files_started_;
  const bool thorough = pass_ == "THD";
  const std::uint64_t image_number = thorough ? ++c_.THD_Image_number : ++c_.GND_Image_number;

  FolderCounter& counter = counter_of(c_.Fol_Cnt_Array, extension_);
  std::string folder = join(pass_folder_, to_utf8(counter.folder));
  const bool rolled_over = c_.count_file(counter);
  file_name_ = to_utf8(Generate_File_Name(c_.search.mode, c_.nsSIGFileInfoDataObject,
                                          files_started_, thorough ? u"THD" : u"GND", extension_));
  uid_ = to_utf8(Generate_File_UID_Num(image_number, thorough, extension_));
  bytes_written_ = 0;
  if (rolled_over) {
    folder = join(parent_of(folder), to_utf8(counter.folder));
  }
  output_path_ = join(folder, file_name_);
  c_.create_folder_or_fail(parent_of(output_path_));
  flush_and_close(c_.pFile_op);
  c_.pFile_op = c_.file_system.open_wb_plus(output_path_);
  if (!c_.pFile_op) {
    throw SavingFailure{};
  }
}

void PhotoScan::write_sector() {
  if (!file_in_progress_) {
    return;
  }
  bytes_written_ += 512;
  if (bytes_written_ >= static_cast<std::uint64_t>(current_maximum_)) {
    bytes_written_ = 0;
    c_.pFile_op->write(sector_);
    file_in_progress_ = false;
    file_finished_ = true;
    close_and_report();
  } else if (c_.pFile_op->write(sector_) == 0) {
    throw SavingFailure{};
  }
}

void PhotoScan::close_and_report() {
  flush_and_close(c_.pFile_op);
  c_.addImageWithPath(output_path_, file_name_, uid_);
  output_path_.clear();
}

bool PhotoScan::end_normally() {
  if (c_.pFile_op) {
    c_.pFile_op->write(sector_);
    close_and_report();
  }
  c_.pFile_Disk.reset();
  return true;
}

bool PhotoScan::end_by_stop() {
  c_.stop_now = 0;
  c_.pFile_Disk.reset();
  if (c_.pFile_op) {
    close_and_report();
  }
  c_.post_final_screen();
  return false;
}

bool PhotoScan::end_by_device_failure() {
  c_.stop_now = 0;
  c_.Shown_Item_Count = 0;
  c_.stop_screen_already_show = 1;
  c_.show_device_error();
  return false;
}

bool PhotoScan::end_by_saving_failure() {
  c_.stop_now = 0;
  c_.pFile_Disk.reset();
  c_.pFile_op.reset();
  c_.show_saving_failure();
  c_.post_final_screen();
  return false;
}

}  // namespace plain
