// The picture of the selected file, or a quiet line while there is none. Main thread.
#pragma once

#include <QLabel>

namespace norvo {

class PreviewPicture : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace norvo
