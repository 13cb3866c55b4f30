// The table of what a search found, for people. One thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/ScanOperations.h"

namespace norvo {

class FoundTable {
 public:
  // `type` is the file's extension, `bytes` its size.
  void add(Pass pass, const std::string& type, std::uint64_t bytes);

  std::uint64_t files() const { return files_; }

  // The table, ending in a line break; one sentence when nothing was found. Types of a pass stand
  // in alphabetical order, the General pass first.
  std::string text() const;

 private:
  struct Row {
    Pass pass;
    std::string type;
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
  };

  std::vector<Row> rows_;
  std::uint64_t files_ = 0;
};

// `bytes` in decimal units with one digit after the point: "812 B", "4.1 MB".
std::string readable_size(std::uint64_t bytes);

}  // namespace norvo
