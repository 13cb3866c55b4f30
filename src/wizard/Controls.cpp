#include "wizard/Controls.h"

#include <array>

namespace norvo {
namespace {

constexpr std::array<std::string_view, control_count> names{
#define NORVO_UNDERSCORED_NAME(name) "_" #name,
#define NORVO_PLAIN_NAME(name) #name,
    NORVO_UNDERSCORED_CONTROLS(NORVO_UNDERSCORED_NAME) NORVO_PLAIN_CONTROLS(NORVO_PLAIN_NAME)
#undef NORVO_UNDERSCORED_NAME
#undef NORVO_PLAIN_NAME
};

constexpr int index_of(Control control) {
  return static_cast<int>(control);
}

// Both pages list the same controls in the same order.
constexpr int page_size = index_of(Control::Disk_Info_Box_Sig) - index_of(Control::Disk_Info_Box);
static_assert(index_of(Control::destination_hint_Sig) - index_of(Control::destination_hint) ==
              page_size);

}  // namespace

std::string_view control_name(Control control) {
  return names.at(static_cast<std::size_t>(control));
}

Control on_page(Control photo_control, SettingsPage page) {
  if (page == SettingsPage::photo) return photo_control;
  return static_cast<Control>(index_of(photo_control) + page_size);
}

}  // namespace norvo
