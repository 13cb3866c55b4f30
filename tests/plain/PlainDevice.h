// Reading and positioning the stand-in drive as a stream does.
#pragma once

#include <array>
#include <cstdint>

#include "PlainSearch.h"

namespace plain {

using Sector = std::array<std::uint8_t, 512>;

// The drive itself, which stays gone however often it is opened.
struct Drive {
  const Device& device;
  bool gone = false;
};

class DeviceStream {
 public:
  explicit DeviceStream(Drive& drive) : drive_(drive) {}

  // False when the position is refused; it then stays where it was.
  bool position_at(std::uint64_t offset);

  // True when a whole sector was read. Otherwise `buffer` holds what it held, but for the bytes of
  // an incomplete last sector.
  bool read(Sector& buffer);

 private:
  std::uint64_t size() const;

  Drive& drive_;
  std::uint64_t position_ = 0;
};

}  // namespace plain
