#include "engine/RawFileScan.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <limits>
#include <utility>

#include "engine/Progress.h"
#include "engine/SavingFailure.h"
#include "util/Diagnostics.h"
#include "util/Numbers.h"

namespace norvo {
namespace {

constexpr std::chrono::milliseconds file_window_pause{4000};
constexpr TextView file_window_notice =
    u"To maintain the speed of recovery, file window is cleared after every 2000 files.";

// A negative maximum is compared unsigned: it never ends a file.
std::uint64_t maximum_of(const CarvedFile& file) {
  return static_cast<std::uint64_t>(integer64_value(file.maximum_size));
}

}  // namespace

RawFileScan::RawFileScan(const ScanContext& context, Pass pass, const SignatureTable& table,
                         std::size_t block_sectors)
    : ScanPass(context, pass, table, EmptyHeader::matches_nothing, block_sectors),
      companions_(whole_records(table)) {
}

bool RawFileScan::Raw_File_Recovey_Mode() {
  try {
    return run_pass();
  } catch (const SavingFailure&) {
    return end_unsaved();
  } catch (const std::exception& reason) {
    Show_NSLog_Message(text_from_utf8_lossy(reason.what()));
    return end_with_exception();
  }
}

bool RawFileScan::run_pass() {
  return prepare() && scan_range();
}

bool RawFileScan::prepare() {
  ScanOperations& operations = context_.operations;
  ScanState& state = context_.state;
  if (is_general()) {
    operations.perform(operation::ForgetPreviousSelection{});
    state.MultiHeader_Array.clear();
    context_.results.empty_images();
  }
  show_pass_label(context_, pass_);
  close_device(context_);
  settle_range(context_);
  operations.perform(operation::SetProgressDeterminate{});
  operations.perform(operation::SetProgressValue{0});
  state.for_index = state.start_sector.load();
  show_sector_label(state, operations);
  if (const int error = open_device(context_); error != 0) {
    end_with_open_failure(context_, error,
                          {.screens = {{{operation::Screen::screen_3_RawFile, false},
                                        {operation::Screen::screen_4_RawFile, true}}},
                           .open_folder = operation::Control::open_folder_Sig});
    return false;
  }
  disable_settings(context_);
  if (is_general()) {
    operations.perform(operation::SetPreviewTitle{u"No file is selected to preview"});
  }
  show_scanning_help(context_);
  make_pass_folder();
  start_reading();
  return true;
}

// Items that start no file matter only while files are open, and until the first of those reaches
// its maximum they do nothing but lengthen all of them alike.
std::size_t RawFileScan::scan_dull(const Items& items, std::size_t from, std::size_t to) {
  if (incomplete_table_) return 0;
  // Before the pass's first header the list can only hold what an earlier pass left behind.
  if (!carving_ || context_.state.MultiHeader_Array.empty()) {
    return items.find_candidate(from, to) - from;
  }
  const std::uint64_t before_limit = sectors_to_first_limit() - 1;
  const auto limited = static_cast<std::size_t>(std::min<std::uint64_t>(to - from, before_limit));
  const std::size_t dull = items.find_candidate(from, from + limited) - from;
  if (dull == 0) return 0;
  for (const CarvedFile& file : context_.state.MultiHeader_Array) {
    Output_Slot_Table_[file.slot].append(items.sectors(from, dull));
  }
  carved_size_ += dull * sector_size;
  return dull;
}

void RawFileScan::take_item(const Sectors& sector, Finding finding, std::size_t record) {
  if (finding == Finding::header) begin_files(sector, record);
  continue_files(sector);
}

void RawFileScan::write_gathered() {
  for (RecoveredFile& output : Output_Slot_Table_) output.write_gathered();
}

void RawFileScan::begin_files(const Sectors& sector, std::size_t record) {
  finish_all(sector);
  header_in_sector_ = true;
  carved_size_ += sector_size;
  const Companions& companions = companions_of(record);
  for (const std::size_t other : companions.records) {
    open_file(sector, SignatureRecord(table_, other));
  }
  if (companions.table_ends_there) {
    throw MissingEntry(whole_records(table_) * SignatureRecord::stride, table_.size());
  }
  relieve_file_window();
  carving_ = true;
}

// Found once for each record: with many short files the texts would be searched again and again.
const RawFileScan::Companions& RawFileScan::companions_of(std::size_t record) {
  std::optional<Companions>& known = companions_[record];
  if (known) return *known;
  known.emplace();
  try {
    for (std::size_t other = record; other < started_records(table_); ++other) {
      if (goes_with(record, other)) known->records.push_back(other);
    }
  } catch (const MissingEntry&) {
    known->table_ends_there = true;
  }
  return *known;
}

bool RawFileScan::goes_with(std::size_t found, std::size_t other) const {
  const SignatureRecord a(table_, found);
  const SignatureRecord b(table_, other);
  return Find_Str(a.header(), b.header()) ||
         (Find_Str(b.header(), a.header()) && a.position_rule() == b.position_rule());
}

// A type that finds no free slot has by then raised its folder count and made its folder.
void RawFileScan::open_file(const Sectors& sector, const SignatureRecord& record) {
  ScanState& state = context_.state;
  const Text& type = record.extension();
  const std::filesystem::path folder =
      joined(pass_folder_, Fol_Cnt_Array_.folder_for_next_file(type));
  tree_.make_folder(folder);
  const std::optional<std::size_t> slot = free_slot();
  if (!slot) return;

  ++file_number_;
  const std::uint64_t number = context_.results.NoOfFile(type).value_or(file_number_ - 1) + 1;
  const Text name = Generate_File_Name(number, type, type);
  const std::filesystem::path relative = joined(folder, name);
  state.MultiHeader_Array.push_back({.type = type,
                                     .maximum_size = record.maximum_size_text(),
                                     .header = record.header(),
                                     .slot = *slot,
                                     .path = tree_.destination() / relative,
                                     .name = name,
                                     .uid = name});
  open_output(Output_Slot_Table_[*slot], relative);
  Output_Slot_Table_[*slot].append(sector);
}

std::optional<std::size_t> RawFileScan::free_slot() const {
  for (std::size_t slot = 0; slot < output_slots; ++slot) {
    if (!Output_Slot_Table_[slot].is_open()) return slot;
  }
  return std::nullopt;
}

void RawFileScan::relieve_file_window() {
  if (context_.results.Shown_Item_Count() < SHOWN_ITEM_LIMIT) return;
  context_.operations.perform(operation::ShowClearingNotice{Text(file_window_notice)});
  context_.operations.pause(file_window_pause);
  context_.results.reset_Shown_Item_Count();
  context_.results.empty_images();
}

void RawFileScan::continue_files(const Sectors& sector) {
  std::vector<CarvedFile>& files = context_.state.MultiHeader_Array;
  const bool header = std::exchange(header_in_sector_, false);
  if (!carving_) return;
  if (!header) carved_size_ += sector_size;
  for (std::size_t i = 0; i < files.size();) {
    if (carved_size_ >= maximum_of(files[i])) {
      finish_file(i, sector);
      continue;
    }
    if (!header) Output_Slot_Table_[files[i].slot].append(sector);
    ++i;
  }
  if (files.empty()) carved_size_ = 0;
}

// How many more sectors until the first open file takes its last one; at least one.
std::uint64_t RawFileScan::sectors_to_first_limit() const {
  std::uint64_t smallest = std::numeric_limits<std::uint64_t>::max();
  for (const CarvedFile& file : context_.state.MultiHeader_Array) {
    smallest = std::min(smallest, maximum_of(file));
  }
  return smallest <= carved_size_ ? 1 : (smallest - carved_size_ - 1) / sector_size + 1;
}

// Closes and reports the file at `index` of the list, after `last_sector`. An entry
// that a pass left behind when an exception ended it has no open slot any more.
void RawFileScan::finish_file(std::size_t index, const Sectors& last_sector) {
  std::vector<CarvedFile>& files = context_.state.MultiHeader_Array;
  const CarvedFile file = files[index];
  RecoveredFile& output = Output_Slot_Table_[file.slot];
  if (output.is_open()) output.append(last_sector);
  output.close();
  output.conclude();
  context_.results.addImageWithPath_2(file.path, file.name, file.uid);
  files.erase(files.begin() + static_cast<std::ptrdiff_t>(index));
}

void RawFileScan::finish_all(const Sectors& last_sector) {
  while (!context_.state.MultiHeader_Array.empty()) finish_file(0, last_sector);
  carved_size_ = 0;
}

bool RawFileScan::end_normally() {
  finish_all(sector_buffer_);
  stop_reading();
  close_device(context_);
  return true;
}

bool RawFileScan::end_stopped() {
  stop_reading();
  begin_early_end(context_, SearchOutcome::stopped);
  for (RecoveredFile& output : Output_Slot_Table_) output.close();
  for (const CarvedFile& file : context_.state.MultiHeader_Array) {
    Output_Slot_Table_[file.slot].conclude();
    context_.results.addImageWithPath_2(file.path, file.name, file.uid);
  }
  end_with_final_screen(context_);
  return false;
}

// Files that are still open are not reported, but keep what they have received, as far as the drive
// takes it.
void RawFileScan::abandon_open_files() {
  for (RecoveredFile& output : Output_Slot_Table_) output.abandon();
}

bool RawFileScan::end_unsaved() {
  stop_reading();
  end_with_saving_failure(context_, [this] { abandon_open_files(); });
  return false;
}

bool RawFileScan::end_with_exception() {
  stop_reading();
  close_device(context_);
  abandon_open_files();
  return true;
}

}  // namespace norvo
