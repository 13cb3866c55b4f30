// The search rules once more, slowly: one sector, one record, one hexadecimal digit at a time, all
// in memory. The engine must give the same files, names and order of events as this version does.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace plain {

using Text = std::u16string;
using Bytes = std::vector<std::uint8_t>;

// A stand-in for a drive. Sector numbers here are device sectors: byte position / 512.
struct Device {
  // What is there; the length need not be a multiple of 512 nor agree with `Search::sectors_val`.
  Bytes bytes;
  // Reading one of these sectors fails and leaves the reader's buffer as it was.
  std::set<std::uint64_t> unreadable;
  // Positioning beyond the last byte fails (a block device) instead of succeeding (a plain file).
  bool seek_past_end_fails = false;
  bool openable = true;
  int open_errno = 0;  // why it cannot be opened, when not openable
  // The drive is pulled by the first read at this sector or a later one: that read and all reads
  // after it fail and the size is 0, in the second pass too. Opening it still succeeds.
  std::optional<std::uint64_t> gone_after_sector;
};

// One search, as the wizard hands it to the worker.
struct Search {
  int mode = 0;  // Recovery_MODE: 0 photo, 1 video, 2 raw file, 3 audio
  bool thorough = true;
  Text results_folder = u"Norvo Spruce Results";  // Rec_Folder_Name
  std::string destination = "/destination";       // exists beforehand; UTF-8, no slash at its end
  std::vector<Text> general;                      // flat, seven entries per record
  std::vector<Text> thorough_table;
  std::vector<Text> row_types;  // modes 1 to 3: the types that have a found-files row, in order
  bool entire_disk = true;      // range 0 to sectors_val; otherwise range_start to range_end
  std::uint64_t sectors_val = 0;
  std::uint64_t range_start = 0;
  std::uint64_t range_end = 0;
  // stop_now becomes 1 inside the n-th report (the first is 1, ignored reports count).
  std::optional<std::uint64_t> stop_after_reports;
  std::uint64_t initial_shown_item_count = 0;
  // What lies under the destination before the search; paths begin with `destination`. Missing
  // parents of both are there too.
  std::map<std::string, Bytes> existing_files;
  std::set<std::string> existing_folders;
  // The drive is full after so many sector writes. random_search() never sets it.
  std::optional<std::uint64_t> sector_writes_until_full;
  Device device;
};

enum class EventKind {
  kModeLabel,         // pass, text
  kReport,            // path, name, uid; whether or not the list had room for it
  kClearing,          // text: the notice shown, then the 4-second pause and the emptied list
  kMessage,           // text, as shown: it begins with a line feed
  kExceptionMessage,  // an exception's reason was shown; its wording is free, so text is empty
  kDeviceError,       // error_number, permission: the permission alert instead of the generic one
  kFinalScreen,       // the final screen was posted (not: has run)
};

// One thing that an outside observer sees. Fields that the kind does not name stay empty.
struct Event {
  EventKind kind = EventKind::kFinalScreen;
  std::string pass{};
  std::string text{};
  std::string path{};
  std::string name{};
  std::string uid{};
  int error_number = 0;
  bool permission = false;

  bool operator==(const Event&) const = default;
};

// A row of the found-files table; the fields are its keys.
struct Row {
  std::string FileTypes;
  std::string NoOfFile;
  std::string FileName;
  std::string FilePath;
  std::string FileTypes_Hidden;

  bool operator==(const Row&) const = default;
};

// What the search left behind. All texts are UTF-8; paths begin with `Search::destination`.
struct Outcome {
  std::vector<Event> events;
  std::map<std::string, Bytes> files;  // every plain file below the destination
  std::set<std::string> folders;       // every folder below the destination, without itself
  bool general_result = false;
  std::optional<bool> thorough_result;  // absent when the Thorough pass did not run
  std::uint64_t shown_item_count = 0;
  std::vector<Row> rows;
};

// Runs the worker of `search.mode` to its end. The final screen is posted but never runs meanwhile,
// so a pass that posted it itself is followed by the worker's own post.
Outcome run(const Search& search);

}  // namespace plain
