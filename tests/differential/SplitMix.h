// A small generator of random numbers whose results are the same with every library.
#pragma once

#include <cstdint>
#include <vector>

namespace differential {

class SplitMix {
 public:
  explicit SplitMix(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  // From `low` to `high`, both included.
  std::uint64_t between(std::uint64_t low, std::uint64_t high) {
    return low + next() % (high - low + 1);
  }

  bool percent(unsigned chance) { return next() % 100 < chance; }

  template <typename Item>
  const Item& one_of(const std::vector<Item>& items) {
    return items[static_cast<std::size_t>(next() % items.size())];
  }

 private:
  std::uint64_t state_;
};

}  // namespace differential
