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
#include <span>
#include <vector>

#include "results/MyImageObject.h"
#include "results/ThumbnailMaker.h"
#include "util/Text.h"

namespace norvo {

// What a report did to the list.
struct ItemReport {
  bool item_added = false;
  bool scroll_to_last = false;  // the view shows the last item now
};

// What the list became since somebody has last read it.
struct GalleryChanges {
  std::uint64_t edits = 0;  // how often the list was changed other than at its end
  bool only_added = false;  // `items` follow what is known; else they are the whole list
  bool emptied = false;     // no item that is known is there any more; identifiers may come again
  std::vector<MyImageObject> items;
};

class Gallery {
 public:
  // The most items the list holds, and the count from which on nothing is counted any more.
  static constexpr std::uint64_t item_limit = 2000;

  // The longest side of the thumbnail of a photo that exists in memory only.
  static constexpr std::uint32_t thumbnail_pixels = 100;

  // Takes the picture that stands for files that cannot be shown; once, before the first search.
  // Without a readable file there it has no bytes.
  void load_placeholder(const std::filesystem::path& noprevfile);

  // Reports a finished photo. With `item_limit` items in the list it is only counted; with as many
  // counted it is ignored, as is an empty path (white space at its ends does not count). Every
  // sixth counted item scrolls.
  ItemReport addImageWithPath(const std::filesystem::path& path, TextView imageName,
                              TextView image_UID);

  // Reports a photo that exists as encoded bytes, by the same rules; empty bytes are ignored as an
  // empty path is. The item shows a thumbnail that `maker` makes, or else the placeholder. Returns
  // when the thumbnail is made; one reporting thread.
  ItemReport addImageWithData(std::span<const std::byte> imageData, TextView imageName,
                              TextView image_UID, ThumbnailMaker& maker);

  // Reports a finished video, raw file or audio file, by the same rules; every fourth one scrolls.
  ItemReport addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                TextView image_UID);

  // Takes items out of the list; indexes without an item are ignored. The files stay.
  void removeItemsAtIndexes(const std::vector<std::size_t>& indexes);

  // Takes items out and puts them back as one block, in their order, before the item that stood at
  // `toIndex` (the list's length: at the end). Indexes without an item are ignored.
  void moveItemsAtIndexes(const std::vector<std::size_t>& indexes, std::size_t toIndex);

  // The item with this identifier cannot be shown: it gets the placeholder's bytes and path and
  // keeps its name. Nothing without one.
  void show_placeholder(TextView image_UID);

  // Empties the list. The count and the files stay.
  void empty_images();

  std::uint64_t Shown_Item_Count() const;
  void reset_Shown_Item_Count();

  std::size_t size() const;

  // For a reader that keeps a copy of the list: `known` items, read when the list counted `edits`
  // (0 and 0 at first). While a scan only adds, a reading takes no more than what is new.
  GalleryChanges changes(std::uint64_t edits, std::size_t known) const;

  // The item at `index`, or nullopt when there is none (any more).
  std::optional<MyImageObject> item(std::size_t index) const;

 private:
  bool has_room();
  void edited();
  ItemReport append(MyImageObject item, std::uint64_t items_per_scroll);

  mutable std::mutex mutex_;
  ImageData Null_Image_Data_;
  std::filesystem::path noprevfile_;
  std::vector<MyImageObject> images_;
  std::uint64_t edits_ = 0;
  std::uint64_t emptied_at_ = 0;  // the edit that last left no item
  std::uint64_t shown_item_count_ = 0;
};

}  // namespace norvo
