// Alerts as message boxes named "alert" before the active window. Main thread.
#pragma once

#include "util/Alert.h"

namespace norvo {

class QtAlertPanel : public AlertPanel {
 public:
  // The default button has the Return key; Escape and the close control answer as run() says.
  AlertAnswer run(const Alert& alert) override;
};

}  // namespace norvo
