#include "PlainDevice.h"

#include <algorithm>
#include <limits>

namespace plain {

std::uint64_t DeviceStream::size() const {
  return drive_.gone ? 0 : drive_.device.bytes.size();
}

bool DeviceStream::position_at(std::uint64_t offset) {
  // File offsets are signed, and no stream goes below its first byte.
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return false;
  }
  if (drive_.device.seek_past_end_fails && offset > size()) {
    return false;
  }
  position_ = offset;
  return true;
}

bool DeviceStream::read(Sector& buffer) {
  const std::uint64_t sector = position_ / buffer.size();
  if (drive_.device.gone_after_sector && sector >= *drive_.device.gone_after_sector) {
    drive_.gone = true;
  }
  if (drive_.gone || drive_.device.unreadable.contains(sector) || position_ >= size()) {
    return false;
  }
  const std::uint64_t count = std::min<std::uint64_t>(buffer.size(), size() - position_);
  const auto from = drive_.device.bytes.begin() + static_cast<std::ptrdiff_t>(position_);
  std::copy_n(from, static_cast<std::ptrdiff_t>(count), buffer.begin());
  position_ += count;
  return count == buffer.size();
}

}  // namespace plain
