// The checks of a typed sector range. Any thread.
#pragma once

#include <optional>

#include "util/Text.h"

namespace norvo {

// Whether every character is one of the digits 0 to 9; an empty text passes.
bool Check_For_Valid_Sec(TextView text);

// What is wrong with a range and which field the keyboard focus goes to.
struct SectorRangeFault {
  enum class Field { start, end };
  Text message;
  Field field;

  bool operator==(const SectorRangeFault&) const = default;
};

// The first fault of the range `start` to `end` (exclusive) on a drive whose sector count reads
// `sectors_val`, or nullopt for a range that can be searched. Such a range is never empty.
std::optional<SectorRangeFault> check_sector_range(TextView start, TextView end,
                                                   TextView sectors_val);

}  // namespace norvo
