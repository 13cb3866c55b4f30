// Where a scan reports its files: the lists of shown items and their counts.
//
// What decides file names and clearing changes synchronously on the worker, in the order of the
// calls; what only shows it may follow later. Called by the worker; Shown_Item_Count
// may be read by any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "util/Text.h"

namespace norvo {

// The most items that are shown before they are cleared.
inline constexpr std::uint64_t SHOWN_ITEM_LIMIT = 2000;

class ScanResults {
 public:
  virtual ~ScanResults() = default;

  // A finished photo. `path` is empty for a file that another pass left open.
  virtual void addImageWithPath(const std::filesystem::path& path, TextView imageName,
                                TextView image_UID) = 0;

  // A finished video, raw file or audio file.
  virtual void addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                  TextView image_UID) = 0;

  // Files of this type reported while there was room, or nullopt for a type without a row.
  virtual std::optional<std::uint64_t> NoOfFile(TextView FileTypes_Hidden) const = 0;

  // Items reported since the last clearing, as the lists count them.
  virtual std::uint64_t Shown_Item_Count() const = 0;
  virtual void reset_Shown_Item_Count() = 0;

  // Empties the list of shown items; the files and the count stay.
  virtual void empty_images() = 0;
};

}  // namespace norvo
