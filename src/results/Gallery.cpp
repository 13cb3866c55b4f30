#include "results/Gallery.h"

#include "results/Paths.h"

namespace norvo {
namespace {

constexpr std::uint64_t photos_per_scroll = 6;
constexpr std::uint64_t files_per_scroll = 4;

}  // namespace

ItemReport Gallery::addImageWithPath(const std::filesystem::path& path, TextView imageName,
                                     TextView image_UID) {
  return add(path, imageName, image_UID, photos_per_scroll);
}

ItemReport Gallery::addImageWithPath_2(const std::filesystem::path& path, TextView imageName,
                                       TextView image_UID) {
  return add(path, imageName, image_UID, files_per_scroll);
}

ItemReport Gallery::add(const std::filesystem::path& path, TextView imageName, TextView image_UID,
                        std::uint64_t items_per_scroll) {
  const std::lock_guard lock(mutex_);
  if (images_.size() >= item_limit) {
    ++shown_item_count_;
    return {};
  }
  if (shown_item_count_ >= item_limit) return {};
  const std::filesystem::path trimmed = trimmed_path(path);
  if (trimmed.empty()) return {};
  images_.push_back({.path = trimmed, .image_Name = Text(imageName), .image_UID = Text(image_UID)});
  ++shown_item_count_;
  return {.item_added = true, .scroll_to_last = shown_item_count_ % items_per_scroll == 0};
}

void Gallery::empty_images() {
  const std::lock_guard lock(mutex_);
  images_.clear();
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

std::optional<MyImageObject> Gallery::item(std::size_t index) const {
  const std::lock_guard lock(mutex_);
  if (index >= images_.size()) return std::nullopt;
  return images_[index];
}

}  // namespace norvo
