#include "engine/ScanPass.h"

#include <algorithm>
#include <cstring>

#include "engine/Progress.h"

namespace norvo {
namespace {

// How many sectors are looked at between two looks at the stop flag.
constexpr std::size_t sectors_between_stop_checks = 64;

}  // namespace

ScanPass::ScanPass(const ScanContext& context, Pass pass, const SignatureTable& table,
                   EmptyHeader empty_header, std::size_t block_sectors)
    : context_(context),
      pass_(pass),
      table_(table),
      incomplete_table_(started_records(table) != whole_records(table)),
      tree_(context.request.destination),
      block_sectors_(block_sectors),
      matcher_(table, empty_header) {
  sector_buffer_ = {.data = nothing_read_.data(), .count = 1, .origin = {}};
}

void ScanPass::make_pass_folder() {
  const std::filesystem::path search =
      search_folder(context_.request.Rec_Folder_Name, context_.request.Recovery_MODE);
  if (!is_general()) tree_.make_folder(pass_folder(search, Pass::general));
  pass_folder_ = pass_folder(search, pass_);
  tree_.make_folder(pass_folder_);
}

void ScanPass::start_reading() {
  ScanState& state = context_.state;
  reader_.emplace(*state.pFile_Disk, matcher_, block_sectors_);
  if (state.start_sector != 0) reader_->position_at(state.start_sector);
  if (context_.read_with_helper && !table_.empty()) {
    reader_->read_with_helper(state.end_sector);
  }
  show_sector_label(state, context_.operations);
  Fol_Cnt_Array_.clear();
  Fol_Cnt_Array_.add_types(table_);
}

void ScanPass::stop_reading() {
  if (reader_) reader_->stop();
}

bool ScanPass::scan_range() {
  ScanState& state = context_.state;
  while (state.for_index < state.end_sector && !table_.empty()) {
    if (stop_requested()) return end_stopped();
    const Items items = reader_->read(state.for_index, state.end_sector - state.for_index);
    if (items.lost_position) std::memcpy(compare_buffer_.data(), items.data, sector_size);
    scan_items(items);
  }
  return end_normally();
}

// Leaves early, with the rest of the items unread, only when a stop is requested.
void ScanPass::scan_items(const Items& items) {
  for (std::size_t i = 0; i < items.count && !stop_requested();) {
    const std::size_t next = std::min(items.count, i + sectors_between_stop_checks);
    std::size_t done = scan_dull(items, i, next);
    if (done == 0) {
      // Counted first: whoever looks at the index while the item is dealt with sees the next one.
      ++context_.state.for_index;
      scan_one(items.sectors(i, 1));
      done = 1;
    } else {
      context_.state.for_index += done;
    }
    i += done;
    sector_buffer_ = items.sectors(i - 1, 1);
  }
  write_gathered();
}

void ScanPass::scan_one(const Sectors& sector) {
  if (!is_searched(sector.data)) {
    take_item(sector, Finding::not_searched, HeaderMatcher::no_record);
    return;
  }
  const std::size_t record = matcher_.match(sector.data);
  if (record == HeaderMatcher::no_record && incomplete_table_) {
    // The search reads the last entry of every record that it tries; this one is not there.
    static_cast<void>(SignatureRecord(table_, whole_records(table_)).gate_byte());
  }
  take_item(sector, record == HeaderMatcher::no_record ? Finding::no_header : Finding::header,
            record);
}

void ScanPass::open_output(RecoveredFile& output, const std::filesystem::path& relative) const {
  FileWitnesses* witnesses = context_.witnesses;
  output.open(tree_, relative,
              witnesses != nullptr ? witnesses->watch(tree_.destination() / relative) : nullptr);
}

bool ScanPass::is_searched(const std::byte* sector) const {
  return std::memcmp(sector, compare_buffer_.data(), sector_size) != 0;
}

}  // namespace norvo
