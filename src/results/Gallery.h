// The list of shown items and its count, which decides when a scan clears it.
//
// The worker appends while the window reads: one lock inside guards list and count, and is never
// held across a call out. Any thread may call anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <vector>

#include "results/MyImageObject.h"
#include "util/Text.h"

namespace norvo {

// What a report did to the list.
struct ItemReport {
  bool item_added = false;
  bool scroll_to_last = false;  // the view shows the last item now
};

class Gallery {
 public:
  // The most items the list holds, and the count from which on nothing is counted any more.
  static constexpr std::uint64_t item_limit = 2000;

  // Reports a finished photo. With `item_limit` items in the list it is only counted; with as many
  // counted it is ignored, as is an empty path (white space at its ends does not count). Every
  // sixth counted item scrolls.
  ItemReport addImageWithPath(const std::filesystem::path& path, TextView imageName,
                              TextView image_UID);

  // Reports a finished video, raw file or audio file, by the same rules; every fourth one scrolls.
  ItemReport addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                TextView image_UID);

  // Empties the list. The count and the files stay.
  void empty_images();

  std::uint64_t Shown_Item_Count() const;
  void reset_Shown_Item_Count();

  std::size_t size() const;

  // The item at `index`, or nullopt when there is none (any more).
  std::optional<MyImageObject> item(std::size_t index) const;

 private:
  ItemReport add(const std::filesystem::path& path, TextView imageName, TextView image_UID,
                 std::uint64_t items_per_scroll);

  mutable std::mutex mutex_;
  std::vector<MyImageObject> images_;
  std::uint64_t shown_item_count_ = 0;
};

}  // namespace norvo
