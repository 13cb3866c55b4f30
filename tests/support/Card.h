// A row of device sectors, drawn with one letter each:
//
//   J P G  begins with the header FFD8FFE0, 89504E47 or 47494638
//   a      holds data and no header
//   x      the same, and cannot be read
//   z      holds zeros
//
// All but zeros bear their number, so that recovered bytes tell which sectors they came from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "engine/Device.h"
#include "support/FakeDevice.h"

namespace norvo::test {

class Card {
 public:
  explicit Card(const std::string& drawing);

  std::size_t size() const { return sectors_.size(); }
  std::vector<std::byte>& sector(std::size_t number) { return sectors_.at(number); }

  // Puts the card on `medium` from sector `start` on. What lies before it, and `behind` sectors
  // after it, begin with a J header each, so that a search that strays is seen. The medium reads
  // the card, which outlives it.
  void put_on(FakeMedium& medium, std::uint64_t start, std::uint64_t behind) const;

  // The sectors of which `bytes` consist, as their numbers on this card, "z" for zeros and "?" for
  // anything else; for example "0 1 z 1".
  std::string describe(std::span<const std::byte> bytes) const;

 private:
  std::string name_of(std::span<const std::byte> sector) const;

  std::vector<std::vector<std::byte>> sectors_;
  std::vector<std::size_t> unreadable_;
};

}  // namespace norvo::test
