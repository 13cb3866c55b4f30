// The drive list: one row for every mounted volume that the running edition may search.
//
// It has no window; who shows it shows the loading notice around Reload_Drive_list_Function and
// reloads the table after every change. Main thread only.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

#include "storage/DiskUtility.h"
#include "storage/MyDataObject.h"
#include "util/Text.h"

namespace norvo {

struct DriveColumn {
  TextView identifier;  // of the table's column
  TextView heading;
  Text MyDataObject::*field;
  bool is_number = false;  // a number or a size: the ends stand below each other
};

// The table's columns from left to right.
inline constexpr std::array<DriveColumn, 6> drive_columns{{
    {u"Collumn1", u"Identifier", &MyDataObject::nsStrDiskIdentifier},
    {u"Collumn2", u"Volume", &MyDataObject::nsStrVolName},
    {u"Collumn3", u"File System", &MyDataObject::nsStrFileSystem},
    {u"Collumn4", u"Size", &MyDataObject::nsStrSize, true},
    {u"Collumn5", u"Parent Disk", &MyDataObject::nsStrParentDisk},
    {u"Collumn6", u"Sectors", &MyDataObject::nsStrSectors, true},
}};

class DriveList {
 public:
  // `disk_utility` must outlive the list. With `USE_HARD_DISK` fixed volumes are listed besides
  // removable ones. The list is empty until the first reload.
  DriveList(DiskUtility& disk_utility, bool USE_HARD_DISK)
      : disk_utility_(disk_utility), use_hard_disk_(USE_HARD_DISK) {}

  // The rows in the order in which their volumes were enumerated.
  const std::vector<MyDataObject>& nsMutaryOfDataObject() const { return rows_; }

  // Removes all rows and enumerates anew. Reports no failure: a volume about which nothing can be
  // told has no row. Takes as long as the disk utility.
  void Reload_Drive_list_Function();

  // Appends a row for each mounted volume that qualifies; one for a volume with several mount
  // paths.
  void getVolumeToFSGetInfo();

  // Appends a row for the volume at `path` unless it is a disk image or a CD, or has no identifier.
  // Empties Parent_Disk_Size and Parent_Media_Name.
  void find_disk_info(const std::filesystem::path& path);

  // Fills Parent_Disk_Size and Parent_Media_Name from the report on a whole disk, named by its
  // identifier or path. Size "0" and an empty name when nothing is known of it.
  void find_disk_info_PARENT(const std::filesystem::path& disk);

  const Text& Parent_Disk_Size() const { return parent_disk_size_; }  // bytes, decimal digits
  const Text& Parent_Media_Name() const { return parent_media_name_; }

  // The table's data: its number of rows, and what a cell shows, without characters that steer a
  // display. Nullopt for another column identifier and for a row that does not exist.
  std::size_t numberOfRows() const { return rows_.size(); }
  std::optional<Text> objectValue(TextView column_identifier, std::size_t row) const;

  // Appends `row`.
  void addRow(MyDataObject row) { rows_.push_back(std::move(row)); }

  // Removes the selected row; nothing without one, or when it does not exist (any more).
  void deleteSelectedRow(std::optional<std::size_t> selected_row);

  // Does nothing: rows stand in the order of their volumes.
  void addAtSelectedRow() {}

 private:
  void drop_repetition(std::size_t first);

  DiskUtility& disk_utility_;
  bool use_hard_disk_;
  std::vector<MyDataObject> rows_;
  Text parent_disk_size_;
  Text parent_media_name_;
};

// The text of a size in bytes, given in decimal digits: two digits after the point, a unit and one
// blank, with one more blank before KB, MB, GB and TB. Binary multiples, in single precision. What
// does not begin with a digit counts as 0. Any thread.
Text getMPSize(TextView bytes);

}  // namespace norvo
