// The wizard: which screen the person is on, what Next and Back check and do, and how a search is
// started. Main thread.
#pragma once

#include "results/Gallery.h"
#include "results/PreviewPane.h"
#include "sigdb/FileTypeCheckList.h"
#include "sigdb/SignatureTables.h"
#include "wizard/Destination.h"
#include "wizard/DriveScreen.h"
#include "wizard/EditionPresentation.h"
#include "wizard/MessageBoxes.h"
#include "wizard/Screens.h"
#include "wizard/SearchHost.h"
#include "wizard/SectorRangeControls.h"
#include "wizard/WizardState.h"
#include "wizard/WizardView.h"

namespace norvo {

class Wizard {
 public:
  // What is referred to outlives the wizard.
  struct Setting {
    WizardView& view;
    WizardState& state;
    const EditionPresentation& edition;
    MessageBoxes& boxes;
    SearchHost& host;
    DriveList& drives;
    DriveScreen& drive_screen;
    SectorRangeControls& range;
    Destination& destination;
    FileTypeCheckList& check_list;
    const SignatureTables& tables;
    Gallery& gallery;
    PreviewPane& preview;
  };
  explicit Wizard(const Setting& setting)
      : setting_(setting),
        screens_(setting.view, setting.state, setting.edition, setting.preview) {}

  // Builds the drive list and shows the first screen. Once, before anything else.
  void set_up();

  void Next_btn();
  void Back_btn();

  // The check list: the select-all box, and a box of one row.
  void Select_Unselect_Check_btn();
  void tick(std::size_t row, bool on);

  // The search that was just started cannot begin before an earlier one has ended.
  void show_waiting_search();

  Screens& screens() { return screens_; }

 private:
  void leave_drives();
  void show_drive(SettingsPage page, const MyDataObject& drive);
  bool settings_are_valid(SettingsPage page);
  void leave_settings();
  void show_check_list();
  void leave_check_list();
  void start_search();

  void back_to_drives();
  void back_to_settings();
  void back_to_check_list();
  void clear_drive_labels(SettingsPage page);

  Setting setting_;
  Screens screens_;
};

}  // namespace norvo
