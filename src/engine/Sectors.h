// Consecutive sectors in memory, and where on the device their bytes came from.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/Device.h"

namespace norvo {

struct SectorOrigin {
  enum class Kind : std::uint8_t {
    read,      // device sector `sector`, and one further for each further sector
    repeated,  // could not be read; each sector holds what device sector `sector` holds
    unknown,   // could not be read; what they hold is nowhere on the device in one piece
  };

  Kind kind = Kind::unknown;
  std::uint64_t sector = 0;

  bool operator==(const SectorOrigin&) const = default;

  // The origin of the sector that lies `sectors` further on.
  SectorOrigin after(std::uint64_t sectors) const {
    return {.kind = kind, .sector = kind == Kind::read ? sector + sectors : sector};
  }
};

// Whoever hands these out says how long the memory stays as it is.
struct Sectors {
  const std::byte* data = nullptr;
  std::size_t count = 0;
  SectorOrigin origin;

  // `most` of them from the one at index `from` on.
  Sectors part(std::size_t from, std::size_t most) const {
    return {.data = data + from * sector_size, .count = most, .origin = origin.after(from)};
  }
};

}  // namespace norvo
