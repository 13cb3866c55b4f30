// The found photos. Main thread.
#pragma once

#include <QWidget>
#include <functional>

#include "platform/qt/ControlTable.h"
#include "platform/qt/ResultNote.h"
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

  // A search begins, or has ended.
  void follow_search(bool running) { note_->follow_search(running); }

 private:
  ThumbnailCache pictures_;
  ResultView* view_;
  ResultNote* note_;  // belongs to the view
};

}  // namespace norvo
