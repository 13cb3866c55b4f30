// Where the person is in the wizard and what was chosen. Main thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>

#include "util/Text.h"

namespace norvo {

struct WizardState {
  // Search type: 0 photo, 1 video, 2 raw file, 3 audio.
  std::int32_t Recovery_MODE = 0;

  // The step: 0 drives, 1 settings, 2 file types or the photo scan, 3 the scan of the other types.
  std::int32_t screen_counter = 0;

  // The item of the file window that was selected last.
  static constexpr auto no_previous_selection =
      static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  std::uint64_t Prev_Index = no_previous_selection;
};

// What the wizard has settled when it starts a search.
struct SearchSettings {
  std::int32_t Recovery_MODE = 0;
  Text disk_identifier;
  Text sectors_val;  // decimal
  bool entire_disk = true;
  bool sector_range = false;
  Text start_slider_val;  // decimal
  Text end_slider_val;    // decimal, exclusive
  bool thorough = true;
  std::filesystem::path destination;

  bool operator==(const SearchSettings&) const = default;
};

}  // namespace norvo
