// The raw-file recovery scan: one pass of a search for videos, camera raw files or audio.
//
// A sector that starts a record's header closes all files being carved, each with that sector as
// its last, and opens one file for every record from the found one on whose header goes with it, so
// that formats with a common opening are all served. Up to 30 files are carved at once; all begin
// at the same sector, and each ends at its own maximum size, at the next header or at the end of
// the range.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/RecoveredFile.h"
#include "engine/ScanPass.h"

namespace norvo {

class RawFileScan final : private ScanPass {
 public:
  static constexpr std::size_t output_slots = 30;

  // `table` holds the records of the selected types, in the order in which headers are tried.
  RawFileScan(const ScanContext& context, Pass pass, const SignatureTable& table,
              std::size_t block_sectors = SectorReader::default_block_sectors);

  // Runs the pass on the calling thread. True when it ran to its end, or when a broken table raised
  // an exception; false when the device could not be opened, when the pass was stopped, or when
  // saving failed, after its own clean-up and, but for the device, after the final screen was
  // posted. Call once.
  bool Raw_File_Recovey_Mode();

 private:
  // The records that one record's header opens files for.
  struct Companions {
    std::vector<std::size_t> records;
    bool table_ends_there = false;  // the search for them ran into an incomplete record
  };

  bool run_pass();
  bool prepare();
  std::size_t scan_dull(const Items& items, std::size_t from, std::size_t to) override;
  void take_item(const Sectors& sector, Finding finding, std::size_t record) override;
  void write_gathered() override;
  void begin_files(const Sectors& sector, std::size_t record);
  const Companions& companions_of(std::size_t record);
  bool goes_with(std::size_t found, std::size_t other) const;
  void open_file(const Sectors& sector, const SignatureRecord& record);
  std::optional<std::size_t> free_slot() const;
  void relieve_file_window();
  void continue_files(const Sectors& sector);
  std::uint64_t sectors_to_first_limit() const;
  void finish_file(std::size_t index, const Sectors& last_sector);
  void finish_all(const Sectors& last_sector);
  bool end_normally() override;
  bool end_stopped() override;
  void abandon_open_files();
  bool end_unsaved();
  bool end_with_exception();

  std::vector<std::optional<Companions>> companions_;
  std::array<RecoveredFile, output_slots> Output_Slot_Table_;
  std::uint64_t file_number_ = 0;
  std::uint64_t carved_size_ = 0;  // bytes of every open file, as all begin at one sector
  bool carving_ = false;           // a header was found in this pass
  bool header_in_sector_ = false;
};

}  // namespace norvo
