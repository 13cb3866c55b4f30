// What the passes of every kind of search have in common: the device read item by item, each item
// that differs from the compare buffer tested against the pass's signature table, and the exits.
//
// A kind of search says what an item means for its files: scan_dull() for runs of items that
// certainly start no file, take_item() for every other item. Worker thread.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>

#include "engine/HeaderMatcher.h"
#include "engine/OutputFolders.h"
#include "engine/OutputTree.h"
#include "engine/PassSteps.h"
#include "engine/RecoveredFile.h"
#include "engine/SectorReader.h"
#include "engine/Sectors.h"
#include "sigdb/SignatureRecord.h"

namespace norvo {

class ScanPass {
 public:
  ScanPass(const ScanPass&) = delete;
  ScanPass& operator=(const ScanPass&) = delete;

 protected:
  using Items = SectorReader::Items;

  // What the header search said of an item.
  enum class Finding {
    not_searched,  // equal to the compare buffer
    no_header,
    header,
  };

  ScanPass(const ScanContext& context, Pass pass, const SignatureTable& table,
           EmptyHeader empty_header, std::size_t block_sectors);
  ~ScanPass() = default;

  bool is_general() const { return pass_ == Pass::general; }

  // Makes the pass's folder; the Thorough pass leaves a General folder behind as well, even when
  // the General pass wrote nothing. Throws SavingFailure.
  void make_pass_folder();

  // Positions the opened device at the start of the range, shows the progress label and fills
  // Fol_Cnt_Array. After make_pass_folder().
  void start_reading();

  // Ends the reading, so that the device can be closed. Every exit of a pass comes here before it
  // closes the device; data that is gathered but not written stays valid.
  void stop_reading();

  // Reads the range to its end, to a stop, or to an exception, and returns what the pass returns.
  bool scan_range();

  // Deals with the items from `from` on, before `to`, that start no file, and returns how many it
  // took. May return 0: then take_item() gets the first one.
  virtual std::size_t scan_dull(const Items& items, std::size_t from, std::size_t to) = 0;

  // Deals with one item. `record` is meaningful for Finding::header.
  virtual void take_item(const Sectors& sector, Finding finding, std::size_t record) = 0;

  // Hands gathered data to the system: the items' memory is about to change.
  virtual void write_gathered() = 0;

  // Opens `output` for a new file at `relative`, with a witness when the search has some.
  void open_output(RecoveredFile& output, const std::filesystem::path& relative) const;

  virtual bool end_normally() = 0;
  virtual bool end_stopped() = 0;

  const ScanContext context_;
  const Pass pass_;
  const SignatureTable& table_;
  const bool incomplete_table_;  // it ends inside a record
  const OutputTree tree_;
  FolderCounters Fol_Cnt_Array_;
  std::filesystem::path pass_folder_;  // relative to the destination
  // The item read last. It may lie in the reader's memory.
  Sectors sector_buffer_;

 private:
  bool stop_requested() const { return context_.state.stop_now == 1; }
  void scan_items(const Items& items);
  void scan_one(const Sectors& sector);
  bool is_searched(const std::byte* sector) const;

  const std::size_t block_sectors_;
  const HeaderMatcher matcher_;
  std::optional<SectorReader> reader_;
  // Items equal to it are not searched: zeros, until the device can neither be read nor positioned.
  alignas(64) std::array<std::byte, sector_size> compare_buffer_{};
  std::array<std::byte, sector_size> nothing_read_{};
};

}  // namespace norvo
