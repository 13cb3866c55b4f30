// The gallery and the file window as the person works with them. Both show the one list of items.
// Main thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "results/Gallery.h"
#include "results/PreviewPane.h"
#include "wizard/Desktop.h"
#include "wizard/MessageBoxes.h"
#include "wizard/WizardState.h"
#include "wizard/WizardView.h"

namespace norvo {

// When a preview is shown and a stop was asked for meanwhile (`stop_now` is 1), the final screen is
// due after this time; otherwise never.
std::optional<std::chrono::milliseconds> final_screen_delay(std::int32_t stop_now);

class ResultViews {
 public:
  // What is referred to outlives the views. `noprevfile` is the placeholder picture, the path of
  // the items that have no picture of their own.
  ResultViews(WizardView& view, WizardState& state, Desktop& desktop, MessageBoxes& boxes,
              Gallery& gallery, PreviewPane& preview, std::filesystem::path noprevfile)
      : view_(view),
        state_(state),
        desktop_(desktop),
        boxes_(boxes),
        gallery_(gallery),
        preview_(preview),
        noprevfile_(std::move(noprevfile)) {}

  // Items were removed from the list, or moved in it. The files stay.
  void removeItemsAtIndexes(Control browser, const std::vector<std::size_t>& indexes);
  void moveItemsAtIndexes(Control browser, const std::vector<std::size_t>& indexes,
                          std::size_t toIndex);

  // Opens the item's file in the person's own viewer, or says that there is none for it; not the
  // placeholder.
  void cellWasDoubleClickedAtIndex(Control browser, std::size_t index);

  // Previews the selected item of the file window unless it was the last one previewed.
  void imageBrowserSelectionDidChange();

  // The gallery's zoom follows its slider.
  void zoomSliderDidChange();

 private:
  WizardView& view_;
  WizardState& state_;
  Desktop& desktop_;
  MessageBoxes& boxes_;
  Gallery& gallery_;
  PreviewPane& preview_;
  std::filesystem::path noprevfile_;
};

}  // namespace norvo
