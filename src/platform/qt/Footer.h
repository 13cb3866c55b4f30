// The bottom of the window: the guidance for the step and the buttons that move between steps.
// Main thread.
#pragma once

#include <QWidget>

#include "platform/qt/ControlTable.h"

namespace norvo {

class Footer : public QWidget {
 public:
  explicit Footer(ControlTable& controls);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace norvo
