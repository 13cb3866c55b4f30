// The pictures that were made lately, and the requests for those that are not there yet. Main
// thread.
#pragma once

#include <QCache>
#include <QHash>
#include <QPixmap>
#include <QSet>
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
  // is requested.
  QPixmap picture(const std::filesystem::path& path, const QString& image_UID, int pixels);

  // The picture of an item that is shown from data, which the program itself has encoded. Null when
  // there is none in it.
  QPixmap picture(const ImageData& data, const QString& image_UID);

  bool failed(const QString& image_UID) const { return failed_.contains(image_UID); }

  // Unknown until it has come.
  PictureJudgement judgement(const QString& image_UID) const {
    return judgements_.value(image_UID);
  }

  // The item is gone, and its identifier may come again for another file.
  void forget(const QString& image_UID);
  void forget_all();

 private:
  struct Entry {
    QPixmap picture;
    int pixels;
  };

  void insert(const QString& image_UID, const QPixmap& picture, int pixels);
  void take(const QString& image_UID, const QImage& picture);
  void take_judgement(const QString& image_UID, const PictureJudgement& judgement);

  ThumbnailSource& source_;
  std::function<void(TextView)> mark_failed_;
  std::function<void(const QString&)> arrived_;
  QCache<QString, Entry> entries_;
  QHash<QString, int> requested_;
  QSet<QString> failed_;
  QHash<QString, PictureJudgement> judgements_;
};

}  // namespace norvo
