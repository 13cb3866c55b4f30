// The texts and controls that belong to a search type. Any thread.
#pragma once

#include <array>
#include <cstdint>

#include "util/Text.h"
#include "wizard/Controls.h"

namespace norvo {

struct SearchType {
  Control radio;
  TextView title_suffix;   // of the window's title
  TextView label;          // on the settings page
  TextView result_folder;  // below the results folder
};

inline constexpr std::array<SearchType, 4> search_types{{
    {Control::rec_mode_Photo, u"Photo Search", u"Search Type : Recover Photo", u"Photo Search"},
    {Control::rec_mode_Video, u"Video Search", u"Search Type : Recover Video", u"Video Search"},
    {Control::rec_mode_RawFile, u"File Search", u"Search Type : Recover Raw File", u"File Search"},
    {Control::rec_mode_Audio, u"Audio File Search", u"Search Type : Audio File",
     u"Audio File Search"},
}};

// The search type of Recovery_MODE 0 to 3.
inline const SearchType& search_type(std::int32_t Recovery_MODE) {
  return search_types.at(static_cast<std::size_t>(Recovery_MODE));
}

// The settings page that serves the search type.
inline SettingsPage settings_page(std::int32_t Recovery_MODE) {
  return Recovery_MODE == 0 ? SettingsPage::photo : SettingsPage::signature;
}

}  // namespace norvo
