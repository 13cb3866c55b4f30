// The settings page of photo searches or that of all others. Main thread.
#pragma once

#include <QScrollArea>

#include "platform/qt/ControlTable.h"

namespace norvo {

class SettingsScreen : public QScrollArea {
 public:
  // The controls carry the suffix of `page`; the choice of a thorough search is on the photo page
  // only. Its containers are entered in `controls`.
  SettingsScreen(ControlTable& controls, SettingsPage page);

 private:
  QWidget* make_criteria(ControlTable& controls);
  QWidget* make_drive(ControlTable& controls);
  QWidget* make_destination(ControlTable& controls);
  QWidget* make_thorough(ControlTable& controls);
  Control named(Control control) const { return on_page(control, page_); }

  SettingsPage page_;
};

}  // namespace norvo
