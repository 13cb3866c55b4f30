// The found-files table: a row for each selected type, counting its files and naming the last one.
//
// The counts number the files of a type, so they change at once, in the order of the reports. The
// worker counts while the window reads: one lock inside, never held across a call out. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <vector>

#include "results/Paths.h"
#include "util/Text.h"

namespace norvo {

// The fields are the identifiers of the table's columns; FileTypes_Hidden is not shown.
struct FoundFilesRow {
  Text FileTypes;
  Text NoOfFile;  // decimal
  Text FileName;  // of the most recent file; empty until the first
  std::filesystem::path FilePath;
  Text FileTypes_Hidden;

  bool operator==(const FoundFilesRow&) const = default;
};

class FoundFilesTable {
 public:
  // Appends a row.
  void createSignatureListTableRecord(TextView FileTypes, std::uint64_t NoOfFile, TextView FileName,
                                      const std::filesystem::path& FilePath,
                                      TextView FileTypes_Hidden);

  void clear();

  // Counts a file on the first row whose hidden type equals the path's extension: what follows the
  // last full stop of its last component. White space at the path's ends does not count. No row
  // changes when none matches.
  void count_file(const std::filesystem::path& path, TextView file_name);

  // The count of the first row with this hidden type, or nullopt without one.
  std::optional<std::uint64_t> NoOfFile(TextView FileTypes_Hidden) const;

  std::size_t size() const;

  // The row at `index`. Without one, which is a programming error, an empty one.
  FoundFilesRow row(std::size_t index) const;

 private:
  mutable std::mutex mutex_;
  std::vector<FoundFilesRow> rows_;
};

}  // namespace norvo
