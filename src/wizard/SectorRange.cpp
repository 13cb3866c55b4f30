#include "wizard/SectorRange.h"

#include <algorithm>

#include "util/Numbers.h"

namespace norvo {
namespace {

// The numbers are compared as floating-point numbers, as the fields are: beyond 2 to the 53rd
// neighbouring numbers are equal.
bool is_valid_sector(TextView text, TextView sectors_val) {
  return !text.empty() && Check_For_Valid_Sec(text) && text.size() <= sectors_val.size() &&
         floating_value(text) <= floating_value(sectors_val);
}

}  // namespace

bool Check_For_Valid_Sec(TextView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

std::optional<SectorRangeFault> check_sector_range(TextView start, TextView end,
                                                   TextView sectors_val) {
  using Field = SectorRangeFault::Field;
  if (!is_valid_sector(start, sectors_val)) {
    return SectorRangeFault{u"Please enter valid Start Sector value.", Field::start};
  }
  if (!is_valid_sector(end, sectors_val)) {
    return SectorRangeFault{u"Please enter valid End Sector value.", Field::end};
  }
  if (integer64_value(end) <= integer64_value(start)) {
    return SectorRangeFault{u"End Sector should be greater than Start Sector.", Field::end};
  }
  return std::nullopt;
}

}  // namespace norvo
