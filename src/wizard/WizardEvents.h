// What the person does in the window. Main thread; nothing fails.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "wizard/Controls.h"

namespace norvo {

class WizardEvents {
 public:
  virtual ~WizardEvents() = default;

  // A button was clicked, or a radio or check box clicked or toggled, which shows its new state
  // already.
  virtual void clicked(Control control) = 0;

  // A slider was moved, or a text field edited, by the person. Not told for what the wizard sets.
  virtual void changed(Control control) = 0;

  // A box in the check list was ticked or not.
  virtual void ticked(std::size_t row, bool on) = 0;

  // Result views: an item was double-clicked, another one selected, some removed, or some moved to
  // before the item at `destination` (counted in the list as it was).
  virtual void double_clicked(Control view, std::size_t index) = 0;
  virtual void selection_changed(Control view) = 0;
  virtual void removed(Control view, const std::vector<std::size_t>& indexes) = 0;
  virtual void moved(Control view, const std::vector<std::size_t>& indexes,
                     std::size_t destination) = 0;

  // A disk image was chosen or dropped on the drive list.
  virtual void disk_image_chosen(const std::filesystem::path& image) = 0;

  // The window's close control. The window stays; the wizard ends the program or does not.
  virtual void windowShouldClose() = 0;
};

}  // namespace norvo
