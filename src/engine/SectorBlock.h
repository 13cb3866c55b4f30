// A block of consecutive sectors in memory, with a mark on each sector that may start a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/Device.h"
#include "engine/HeaderMatcher.h"

namespace norvo {

class SectorBlock {
 public:
  // Room for `sectors` sectors, aligned for direct reads.
  explicit SectorBlock(std::size_t sectors);

  std::byte* data() { return data_.get(); }
  const std::byte* data() const { return data_.get(); }
  std::size_t room() const { return room_; }
  std::span<std::byte> sector(std::size_t i) {
    return {data_.get() + i * sector_size, sector_size};
  }

  // Reads `sectors` sectors from device sector `start` on and marks the candidates among those
  // that came. Returns the bytes read, or -1, as the device does.
  std::int64_t fill(Device& device, std::uint64_t start, std::size_t sectors,
                    const HeaderMatcher& matcher);

  // Marks the candidates among the first `valid` sectors.
  void mark_candidates(const HeaderMatcher& matcher);

  // One bit a sector, sector 64 x w + b being bit b of word w: whether it is to be asked with
  // HeaderMatcher::match(). The others certainly start no file.
  std::span<const std::uint64_t> candidates() const { return candidates_; }

  std::uint64_t start = 0;  // device sector of the first one
  std::size_t valid = 0;    // whole sectors that were read

 private:
  struct FreeAligned {
    void operator()(std::byte* block) const;
  };

  std::size_t room_;
  std::unique_ptr<std::byte[], FreeAligned> data_;
  std::vector<std::uint64_t> candidates_;
};

}  // namespace norvo
