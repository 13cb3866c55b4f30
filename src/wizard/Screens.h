// The screens of the wizard as groups of controls that are shown and hidden together. Main thread.
#pragma once

#include "results/PreviewPane.h"
#include "wizard/EditionPresentation.h"
#include "wizard/WizardState.h"
#include "wizard/WizardView.h"

namespace norvo {

// The flag of the operations: whether a screen is hidden or shown.
enum class Screen { show, hide };

class Screens {
 public:
  // What is referred to outlives the screens.
  Screens(WizardView& view, const WizardState& state, const EditionPresentation& edition,
          PreviewPane& preview)
      : view_(view), state_(state), edition_(edition), preview_(preview) {}

  // Drives and search type. Hiding it puts the search type into the window's title; showing it
  // takes it out. Choices that the edition does not have stay hidden.
  void show_hide_1_screen(Screen flag);

  // The settings page of the current search type.
  void show_hide_2_screen(Screen flag);

  // The photo scan with its gallery. Next and Back are disabled while it is shown.
  void show_hide_3_screen_Photo(Screen flag);

  // The check list of file types.
  void show_hide_3_screen_RawFile(Screen flag);

  // The scan of the other types. Next and Back are disabled while it is shown. Its preview ends
  // with it.
  void show_hide_4_screen_RawFile(Screen flag);

  // Both buttons that open the results folder.
  void hide_open_folder_buttons();

 private:
  template <typename Group>
  void set_hidden(const Group& controls, bool hidden);
  void show_settings(SettingsPage page);
  void enable_navigation(bool enabled);

  WizardView& view_;
  const WizardState& state_;
  const EditionPresentation& edition_;
  PreviewPane& preview_;
};

// The controls of a settings page that belong to one of its two choices.
void show_disk_information(WizardView& view, SettingsPage page, bool shown);
void show_range_controls(WizardView& view, SettingsPage page, bool shown);

}  // namespace norvo
