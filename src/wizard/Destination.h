// The destination folder: choosing it, opening the results in it, and the quiet line that warns
// about it. Main thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "wizard/Desktop.h"
#include "wizard/EditionPresentation.h"
#include "wizard/MessageBoxes.h"
#include "wizard/Notices.h"
#include "wizard/WizardState.h"
#include "wizard/WizardView.h"

namespace norvo {

// What is known about a folder as a destination.
class DestinationFacts {
 public:
  virtual ~DestinationFacts() = default;

  // Whether the folder lies on the drive with this identifier; false when that cannot be told.
  virtual bool lies_on_drive(const std::filesystem::path& folder, TextView disk_identifier) = 0;

  // Bytes that can still be written there; nothing when that cannot be told.
  virtual std::optional<std::uint64_t> free_space(const std::filesystem::path& folder) = 0;

  // Bytes of all files that the last search has found so far, if it was one of the drive with this
  // identifier; else 0.
  virtual std::uint64_t found_so_far(TextView disk_identifier) = 0;
};

// What the line under the destination says; empty when there is nothing to warn about.
Text destination_hint_text(bool lies_on_drive, std::optional<std::uint64_t> free_space,
                           std::uint64_t found_so_far);

class Destination {
 public:
  // What is referred to outlives the destination.
  struct Setting {
    WizardView& view;
    const WizardState& state;
    Notices& notices;
    Desktop& desktop;
    MessageBoxes& boxes;
    DestinationFacts& facts;
    const EditionPresentation& edition;
  };
  explicit Destination(const Setting& setting) : setting_(setting) {}

  // The browse buttons: says what to choose, asks, and puts the chosen folder into both pages.
  void Browse_Path();

  // The open-folder buttons: opens the search's results, or says that they do not exist or that
  // nothing could be started for them.
  void Open_Folder_btn();

  // Shows the line under the destination of `page`, or hides it.
  void show_hint(SettingsPage page);

  // The folder with the results of the current search type.
  std::filesystem::path results_folder() const;

  // The folder in the path field of `page`; empty without one.
  std::filesystem::path folder(SettingsPage page) const;

 private:
  Setting setting_;
  // What was chosen last. Its name need not be UTF-8, and the field shows a text.
  std::filesystem::path chosen_;
};

}  // namespace norvo
