#include "results/FoundFilesTable.h"

#include <algorithm>

#include "results/Paths.h"
#include "util/Diagnostics.h"
#include "util/Numbers.h"

namespace norvo {
namespace {

std::uint64_t count_of(const FoundFilesRow& row) {
  return static_cast<std::uint64_t>(integer64_value(row.NoOfFile));
}

}  // namespace

void FoundFilesTable::createSignatureListTableRecord(TextView FileTypes, std::uint64_t NoOfFile,
                                                     TextView FileName,
                                                     const std::filesystem::path& FilePath,
                                                     TextView FileTypes_Hidden) {
  const std::lock_guard lock(mutex_);
  rows_.push_back({.FileTypes = Text(FileTypes),
                   .NoOfFile = decimal(NoOfFile),
                   .FileName = Text(FileName),
                   .FilePath = FilePath,
                   .FileTypes_Hidden = Text(FileTypes_Hidden)});
}

void FoundFilesTable::clear() {
  const std::lock_guard lock(mutex_);
  rows_.clear();
}

void FoundFilesTable::count_file(const std::filesystem::path& path, TextView file_name) {
  const Text extension = extension_of(path);
  const std::filesystem::path trimmed = trimmed_path(path);
  const std::lock_guard lock(mutex_);
  const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const FoundFilesRow& candidate) {
    return candidate.FileTypes_Hidden == extension;
  });
  if (row == rows_.end()) return;
  *row = {.FileTypes = extension,
          .NoOfFile = decimal(count_of(*row) + 1),
          .FileName = Text(file_name),
          .FilePath = trimmed,
          .FileTypes_Hidden = extension};
}

std::optional<std::uint64_t> FoundFilesTable::NoOfFile(TextView FileTypes_Hidden) const {
  const std::lock_guard lock(mutex_);
  const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const FoundFilesRow& candidate) {
    return candidate.FileTypes_Hidden == FileTypes_Hidden;
  });
  if (row == rows_.end()) return std::nullopt;
  return count_of(*row);
}

std::size_t FoundFilesTable::size() const {
  const std::lock_guard lock(mutex_);
  return rows_.size();
}

FoundFilesRow FoundFilesTable::row(std::size_t index) const {
  {
    const std::lock_guard lock(mutex_);
    if (index < rows_.size()) return rows_[index];
  }
  report_violation(u"pRowIndex >= 0 && pRowIndex < [nsSIGFileInfoDataObject count]");
  return {};
}

}  // namespace norvo
