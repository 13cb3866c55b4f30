// The choice between the whole drive and a range of sectors, and how the sliders and the typed
// numbers follow each other. Each settings page has its own controls. Main thread.
#pragma once

#include "wizard/WizardView.h"

namespace norvo {

class SectorRangeControls {
 public:
  explicit SectorRangeControls(WizardView& view) : view_(view) {}

  // The whole drive is chosen; the range stays as it was and is ignored.
  void Entire_Disk_Radio(SettingsPage page);

  // A range is chosen: it is reset to 0 and the drive's sector count, and explained.
  void Sector_Range_Radio(SettingsPage page);

  // Sets the range to 0 and `sectors_val`, limits and limit labels too.
  void reset_range(SettingsPage page, TextView sectors_val);

  // A slider was moved: its value becomes its field's text. Beyond 2,147,483,647 the text sticks
  // there; larger sectors are typed.
  void DO_Start_slider(SettingsPage page);
  void DO_End_slider(SettingsPage page);

  // A text field was edited: its slider follows up to the drive's sector count.
  void controlTextDidChange(Control field);

  // The guidance for the choice that is on; nothing when both or none are.
  void show_guidance(SettingsPage page);

 private:
  void slider_to_text(Control slider, Control field, SettingsPage page);

  WizardView& view_;
};

}  // namespace norvo
