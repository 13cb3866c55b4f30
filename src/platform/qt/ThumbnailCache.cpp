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
  connect(&source, &ThumbnailSource::judged, this, &ThumbnailCache::take_judgement);
}

void ThumbnailCache::on_arrival(std::function<void(const QString&)> arrived) {
  arrived_ = std::move(arrived);
}

QPixmap ThumbnailCache::picture(const std::filesystem::path& path, const QString& image_UID,
                                int pixels) {
  if (failed(image_UID)) return {};
  const Entry* const entry = entries_.object(image_UID);
  const bool enough = entry != nullptr && entry->pixels >= pixels;
  if (!enough && requested_.value(image_UID) < pixels) {
    requested_.insert(image_UID, pixels);
    source_.request(path, image_UID, pixels);
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

void ThumbnailCache::take(const QString& image_UID, const QImage& picture) {
  const auto request = requested_.constFind(image_UID);
  // A picture for an item that is gone.
  if (request == requested_.constEnd()) return;
  const int pixels = *request;
  requested_.erase(request);
  if (picture.isNull()) {
    failed_.insert(image_UID);
    if (mark_failed_) mark_failed_(to_text(image_UID));
  } else {
    insert(image_UID, QPixmap::fromImage(picture), pixels);
  }
  if (arrived_) arrived_(image_UID);
}

void ThumbnailCache::take_judgement(const QString& image_UID, const PictureJudgement& judgement) {
  judgements_.insert(image_UID, judgement);
  if (arrived_) arrived_(image_UID);
}

void ThumbnailCache::forget(const QString& image_UID) {
  entries_.remove(image_UID);
  requested_.remove(image_UID);
  failed_.remove(image_UID);
  judgements_.remove(image_UID);
}

void ThumbnailCache::forget_all() {
  source_.cancel_all();
  entries_.clear();
  requested_.clear();
  failed_.clear();
  judgements_.clear();
}

}  // namespace norvo
