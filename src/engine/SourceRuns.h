// What a file consists of, in the order of its bytes: runs of sectors of one origin each. Sectors
// that continue the last run lengthen it, so a file that lies in one piece is one run.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/Sectors.h"

namespace norvo {

struct SourceRun {
  SectorOrigin origin;
  std::uint64_t sectors = 0;

  bool operator==(const SourceRun&) const = default;
};

class SourceRuns {
 public:
  void add(const SectorOrigin& origin, std::uint64_t sectors);
  void clear() { runs_.clear(); }
  const std::vector<SourceRun>& all() const { return runs_; }

 private:
  std::vector<SourceRun> runs_;
};

}  // namespace norvo
