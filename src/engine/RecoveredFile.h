// One output file of a search: whole sectors appended, then flushed and closed.
//
// Sectors that lie beside each other in memory are gathered and go out in one write. Gathered
// sectors are not copied: call write_gathered() before their memory changes. Worker thread;
// a write or close that fails throws SavingFailure, as a full drive must never pass for success.
//
// A file that has a witness keeps a list of the runs that it consists of, for the witness; its cost
// is that of an append, not of a sector.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

#include "engine/FileWitness.h"
#include "engine/OutputTree.h"
#include "engine/Sectors.h"
#include "engine/SourceRuns.h"
#include "util/UniqueFd.h"

namespace norvo {

class RecoveredFile {
 public:
  bool is_open() const { return static_cast<bool>(fd_); }

  // Closes what is open, without a word about failures, and creates the file at `relative`, which
  // `witness` sees (null for none).
  void open(const OutputTree& tree, const std::filesystem::path& relative,
            std::unique_ptr<FileWitness> witness = nullptr);

  // The file must be open.
  void append(const Sectors& sectors);

  // Hands the gathered sectors to the system.
  void write_gathered();

  // Writes what is gathered and closes. Nothing happens when no file is open.
  void close();

  // Tells the witness that the closed file is reported next; once, and nothing without a witness.
  void conclude();

  // As close(), keeping silent about a failure: for exits that already report one.
  void abandon() noexcept;

 private:
  UniqueFd fd_;
  const std::byte* gathered_ = nullptr;
  std::size_t gathered_bytes_ = 0;
  std::unique_ptr<FileWitness> witness_;
  SourceRuns runs_;  // kept only for a witness
};

}  // namespace norvo
