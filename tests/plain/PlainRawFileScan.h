// One pass of the scan for videos, raw files and audio.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "PlainController.h"

namespace plain {

class RawFileScan {
 public:
  // `pass` is "GEN" or "THD".
  RawFileScan(Controller& controller, const std::string& pass);

  // True when the pass reached the end of the range, or ended by an exception.
  bool Raw_File_Recovey_Mode();

 private:
  void set_up();
  bool scan();
  void search_headers();
  bool type_matches(std::size_t record) const;
  void close_all_for_new_header();
  void open_files_like(std::size_t first);
  void open_file(std::size_t record);
  void continue_files();
  void write_unchecked(const CarvedFile& file);
  void close_and_report(std::size_t index);
  bool end_normally();
  bool end_by_stop();
  bool end_by_device_failure();
  bool end_by_saving_failure();
  const Text& entry(std::size_t record, std::size_t field) const;

  Controller& c_;
  std::string pass_;
  std::string pass_folder_;
  Sector sector_{};
  Sector Zero_Sector_{};
  std::array<std::unique_ptr<OutputStream>, 30> Output_Slot_Table_;
  std::size_t slot_in_work_ = 0;
  std::uint64_t file_number_ = 0;
  std::uint64_t carved_size_ = 0;
  bool carving_ = false;
  bool header_found_ = false;
};

}  // namespace plain
