// Where a recovered file goes: its name, its item identifier, and the per-type folders with their
// rollover at 50,000 files. Worker thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "engine/ScanOperations.h"
#include "sigdb/SignatureRecord.h"
#include "util/Text.h"

namespace norvo {

// `Prefix`, `number` padded to five digits, a full stop, `extension`: GND00007.jpg.
Text Generate_File_Name(std::uint64_t number, TextView Prefix, TextView Extension);

// The same with the pass's own prefix, "GND" or "THD".
Text Generate_File_UID_Num(std::uint64_t number, bool Thoro_Hai, TextView Extension);

// The results tree: Rec_Folder_Name / the search type's folder.
std::filesystem::path search_folder(TextView Rec_Folder_Name, std::int32_t Recovery_MODE);
std::filesystem::path pass_folder(const std::filesystem::path& search_folder, Pass pass);

// `folder` / `name`, also when the name begins with a slash: it never replaces the folder. An empty
// name adds nothing.
std::filesystem::path joined(const std::filesystem::path& folder, TextView name);

// The folder that follows `folder` when it is full; empty when there is none (the counter would
// reach 1000). The counter is read from as many trailing characters as stand before the first "_",
// so it advances only where both have the same length, as with three-letter types.
Text next_folder_name(TextView folder);

// Fol_Cnt_Array: the folder and file count of each type, rebuilt at the start of every pass.
class FolderCounters {
 public:
  static constexpr std::int64_t files_per_folder = 50000;

  void clear() { types_.clear(); }

  // One counter for each extension of `table`, in the order of first occurrence.
  void add_types(const SignatureTable& table);

  // Counts one more file of a type that add_types saw and returns the folder it belongs in.
  Text folder_for_next_file(TextView extension);

 private:
  struct TypeCounter {
    Text extension;
    std::int64_t count = -1;
    Text folder;
  };

  TypeCounter* find(TextView extension);

  std::vector<TypeCounter> types_;
};

}  // namespace norvo
