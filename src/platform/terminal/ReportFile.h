// The file that a report is written to, piece by piece. A piece goes to the system in one call when
// it is added, so that whatever ends the program leaves all pieces before it whole. One thread at a
// time.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>

#include "util/UniqueFd.h"

namespace norvo {

class ReportFile {
 public:
  // Makes the file with the folders above it that are missing; what exists already is left alone
  // and refused with EEXIST. Returns 0 or an errno. Once.
  int create(const std::filesystem::path& path);

  // Adds a piece. Returns 0 or an errno; then the part of it that was written is taken away again.
  int add(std::string_view piece);

  // Returns 0 or an errno.
  int close();

 private:
  UniqueFd fd_;
  off_t whole_bytes_ = 0;
};

}  // namespace norvo
