// How far a search is, and the button that stops it; both kinds of search show it. Main thread.
#pragma once

#include <QWidget>

#include "platform/qt/ControlTable.h"

namespace norvo {

class ProgressPanel : public QWidget {
 public:
  explicit ProgressPanel(ControlTable& controls);
};

}  // namespace norvo
