// The window as the wizard knows it: operations on named controls, without a toolkit.
//
// Main thread only. No operation fails: one that makes no sense for a control (a range for a label)
// does nothing. None of them calls back into the wizard.
#pragma once

#include <cstddef>
#include <optional>

#include "util/Text.h"
#include "wizard/Controls.h"

namespace norvo {

class WizardView {
 public:
  virtual ~WizardView() = default;

  // Labels, fields, boxes (their caption) and buttons (their title).
  virtual void set_text(Control control, TextView text) = 0;
  virtual Text text(Control control) const = 0;

  virtual void set_hidden(Control control, bool hidden) = 0;
  virtual void set_enabled(Control control, bool enabled) = 0;

  // Radios and check boxes.
  virtual void set_on(Control control, bool on) = 0;
  virtual bool is_on(Control control) const = 0;

  // Sliders and the progress bar. A value outside the range is moved to its nearer end. An empty
  // optional makes the progress bar indeterminate.
  virtual void set_range(Control control, double minimum, double maximum) = 0;
  virtual void set_value(Control control, std::optional<double> value) = 0;
  virtual double value(Control control) const = 0;

  // Gives a control the keyboard focus.
  virtual void focus(Control control) = 0;

  // Tables and result views: what they show is read anew; optionally the last item is shown.
  virtual void reload(Control control, bool scroll_to_last = false) = 0;
  virtual std::optional<std::size_t> selected_row(Control table) const = 0;

  // Selects a row of a table for the person and shows it. Nothing for a row that does not exist.
  virtual void select_row(Control table, std::size_t row) = 0;

  // The main window's title.
  virtual void set_title(TextView title) = 0;
};

}  // namespace norvo
