// Start and end of a sector range: for each a slider, its limits and a field. Main thread.
#pragma once

#include <QWidget>

#include "platform/qt/ControlTable.h"

namespace norvo {

class SectorRangePanel : public QWidget {
 public:
  SectorRangePanel(ControlTable& controls, SettingsPage page);

 private:
  // One end of the range, by the names of the photo page.
  struct End {
    Control box;
    Control minimum;
    Control minimum_value;
    Control maximum;
    Control maximum_value;
    Control current;
    Control field;
    Control slider;
    QString title;
    QString name;
    QString caption;
  };
  QWidget* make_end(ControlTable& controls, SettingsPage page, const End& end);
};

}  // namespace norvo
