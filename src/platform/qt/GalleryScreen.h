// The found photos. Main thread.
#pragma once

#include <QWidget>
#include <functional>

#include "platform/qt/ControlTable.h"
#include "platform/qt/ResultView.h"
#include "platform/qt/ThumbnailCache.h"
#include "results/Gallery.h"

namespace norvo {

class GalleryScreen : public QWidget {
 public:
  // `gallery` and `thumbnails` outlive the screen; `mark_failed` as of ThumbnailCache.
  GalleryScreen(ControlTable& controls, const Gallery& gallery, ThumbnailSource& thumbnails,
                std::function<void(TextView image_UID)> mark_failed);

  ResultView& view() const { return *view_; }

 private:
  ThumbnailCache pictures_;
  ResultView* view_;
};

}  // namespace norvo
