// The photo recovery scan: one pass over a range of sectors.
//
// Every sector is tested against the headers of the pass's signature table. A hit starts a new
// file, which receives each following sector until the size limit in force is reached or the next
// header is found; that header's sector is the old file's last and the new file's first.
//
// The limit in force is not fixed when a file begins: every record that the header search tries
// overwrites it. So it is the matched record's size until the next sector that is searched without
// a match, and the size of the table's last record from then on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "engine/ScanPass.h"

namespace norvo {

class PhotoScan final : private ScanPass {
 public:
  // `table` is the pass's signature table: the General or the Thorough one. `block_sectors` is the
  // size of the reading block; results do not depend on it.
  PhotoScan(const ScanContext& context, Pass pass, const SignatureTable& table,
            std::size_t block_sectors = SectorReader::default_block_sectors);

  // Runs the pass on the calling thread. True when it ran to its end; false when the device could
  // not be opened, when it was stopped, or when saving failed, after its own clean-up and, but for
  // the device, after the final screen was posted. An exception of a broken table is shown in a
  // message box and counts as having run to its end. Call once.
  bool Photo_Recovey_Mode();

 private:
  bool run_pass();
  bool prepare();
  std::size_t scan_dull(const Items& items, std::size_t from, std::size_t to) override;
  void take_item(const Sectors& sector, Finding finding, std::size_t record) override;
  void write_gathered() override { context_.state.pFile_op.write_gathered(); }
  void begin_file(const Sectors& sector, const SignatureRecord& record);
  void relieve_gallery();
  void place_file(const SignatureRecord& record);
  void continue_file(const Sectors& sectors);
  std::size_t sectors_to_limit() const;
  void finish_file();
  bool end_normally() override;
  bool end_stopped() override;
  bool end_unsaved();
  bool end_with_exception(const std::string& reason);

  std::int64_t last_record_size_ = 0;  // the limit after a sector that was searched in vain
  std::uint64_t files_started_ = 0;
  std::uint64_t bytes_written_ = 0;
  std::int64_t current_maximum_size_ = 0;
  bool file_in_progress_ = false;
  bool file_finished_ = false;
  Text file_name_;
  Text item_identifier_;
  std::filesystem::path output_path_;  // empty when no file of this pass is open
};

}  // namespace norvo
