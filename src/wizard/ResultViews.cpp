#include "wizard/ResultViews.h"

#include "wizard/OpenOrTell.h"

namespace norvo {

std::optional<std::chrono::milliseconds> final_screen_delay(std::int32_t stop_now) {
  constexpr std::chrono::milliseconds delay{1000};
  if (stop_now != 1) return std::nullopt;
  return delay;
}

void ResultViews::removeItemsAtIndexes(Control browser, const std::vector<std::size_t>& indexes) {
  gallery_.removeItemsAtIndexes(indexes);
  view_.reload(browser);
}

void ResultViews::moveItemsAtIndexes(Control browser, const std::vector<std::size_t>& indexes,
                                     std::size_t toIndex) {
  gallery_.moveItemsAtIndexes(indexes, toIndex);
  view_.reload(browser);
}

void ResultViews::cellWasDoubleClickedAtIndex(Control browser, std::size_t index) {
  const std::optional<MyImageObject> item = gallery_.item(index);
  if (!item) return;
  if (browser == Control::imageBrowser && item->path == noprevfile_) return;
  open_or_tell(desktop_, boxes_, item->path);
}

void ResultViews::imageBrowserSelectionDidChange() {
  const std::optional<std::size_t> selected = view_.selected_row(Control::imageBrowser_2);
  if (!selected || *selected == state_.Prev_Index) return;
  state_.Prev_Index = *selected;
  preview_.clear();
  const std::optional<MyImageObject> item = gallery_.item(*selected);
  if (!item) return;
  view_.set_text(Control::QuickLook_View_Box,
                 displayable(text_from_utf8_lossy(item->path.filename().native())));
  preview_.CreateFile_QuickLook_Preview(item->path);
}

void ResultViews::zoomSliderDidChange() {
  view_.set_value(Control::imageBrowser, view_.value(Control::zoom_slider));
}

}  // namespace norvo
