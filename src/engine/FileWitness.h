// Who wants to know what recovered files consist of, while they are written.
//
// The engine knows no digests and no reports: it hands each file's bytes to a witness of that file.
// Worker thread. Without witnesses nothing of this is done.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

#include "engine/SourceRuns.h"

namespace norvo {

// Sees one file. It goes without finished() when the file is not reported.
class FileWitness {
 public:
  virtual ~FileWitness() = default;

  // The file's next bytes, after they were handed to the system.
  virtual void written(std::span<const std::byte> bytes) = 0;

  // The file is closed, and the next report of a finished file is this one's. `runs` say where each
  // of its bytes came from.
  virtual void finished(const SourceRuns& runs) = 0;
};

class FileWitnesses {
 public:
  virtual ~FileWitnesses() = default;

  // A witness of the file that is made at `path`. Not null. Outlived by *this.
  virtual std::unique_ptr<FileWitness> watch(const std::filesystem::path& path) = 0;
};

}  // namespace norvo
