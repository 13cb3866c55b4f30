// The state that both scans, both passes and the reports share: what the controller owns.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "PlainDevice.h"
#include "PlainFileSystem.h"
#include "PlainNaming.h"
#include "PlainSearch.h"

namespace plain {

// A folder, file or write that failed: the pass ends with the message about it.
struct SavingFailure {};

// Seven entries of MultiHeader_Array: one file being carved.
struct CarvedFile {
  Text type_name;
  Text maximum;
  Text header;
  std::size_t slot = 0;
  std::string path;
  std::string name;
  std::string uid;
};

class Controller {
 public:
  explicit Controller(const Search& wanted);

  const Search& search;
  Drive drive;
  FileSystem file_system;

  std::unique_ptr<DeviceStream> pFile_Disk;
  std::unique_ptr<OutputStream> pFile_op;
  std::uint64_t start_sector = 0;
  std::uint64_t end_sector = 0;
  std::uint64_t for_index = 0;
  int stop_now = 0;
  int stop_screen_already_show = 0;
  std::uint64_t GND_Image_number = 0;
  std::uint64_t THD_Image_number = 0;
  std::uint64_t Shown_Item_Count = 0;
  std::uint64_t images = 0;  // how many items the gallery or file window holds
  std::vector<Row> nsSIGFileInfoDataObject;
  std::vector<Text> REC_PROC_Array;
  std::vector<FolderCounter> Fol_Cnt_Array;
  std::vector<CarvedFile> MultiHeader_Array;  // emptied by a General pass only
  std::vector<Event> events;

  // What is the same in the set-up of both scans. Each is one step or a run of steps of it.
  void set_mode_label(const std::string& pass);
  void set_range();
  bool open_device();
  // Folder of the pass under destination / results folder / `mode_folder`; throws SavingFailure.
  std::string make_pass_folder(const std::string& pass, const std::string& mode_folder);
  void position_at_start();
  void build_working_table(const std::vector<Text>& table);

  // Reads the sector for `for_index` and counts it; `compare` gets the sector when the device can
  // not even be positioned again.
  void read_sector(Sector& sector, Sector& compare);

  // The counter's next folder name for one more file of its type, rolled over at 50000. True when
  // the folder changed.
  bool count_file(FolderCounter& counter) const;

  void create_folder_or_fail(const std::string& path);
  // Clears the list of shown items with `notice` when it is due.
  void clear_shown_items_if_full(const std::string& notice);

  // Reports of one finished file, of the photo scan and of the raw-file scan.
  void addImageWithPath(const std::string& path, const std::string& name, const std::string& uid);
  void addImageWithPath_2(const std::string& path, const std::string& name, const std::string& uid);

  void post_final_screen();
  void show_saving_failure();
  void show_device_error();

 private:
  void note_report(const std::string& path, const std::string& name, const std::string& uid);
  void update_row(const std::string& trimmed_path, const std::string& name);

  std::uint64_t reports_ = 0;
};

// Closes the stream that `stream` holds, if any; throws SavingFailure when that fails.
void flush_and_close(std::unique_ptr<OutputStream>& stream);

}  // namespace plain
