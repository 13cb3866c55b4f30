// The check list of file types for the searches for videos, raw files and audio, and how the
// ticked types reach the scan. Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sigdb/SignatureRecord.h"
#include "sigdb/SignatureTables.h"
#include "util/Text.h"

namespace norvo {

// The fields are the identifiers of the list's columns.
struct FileTypeEntry {
  Text Extension;
  Text Description;
  Text Thoro;  // "YES" when the type stands in the Thorough table only
  bool State = true;

  bool operator==(const FileTypeEntry&) const = default;
};

// The two tables that serve a search type; Recovery_MODE is 1 video, 2 raw file or 3 audio.
struct ModeTables {
  const SignatureTable& general;
  const SignatureTable& thorough;
};
ModeTables tables_of_mode(const SignatureTables& tables, std::int32_t Recovery_MODE);

// The records of the ticked types.
struct SelectedTables {
  SignatureTable CheckListHeader_Array;      // General pass
  SignatureTable CheckListHeader_Adv_Array;  // Thorough pass
};

class FileTypeCheckList {
 public:
  // Empties the list and fills it with one ticked row for each extension of the whole records:
  // first the General table's, in table order, then those that only the Thorough table has. The
  // first record of an extension gives the description. Then sorts by extension, ignoring case.
  void build(const ModeTables& tables);

  void clear() { rows_.clear(); }

  // Appends a row; nothing is checked.
  void createExtensionListTableRecord(TextView Extension, bool State, TextView Description,
                                      TextView Thoro);

  // Ticks all rows, or none.
  void Select_Unselect_Check(bool select_all);

  // Ticks one row or not. An index beyond the last row is a programming error and changes nothing.
  void set_State(std::size_t row, bool State);

  // Whether at least one row is ticked.
  bool Check_For_One_Extension_Selection() const;

  // Whether all rows are ticked, as they are in an empty list.
  bool all_selected() const;

  const std::vector<FileTypeEntry>& rows() const { return rows_; }

  // Copies of the mode's tables without the records of the types that are not ticked. A left-over
  // incomplete record at a table's end stays.
  SelectedTables selected_tables(const ModeTables& tables) const;

 private:
  bool has_extension(TextView Extension) const;
  void add_types(const SignatureTable& table, TextView Thoro);

  std::vector<FileTypeEntry> rows_;
};

}  // namespace norvo
