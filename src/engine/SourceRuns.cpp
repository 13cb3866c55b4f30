#include "engine/SourceRuns.h"

namespace norvo {

void SourceRuns::add(const SectorOrigin& origin, std::uint64_t sectors) {
  if (!runs_.empty() && runs_.back().origin.after(runs_.back().sectors) == origin) {
    runs_.back().sectors += sectors;
    return;
  }
  runs_.push_back({.origin = origin, .sectors = sectors});
}

}  // namespace norvo
