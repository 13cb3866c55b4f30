// Alerts as message boxes named "alert" before the active window. Main thread.
#pragma once

#include "util/Alert.h"

namespace norvo {

class QtAlertPanel : public AlertPanel {
 public:
  // `title` is that of each box.
  explicit QtAlertPanel(TextView title) : title_(title) {}

  // The default button has the Return key; Escape and the close control answer as run() says.
  AlertAnswer run(const Alert& alert) override;

 private:
  Text title_;
};

}  // namespace norvo
