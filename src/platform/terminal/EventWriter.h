// Events of a search on a stream, one JSON object a line, each complete when it is written. Any
// thread; lines never mix.
#pragma once

#include <filesystem>
#include <mutex>
#include <ostream>
#include <string_view>

#include "engine/ScanOperations.h"
#include "engine/ScanState.h"
#include "sigdb/FileTypeCheckList.h"
#include "storage/MyDataObject.h"
#include "util/Text.h"

namespace norvo {

class EventWriter {
 public:
  explicit EventWriter(std::ostream& stream) : stream_(stream) {}

  void pass(Pass pass, TextView label);
  void file(Pass pass, const std::filesystem::path& path, TextView name, TextView uid);
  void clear(TextView notice);
  void message(TextView text);
  void device_error(int error, bool permission);
  void final(SearchOutcome outcome);

  // A row of the drive list, and the node from which it is read; in ASCII, other characters are
  // escaped. No event of a search.
  void drive(const MyDataObject& row, const std::filesystem::path& node);

  // A row of the check list. No event of a search.
  void type(const FileTypeEntry& row);

 private:
  void write_line(std::string_view line);

  std::ostream& stream_;
  std::mutex mutex_;
};

}  // namespace norvo
