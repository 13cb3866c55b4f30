// A modal question or notice, as the engines and the wizard ask for it. How it looks is decided by
// whoever implements AlertPanel: the window shows a dialog, a test answers from a list.
#pragma once

#include "util/Text.h"

namespace norvo {

// The button that closed an alert.
enum class AlertAnswer { default_button, alternate_button, other_button };

// An empty button text means that the alert has no such button.
struct Alert {
  Text message;
  Text default_button;
  Text alternate_button;
  Text other_button;
  Text informative_text;

  bool operator==(const Alert&) const = default;
};

class AlertPanel {
 public:
  virtual ~AlertPanel() = default;

  // Shows `alert` and returns when the person has closed it. Main thread only. Closing it by any
  // other means than a button answers like the button that changes nothing (other, if there is
  // one, else the default).
  virtual AlertAnswer run(const Alert& alert) = 0;
};

// A notice with the one button "OK" and no informative text. Returns the button that closed it.
AlertAnswer show_msg(AlertPanel& panel, TextView message);

}  // namespace norvo
