#include "results/Gallery.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "results/Paths.h"
#include "util/Files.h"

namespace norvo {
namespace {

constexpr std::uint64_t photos_per_scroll = 6;
constexpr std::uint64_t files_per_scroll = 4;
constexpr std::uint32_t icon_points = 16;
constexpr std::uintmax_t largest_placeholder = std::uintmax_t{1} << 20U;

// Takes the items at `indexes` out of `items` and returns them in their order.
std::vector<MyImageObject> take_out(std::vector<MyImageObject>& items,
                                    const std::set<std::size_t>& indexes) {
  std::vector<MyImageObject> taken;
  std::vector<MyImageObject> left;
  for (std::size_t i = 0; i < items.size(); ++i) {
    (indexes.contains(i) ? taken : left).push_back(std::move(items[i]));
  }
  items = std::move(left);
  return taken;
}

}  // namespace

void Gallery::load_placeholder(const std::filesystem::path& noprevfile) {
  const std::string bytes = read_whole_file(noprevfile, largest_placeholder).value_or("");
  const auto encoded = std::as_bytes(std::span(bytes));
  const std::lock_guard lock(mutex_);
  noprevfile_ = noprevfile;
  Null_Image_Data_ = std::make_shared<std::vector<std::byte>>(encoded.begin(), encoded.end());
}

// With the lock held. A full list counts what it does not take.
bool Gallery::has_room() {
  if (images_.size() >= item_limit) {
    ++shown_item_count_;
    return false;
  }
  return shown_item_count_ < item_limit;
}

// With the lock held, after each change other than at the end of the list.
void Gallery::edited() {
  ++edits_;
  if (images_.empty()) emptied_at_ = edits_;
}

// With the lock held.
ItemReport Gallery::append(MyImageObject item, std::uint64_t items_per_scroll) {
  images_.push_back(std::move(item));
  ++shown_item_count_;
  return {.item_added = true, .scroll_to_last = shown_item_count_ % items_per_scroll == 0};
}

ItemReport Gallery::addImageWithPath(const std::filesystem::path& path, TextView imageName,
                                     TextView image_UID) {
  const std::lock_guard lock(mutex_);
  if (!has_room()) return {};
  const std::filesystem::path trimmed = trimmed_path(path);
  if (trimmed.empty()) return {};
  return append(MyImageObject::initWithImage_Path(trimmed, imageName, image_UID),
                photos_per_scroll);
}

ItemReport Gallery::addImageWithData(std::span<const std::byte> imageData, TextView imageName,
                                     TextView image_UID, ThumbnailMaker& maker) {
  {
    const std::lock_guard lock(mutex_);
    if (!has_room()) return {};
  }
  if (imageData.empty()) return {};
  const std::vector<std::byte> thumbnail = maker.png_thumbnail(imageData, thumbnail_pixels);
  MyImageObject item = MyImageObject::initWithImage_data(thumbnail, imageName, image_UID);
  const std::lock_guard lock(mutex_);
  if (thumbnail.empty()) item.imageData = Null_Image_Data_;
  return append(std::move(item), photos_per_scroll);
}

ItemReport Gallery::addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                       TextView image_UID) {
  const std::lock_guard lock(mutex_);
  if (!has_room()) return {};
  const std::filesystem::path trimmed = trimmed_path(path);
  if (trimmed.empty()) return {};
  MyImageObject item = MyImageObject::initWithImage(
      {.file_type = extension_of(trimmed), .points = icon_points}, imageName, image_UID, 0, 0);
  item.setPath(trimmed);
  return append(std::move(item), files_per_scroll);
}

void Gallery::removeItemsAtIndexes(const std::vector<std::size_t>& indexes) {
  const std::lock_guard lock(mutex_);
  static_cast<void>(take_out(images_, {indexes.begin(), indexes.end()}));
  edited();
}

void Gallery::moveItemsAtIndexes(const std::vector<std::size_t>& indexes, std::size_t toIndex) {
  const std::lock_guard lock(mutex_);
  std::set<std::size_t> moved(indexes.begin(), indexes.end());
  moved.erase(moved.lower_bound(images_.size()), moved.end());
  const auto below =
      static_cast<std::size_t>(std::distance(moved.begin(), moved.lower_bound(toIndex)));
  std::vector<MyImageObject> block = take_out(images_, moved);
  const std::size_t insertion = std::min(toIndex - below, images_.size());
  images_.insert(images_.begin() + static_cast<std::ptrdiff_t>(insertion),
                 std::make_move_iterator(block.begin()), std::make_move_iterator(block.end()));
  edited();
}

void Gallery::show_placeholder(TextView image_UID) {
  const std::lock_guard lock(mutex_);
  const auto item = std::find_if(images_.begin(), images_.end(), [&](const MyImageObject& image) {
    return image.image_UID == image_UID;
  });
  if (item == images_.end()) return;
  item->imageData = Null_Image_Data_;
  item->setPath(noprevfile_);
  edited();
}

void Gallery::empty_images() {
  const std::lock_guard lock(mutex_);
  images_.clear();
  edited();
}

std::uint64_t Gallery::Shown_Item_Count() const {
  const std::lock_guard lock(mutex_);
  return shown_item_count_;
}

void Gallery::reset_Shown_Item_Count() {
  const std::lock_guard lock(mutex_);
  shown_item_count_ = 0;
}

std::size_t Gallery::size() const {
  const std::lock_guard lock(mutex_);
  return images_.size();
}

GalleryChanges Gallery::changes(std::uint64_t edits, std::size_t known) const {
  const std::lock_guard lock(mutex_);
  const bool only_added = edits == edits_ && known <= images_.size();
  const auto first = only_added ? static_cast<std::ptrdiff_t>(known) : 0;
  return {.edits = edits_,
          .only_added = only_added,
          .emptied = emptied_at_ > edits,
          .items = {images_.begin() + first, images_.end()}};
}

std::optional<MyImageObject> Gallery::item(std::size_t index) const {
  const std::lock_guard lock(mutex_);
  if (index >= images_.size()) return std::nullopt;
  return images_[index];
}

}  // namespace norvo
