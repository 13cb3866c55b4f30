#include "platform/qt/ThumbnailCache.h"

#include <limits>
#include <utility>

#include "platform/qt/QtText.h"

namespace norvo {
namespace {

// 96 MiB of pictures: some hundred of the largest size.
constexpr qsizetype most_kibibytes = qsizetype{96} * 1024;

}  // namespace

ThumbnailCache::ThumbnailCache(ThumbnailSource& source, std::function<void(TextView)> mark_failed)
    : source_(source), mark_failed_(std::move(mark_failed)), entries_(most_kibibytes) {
  connect(&source, &ThumbnailSource::done, this, &ThumbnailCache::take);
  connect(&source, &ThumbnailSource::postponed, this, &ThumbnailCache::allow_another_request);
  connect(&source, &ThumbnailSource::judged, this, &ThumbnailCache::take_judgement);
}

void ThumbnailCache::on_arrival(std::function<void(const QString&)> arrived) {
  arrived_ = std::move(arrived);
}

QPixmap ThumbnailCache::picture(const std::filesystem::path& path, const QString& image_UID,
                                int pixels) {
  Item& item = items_[image_UID];
  if (item.failed) return {};
  const Entry* const entry = entries_.object(image_UID);
  const bool enough = entry != nullptr && entry->pixels >= pixels;
  if (!enough && item.requested < pixels) {
    item.requested = pixels;
    source_.request(path, image_UID, pixels);
  } else if (!enough) {
    source_.put_first(image_UID);
  }
  return entry == nullptr ? QPixmap() : entry->picture;
}

QPixmap ThumbnailCache::picture(const ImageData& data, const QString& image_UID) {
  if (const Entry* const entry = entries_.object(image_UID)) return entry->picture;
  QPixmap picture;
  if (!data || !picture.loadFromData(reinterpret_cast<const uchar*>(data->data()),
                                     static_cast<uint>(data->size()))) {
    return {};
  }
  insert(image_UID, picture, std::numeric_limits<int>::max());
  return picture;
}

void ThumbnailCache::insert(const QString& image_UID, const QPixmap& picture, int pixels) {
  const qsizetype bytes = qsizetype{picture.width()} * picture.height() * picture.depth() / 8;
  entries_.insert(image_UID, new Entry{picture, pixels}, bytes / 1024 + 1);
}

void ThumbnailCache::take(const QString& image_UID, const QImage& picture, int pixels) {
  const auto item = items_.find(image_UID);
  const bool gone = item == items_.end();
  if (gone || item->failed) return;
  // An answer to an earlier request leaves the larger one open.
  if (item->requested == pixels) item->requested = 0;
  const Entry* const entry = entries_.object(image_UID);
  if (entry != nullptr && entry->pixels >= pixels) return;
  if (picture.isNull()) {
    item->failed = true;
    entries_.remove(image_UID);
    if (mark_failed_) mark_failed_(to_text(image_UID));
  } else {
    insert(image_UID, QPixmap::fromImage(picture), pixels);
  }
  if (arrived_) arrived_(image_UID);
}

// Nothing is drawn for it: with no decoder to be had, the next request would come at once.
void ThumbnailCache::allow_another_request(const QString& image_UID, int pixels) {
  const auto item = items_.find(image_UID);
  if (item != items_.end() && item->requested == pixels) item->requested = 0;
}

void ThumbnailCache::take_judgement(const QString& image_UID, const PictureJudgement& judgement) {
  const auto item = items_.find(image_UID);
  if (item == items_.end()) return;
  item->judgement = judgement;
  if (arrived_) arrived_(image_UID);
}

void ThumbnailCache::forget(const QString& image_UID) {
  entries_.remove(image_UID);
  items_.remove(image_UID);
}

void ThumbnailCache::forget_all() {
  source_.cancel_all();
  entries_.clear();
  items_.clear();
}

}  // namespace norvo
