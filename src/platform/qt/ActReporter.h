// Tells WizardEvents what the person does with the window's buttons, sliders and text fields, by
// signals that a set value never sends. What a screen reader does for the person is the person's
// act. Main thread.
#pragma once

#include "platform/qt/ControlTable.h"
#include "wizard/WizardEvents.h"

namespace norvo {

// Reports from now on for all controls of `table` to what `events` points to at that time; nullptr
// is told nothing. `events` must live as long as the widgets.
void report_acts(const ControlTable& table, WizardEvents* const& events);

}  // namespace norvo
