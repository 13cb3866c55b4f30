// The flags and counters that the worker, the timer and the main thread share.
//
// Flags and counters are atomic and may be read and written by any thread; a reader may see a
// value that is a moment old. The streams belong to the worker while `pass_running` is set and to
// the main thread afterwards.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "engine/Device.h"
#include "engine/RecoveredFile.h"
#include "util/Text.h"

namespace norvo {

// A text that one thread writes and others read.
class SharedText {
 public:
  void set(TextView text) {
    const std::lock_guard lock(mutex_);
    text_ = text;
  }
  Text get() const {
    const std::lock_guard lock(mutex_);
    return text_;
  }

 private:
  mutable std::mutex mutex_;
  Text text_;
};

// How a search ended, from best to worst.
enum class SearchOutcome { completed, stopped, save_failed, open_failed };

// A file that the raw-file scan is carving. The order of the fields is the order of the system's
// own list of open files.
struct CarvedFile {
  Text type;
  Text maximum_size;
  Text header;
  std::size_t slot = 0;  // in the pass's output slots
  std::filesystem::path path;
  Text name;
  Text uid;
};

struct ScanState {
  // 1 asks the running pass to end before its next sector. Lock-free, so that a signal handler may
  // set it.
  std::atomic<std::int32_t> stop_now{0};
  // 1 when the final screen was shown, or will not be shown, for the running search.
  std::atomic<std::int32_t> stop_screen_already_show{0};

  // Whether the passes of a search have the streams below. A final screen that is shown meanwhile
  // leaves them alone, and `stop_now` to the pass, which has yet to see it.
  std::atomic<bool> pass_running{false};

  // The range in sectors, the end exclusive, and the index of the next sector to read.
  std::atomic<std::uint64_t> start_sector{0};
  std::atomic<std::uint64_t> end_sector{0};
  std::atomic<std::uint64_t> total_sector{0};
  std::atomic<std::uint64_t> for_index{0};

  // Running numbers of General and Thorough hits. They go on from pass to pass and from search to
  // search, so that item identifiers stay unique.
  std::atomic<std::uint64_t> GND_Image_number{0};
  std::atomic<std::uint64_t> THD_Image_number{0};

  // The worst outcome of the search's passes so far.
  std::atomic<SearchOutcome> outcome{SearchOutcome::completed};

  // The mode label's text of the running pass.
  SharedText Curr_Running_Mode_Info;

  std::unique_ptr<Device> pFile_Disk;  // null when no device is open
  RecoveredFile pFile_op;

  // The files being carved, oldest first. A pass that an exception ends leaves its entries behind.
  std::vector<CarvedFile> MultiHeader_Array;
};

static_assert(std::atomic<std::int32_t>::is_always_lock_free);

}  // namespace norvo
