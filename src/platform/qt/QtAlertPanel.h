// Alerts as message boxes named "alert" before the active window, or before the program's window
// while another program has the keyboard. Main thread.
#pragma once

#include <QWidget>

#include "util/Alert.h"

namespace norvo {

class QtAlertPanel : public AlertPanel {
 public:
  // `title` is that of each box. `window` outlives the panel; it is null as long as the program has
  // no window.
  explicit QtAlertPanel(TextView title, QWidget* window = nullptr)
      : title_(title), window_(window) {}

  // The default button has the Return key; Escape and the close control answer as run() says.
  AlertAnswer run(const Alert& alert) override;

 private:
  Text title_;
  QWidget* window_;
};

}  // namespace norvo
