// The report of a search: sees the recovered files while they are written, and tells of each when
// it is reported. Nothing is read again.
//
// What goes wrong while it is written is told once, as a sentence; from then on the report keeps
// what it has, is never ended, and the search goes on without it.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "engine/FileWitness.h"
#include "engine/ScanOperations.h"
#include "platform/terminal/ReportFile.h"
#include "platform/terminal/ReportFormat.h"
#include "platform/terminal/ReportedFile.h"

namespace norvo {

class RecoveryReport final : public FileWitnesses {
 public:
  // Filenames are told as they lie below `destination`.
  RecoveryReport(std::filesystem::path path, std::unique_ptr<ReportFormat> format,
                 std::filesystem::path destination);

  // Makes the file and begins it. Returns 0 or the errno of a failure, after which no file is left
  // that was not there before. Before the search.
  int begin();

  // Worker thread.
  std::unique_ptr<FileWitness> watch(const std::filesystem::path& path) override;

  // A finished file was reported. Worker thread; what went wrong, or nothing.
  std::optional<std::string> file_reported(Pass pass, const std::filesystem::path& path);

  // The search has ended, however it did. What went wrong, or nothing. Main thread.
  std::optional<std::string> end();

  // Whether every piece up to now was written.
  bool is_whole() const { return whole_; }

 private:
  class Witness;
  struct Seen {
    std::filesystem::path path;
    std::uint64_t bytes = 0;
    FileEvidence evidence;
  };

  std::optional<std::string> lost(int error);

  const std::filesystem::path path_;
  const std::unique_ptr<ReportFormat> format_;
  const std::filesystem::path destination_;
  ReportFile file_;
  std::optional<Seen> seen_;  // of the file that is reported next
  bool whole_ = true;
};

}  // namespace norvo
