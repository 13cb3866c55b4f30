// The guidance of the help line, step by step, and what a sector range is. Line breaks, typographic
// quotes and trailing blanks belong to the texts.
#pragma once

#include "util/Text.h"

namespace norvo::guidance {

inline constexpr TextView drives =
    u"\nSelect the storage media from List from which you want to recover Data. Press "
    u"\u2018Next\u2019 button to continue... ";

inline constexpr TextView entire_disk =
    u"If \u2018Entire Disk\u2019 option is selected, Norvo Recovery searches lost data in the "
    u"entire storage of selected disk. If you want to perform within a specific sector range or in "
    u"specific partition, please select other searching criteria. Else press \u2018Next\u2019 "
    u"button to start searching data in Entire disk.";

inline constexpr TextView sector_range =
    u"\u2018Sector Range\u2019 option provides facility to specify the range of start and end "
    u"sector of storage media within which you want to perform searching for lost data. Please "
    u"drag knob of Slider to enter sector range or you can also enter these values in Start Sector "
    u"and End Sector fields manually.";

// What the range choice says of itself, and of drives with sectors that no slider reaches.
inline constexpr TextView about_range =
    u"Only the sectors from the start up to, not including, the end are searched. A sector is 512 "
    u"bytes.";
inline constexpr TextView about_far_sectors =
    u" Sectors beyond 2147483647 can only be typed: there the sliders write 2147483647.";

inline constexpr TextView file_types =
    u"\nPlease select the required extension type for recovery process. Press \u2018Next\u2019 "
    u"button to continue... ";

inline constexpr TextView waiting_search =
    u"\nThe previous search still waits for an answer of its drive. This search begins by itself "
    u"as "
    u"soon as that drive has answered or is unplugged.";

}  // namespace norvo::guidance
