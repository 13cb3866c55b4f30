// One pass of the photo scan.
#pragma once

#include <cstdint>
#include <string>

#include "PlainController.h"

namespace plain {

class PhotoScan {
 public:
  // `pass` is "GEN" or "THD".
  PhotoScan(Controller& controller, const std::string& pass);

  // True when the pass ran to its end, or ended by an exception.
  bool Photo_Recovey_Mode();

 private:
  void set_up();
  bool scan();
  bool find_header();
  bool record_matches(std::size_t record);
  void relieve_gallery();
  void close_previous_file();
  void open_new_file();
  void write_sector();
  void close_and_report();
  bool end_normally();
  bool end_by_stop();
  bool end_by_device_failure();
  bool end_by_saving_failure();

  Controller& c_;
  std::string pass_;
  std::string pass_folder_;
  Sector sector_{};
  Sector compare_{};
  std::uint64_t files_started_ = 0;
  std::uint64_t bytes_written_ = 0;
  std::int64_t current_maximum_ = 0;
  bool file_in_progress_ = false;
  bool file_finished_ = false;
  Text extension_;
  std::string file_name_;
  std::string uid_;
  std::string output_path_;
};

}  // namespace plain
