// The pictures that were made lately, the requests for those that are not there yet, and what is
// known of each item that was ever asked for. Main thread.
#pragma once

#include <QCache>
#include <QHash>
#include <QPixmap>
#include <functional>

#include "platform/qt/ThumbnailSource.h"
#include "results/MyImageObject.h"
#include "util/Text.h"

namespace norvo {

class ThumbnailCache : public QObject {
 public:
  // `source` outlives the cache. `mark_failed` hears once of each item that cannot be shown.
  ThumbnailCache(ThumbnailSource& source, std::function<void(TextView image_UID)> mark_failed);

  // Called when the picture of an item has come, or will never come.
  void on_arrival(std::function<void(const QString& image_UID)> arrived);

  // The picture if there is one, perhaps a smaller one for now; else a null one. What is missing
  // is requested, and comes before what was requested earlier: it is looked at.
  QPixmap picture(const std::filesystem::path& path, const QString& image_UID, int pixels);

  // The picture of an item that is shown from data, which the program itself has encoded. Null when
  // there is none in it.
  QPixmap picture(const ImageData& data, const QString& image_UID);

  bool failed(const QString& image_UID) const { return items_.value(image_UID).failed; }

  // Unknown until it has come.
  PictureJudgement judgement(const QString& image_UID) const {
    return items_.value(image_UID).judgement;
  }

  // The item is gone: what comes for it is dropped. Its identifier must not come again for another
  // file until all are forgotten.
  void forget(const QString& image_UID);
  // All items are gone, and nobody works on their pictures any more.
  void forget_all();

 private:
  struct Entry {
    QPixmap picture;
    int pixels;  // that were asked for; a small photo has less
  };

  // Outlives the item's picture, which leaves the cache when others need the room.
  struct Item {
    int requested = 0;  // the largest size that is asked for and not there yet; else 0
    bool failed = false;
    PictureJudgement judgement = {};
  };

  void insert(const QString& image_UID, const QPixmap& picture, int pixels);
  void take(const QString& image_UID, const QImage& picture, int pixels);
  void allow_another_request(const QString& image_UID, int pixels);
  void take_judgement(const QString& image_UID, const PictureJudgement& judgement);

  ThumbnailSource& source_;
  std::function<void(TextView)> mark_failed_;
  std::function<void(const QString&)> arrived_;
  QCache<QString, Entry> entries_;
  QHash<QString, Item> items_;
};

}  // namespace norvo
