#include "engine/PhotoScan.h"

#include <algorithm>
#include <chrono>
#include <cstring>
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

// How many sectors are looked at between two looks at the stop flag.
constexpr std::size_t sectors_between_stop_checks = 64;

}  // namespace

PhotoScan::PhotoScan(const ScanContext& context, Pass pass, const SignatureTable& table,
                     std::size_t block_sectors)
    : context_(context),
      pass_(pass),
      table_(table),
      block_sectors_(block_sectors),
      matcher_(table, EmptyHeader::matches_gate_byte),
      incomplete_table_(started_records(table) != whole_records(table)),
      tree_(context.request.destination) {
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

bool PhotoScan::run_pass() { return prepare() && scan_range(); }

bool PhotoScan::prepare() {
  ScanOperations& operations = context_.operations;
  ScanState& state = context_.state;
  if (pass_ == Pass::general) {
    context_.results.empty_images();
    operations.perform(operation::SetZoom{.slider = 0.5, .browser = 0.55});
  }
  show_pass_label(context_, pass_);
  close_device(context_);
  settle_range(context_);
  state.for_index = state.start_sector.load();
  show_sector_label(state, operations);
  if (const int error = open_device(context_); error != 0) {
    using operation::Screen;
    end_with_open_failure(context_, error,
                          {{.screen = Screen::screen_2, .hide = false},
                           {.screen = Screen::screen_3_Photo, .hide = true}},
                          operation::Control::open_folder);
    return false;
  }
  disable_settings(context_);
  operations.perform(operation::SetProgressDeterminate{});
  operations.perform(operation::SetProgressValue{0});
  show_scanning_help(context_);

  const std::filesystem::path search =
      search_folder(context_.request.Rec_Folder_Name, context_.request.Recovery_MODE);
  if (pass_ == Pass::thorough) tree_.make_folder(pass_folder(search, Pass::general));
  pass_folder_ = pass_folder(search, pass_);
  tree_.make_folder(pass_folder_);

  reader_.emplace(*state.pFile_Disk, matcher_, block_sectors_);
  if (state.start_sector != 0) reader_->position_at(state.start_sector);
  if (context_.read_with_helper) reader_->read_with_helper(state.end_sector);
  show_sector_label(state, operations);
  Fol_Cnt_Array_.clear();
  Fol_Cnt_Array_.add_types(table_);
  return true;
}

bool PhotoScan::scan_range() {
  ScanState& state = context_.state;
  while (state.for_index < state.end_sector && !table_.empty()) {
    if (stop_requested()) return end_stopped();
    const Items items = reader_->read(state.for_index, state.end_sector - state.for_index);
    if (items.lost_position) std::memcpy(compare_buffer_.data(), items.data, sector_size);
    scan_items(items);
    if (stop_requested() && state.for_index < state.end_sector) return end_stopped();
  }
  return end_normally();
}

// Leaves early, with the rest of the items unread, only when a stop is requested.
void PhotoScan::scan_items(const Items& items) {
  for (std::size_t i = 0; i < items.count && !stop_requested();) {
    const std::size_t next = std::min(items.count, i + sectors_between_stop_checks);
    const std::size_t done = scan_dull(items, i, next);
    if (done == 0) scan_one(items.data + i * sector_size);
    i += std::max<std::size_t>(done, 1);
    sector_buffer_ = items.data + (i - 1) * sector_size;
    advance(std::max<std::size_t>(done, 1));
  }
  // The items' memory changes with the next read.
  context_.state.pFile_op.write_gathered();
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
  if (dull > 0) continue_file(items.data + from * sector_size, dull);
  return dull;
}

// The rules for one sector, in full.
void PhotoScan::scan_one(const std::byte* sector) {
  if (is_searched(sector)) {
    const std::size_t record = matcher_.match(sector);
    if (record != HeaderMatcher::no_record) {
      begin_file(sector, SignatureRecord(table_, record));
    } else if (incomplete_table_) {
      // Reads every entry that the search reads; the one that is not there raises.
      const SignatureRecord broken(table_, whole_records(table_));
      static_cast<void>(broken.gate_byte());
    } else {
      current_maximum_size_ = last_record_size_;
    }
  }
  if (file_in_progress_) continue_file(sector, 1);
}

bool PhotoScan::is_searched(const std::byte* sector) const {
  return std::memcmp(sector, compare_buffer_.data(), sector_size) != 0;
}

void PhotoScan::begin_file(const std::byte* sector, const SignatureRecord& record) {
  ScanState& state = context_.state;
  // A failure to write what belongs to the previous file comes before anything else happens.
  state.pFile_op.write_gathered();
  current_maximum_size_ = record.maximum_size();
  relieve_gallery();
  if (files_started_ > 0 && !file_finished_) {
    state.pFile_op.append(sector, 1);
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
  const bool general = pass_ == Pass::general;
  const std::uint64_t hit = general ? ++state.GND_Image_number : ++state.THD_Image_number;
  const Text& extension = record.extension();
  const Text folder = Fol_Cnt_Array_.folder_for_next_file(extension);
  file_name_ = Generate_File_Name(files_started_, general ? u"GND" : u"THD", extension);
  item_identifier_ = Generate_File_UID_Num(hit, !general, extension);
  const std::filesystem::path relative =
      pass_folder_ / utf8_from_text(folder) / utf8_from_text(file_name_);
  state.pFile_op.open(tree_, relative);
  output_path_ = tree_.destination() / relative;
}

void PhotoScan::continue_file(const std::byte* sectors, std::size_t count) {
  context_.state.pFile_op.append(sectors, count);
  bytes_written_ += count * sector_size;
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
  context_.results.addImageWithPath(output_path_, file_name_, item_identifier_);
  output_path_.clear();
}

bool PhotoScan::end_normally() {
  RecoveredFile& file = context_.state.pFile_op;
  if (file.is_open()) {
    file.append(sector_buffer_, 1);
    finish_file();
  }
  close_device(context_);
  return true;
}

bool PhotoScan::end_unsaved() {
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
  begin_early_end(context_, SearchOutcome::stopped);
  if (context_.state.pFile_op.is_open()) finish_file();
  context_.operations.post_Final_or_Stop_Screen();
  return false;
}

}  // namespace norvo
