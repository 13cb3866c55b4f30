// Names of recovered files and the per-type folder counters.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PlainSearch.h"

namespace plain {

// The name for number `number`, or, outside a photo search, for the count of the first row whose
// hidden type is `Prefix`, plus 1.
Text Generate_File_Name(int mode, const std::vector<Row>& rows, std::uint64_t number,
                        const Text& Prefix, const Text& Extension);

Text Generate_File_UID_Num(std::uint64_t number, bool Thoro_Hai, const Text& Extension);

// One triple of Fol_Cnt_Array.
struct FolderCounter {
  Text extension;
  std::int64_t count = -1;
  Text folder;
};

// One triple per extension, in the order in which the extensions first occur in `table`.
std::vector<FolderCounter> make_folder_counters(const std::vector<Text>& table);

FolderCounter& counter_of(std::vector<FolderCounter>& counters, const Text& extension);

// The folder after `folder`; empty when there is none any more.
Text next_folder_name(const Text& folder);

}  // namespace plain
