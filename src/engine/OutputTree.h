// The folder tree under the destination, written so that nobody can lead a write elsewhere.
//
// The destination itself is the person's choice and may be a link. Below it every component is
// opened without following links: a link, or a file that has a second name elsewhere, planted where
// the search wants to write, is a saving failure. Folders get the permissions 0777 whatever the
// umask. Paths are relative to the destination; "..", an empty path or a NUL character is refused.
//
// Keeps no descriptor open, so the destination's drive can be ejected between two files. Worker
// thread; failures throw SavingFailure.
#pragma once

#include <filesystem>

#include "util/UniqueFd.h"

namespace norvo {

class OutputTree {
 public:
  explicit OutputTree(std::filesystem::path destination) : destination_(std::move(destination)) {}

  const std::filesystem::path& destination() const { return destination_; }

  // Makes the folder with all missing parents, the destination included. An entry of any kind but
  // a link that stands at its place already counts as made.
  void make_folder(const std::filesystem::path& relative) const;

  // Makes the file's folder, then creates or empties the file, open for reading and writing.
  UniqueFd create_file(const std::filesystem::path& relative) const;

 private:
  UniqueFd open_destination() const;

  std::filesystem::path destination_;
};

}  // namespace norvo
