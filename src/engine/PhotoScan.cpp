#include "engine/PhotoScan.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <limits>

#include "engine/Progress.h"
#include "engine/SavingFailure.h"

namespace norvo {
namespace {

constexpr std::chrono::milliseconds gallery_pause{4000};
constexpr TextView gallery_notice =
    u"To maintain the speed of recovery, thumbnail preview window is cleared after every 2000 "
    u"thumbnails.";

}  // namespace

PhotoScan::PhotoScan(const ScanContext& context, Pass pass, const SignatureTable& table,
                     std::size_t block_sectors)
    : ScanPass(context, pass, table, EmptyHeader::matches_gate_byte, block_sectors) {
  if (const std::size_t records = whole_records(table); records != 0) {
    last_record_size_ = SignatureRecord(table, records - 1).maximum_size();
  }
}

bool PhotoScan::Photo_Recovey_Mode() {
  try {
    return run_pass();
  } catch (const SavingFailure&) {
    return end_unsaved();
  } catch (const std::exception& reason) {
    return end_with_exception(reason.what());
  }
}

bool PhotoScan::run_pass() {
  return prepare() && scan_range();
}

bool PhotoScan::prepare() {
  ScanOperations& operations = context_.operations;
  ScanState& state = context_.state;
  if (is_general()) {
    context_.results.empty_images();
    operations.perform(operation::SetZoom{.slider = 0.5, .browser = 0.55});
  }
  show_pass_label(context_, pass_);
  close_device(context_);
  settle_range(context_);
  state.for_index = state.start_sector.load();
  show_sector_label(state, operations);
  if (const int error = open_device(context_); error != 0) {
    end_with_open_failure(context_, error,
                          {.screens = {{{operation::Screen::screen_2, false},
                                        {operation::Screen::screen_3_Photo, true}}},
                           .open_folder = operation::Control::open_folder,
                           .resets_shown_items = true});
    return false;
  }
  disable_settings(context_);
  operations.perform(operation::SetProgressDeterminate{});
  operations.perform(operation::SetProgressValue{0});
  show_scanning_help(context_);

  make_pass_folder();
  start_reading();
  return true;
}

// Deals with the sectors from `from` on that certainly start no file and change no limit, and
// returns how many there are. A sector that starts no file matters only to an open one, and once
// the limit in force is that of the last record it changes nothing but the file's length. A table
// that ends inside a record raises at the first sector that reaches that record, so there every
// sector is looked at.
std::size_t PhotoScan::scan_dull(const Items& items, std::size_t from, std::size_t to) {
  if (incomplete_table_) return 0;
  if (!file_in_progress_) return items.find_candidate(from, to) - from;
  if (current_maximum_size_ != last_record_size_) return 0;
  const std::size_t limited = std::min(to - from, sectors_to_limit());
  const std::size_t dull = items.find_candidate(from, from + limited) - from;
  if (dull > 0) continue_file(items.sectors(from, dull));
  return dull;
}

void PhotoScan::take_item(const Sectors& sector, Finding finding, std::size_t record) {
  if (finding == Finding::header) begin_file(sector, SignatureRecord(table_, record));
  if (finding == Finding::no_header) current_maximum_size_ = last_record_size_;
  if (file_in_progress_) continue_file(sector);
}

void PhotoScan::begin_file(const Sectors& sector, const SignatureRecord& record) {
  ScanState& state = context_.state;
  // A failure to write what belongs to the previous file comes before anything else happens.
  state.pFile_op.write_gathered();
  current_maximum_size_ = record.maximum_size();
  relieve_gallery();
  if (files_started_ > 0 && !file_finished_) {
    state.pFile_op.append(sector);
    finish_file();
  }
  file_finished_ = false;
  file_in_progress_ = true;
  ++files_started_;
  place_file(record);
  bytes_written_ = 0;
}

void PhotoScan::relieve_gallery() {
  if (context_.results.Shown_Item_Count() < SHOWN_ITEM_LIMIT) return;
  context_.operations.perform(operation::ShowClearingNotice{Text(gallery_notice)});
  context_.operations.pause(gallery_pause);
  context_.results.reset_Shown_Item_Count();
  context_.results.empty_images();
}

void PhotoScan::place_file(const SignatureRecord& record) {
  ScanState& state = context_.state;
  const bool general = is_general();
  const std::uint64_t hit = general ? ++state.GND_Image_number : ++state.THD_Image_number;
  const Text& extension = record.extension();
  const Text folder = Fol_Cnt_Array_.folder_for_next_file(extension);
  file_name_ = Generate_File_Name(files_started_, general ? u"GND" : u"THD", extension);
  item_identifier_ = Generate_File_UID_Num(hit, !general, extension);
  const std::filesystem::path relative = joined(joined(pass_folder_, folder), file_name_);
  open_output(state.pFile_op, relative);
  output_path_ = tree_.destination() / relative;
}

void PhotoScan::continue_file(const Sectors& sectors) {
  context_.state.pFile_op.append(sectors);
  bytes_written_ += sectors.count * sector_size;
  // A negative limit is compared unsigned: it never ends a file.
  if (bytes_written_ >= static_cast<std::uint64_t>(current_maximum_size_)) {
    bytes_written_ = 0;
    file_in_progress_ = false;
    file_finished_ = true;
    finish_file();
  }
}

// How many more sectors the file takes under the limit in force; at least one.
std::size_t PhotoScan::sectors_to_limit() const {
  const auto limit = static_cast<std::uint64_t>(current_maximum_size_);
  if (limit <= bytes_written_) return 1;
  const std::uint64_t sectors = (limit - bytes_written_ - 1) / sector_size + 1;
  return static_cast<std::size_t>(
      std::min<std::uint64_t>(sectors, std::numeric_limits<std::size_t>::max()));
}

void PhotoScan::finish_file() {
  context_.state.pFile_op.close();
  context_.state.pFile_op.conclude();
  context_.results.addImageWithPath(output_path_, file_name_, item_identifier_);
  output_path_.clear();
}

bool PhotoScan::end_normally() {
  RecoveredFile& file = context_.state.pFile_op;
  if (file.is_open()) {
    file.append(sector_buffer_);
    finish_file();
  }
  stop_reading();
  close_device(context_);
  return true;
}

bool PhotoScan::end_unsaved() {
  stop_reading();
  end_with_saving_failure(context_, [this] { context_.state.pFile_op.abandon(); });
  return false;
}

// An open file stays open, holding what was written so far: the final screen or the next pass
// closes it.
bool PhotoScan::end_with_exception(const std::string& reason) {
  try {
    context_.state.pFile_op.write_gathered();
  } catch (const SavingFailure&) {
    return end_unsaved();
  }
  context_.operations.Show_MessageBox(text_from_utf8_lossy(reason));
  return true;
}

bool PhotoScan::end_stopped() {
  stop_reading();
  begin_early_end(context_, SearchOutcome::stopped);
  if (context_.state.pFile_op.is_open()) finish_file();
  end_with_final_screen(context_);
  return false;
}

}  // namespace norvo
