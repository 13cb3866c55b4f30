#include "engine/SectorBlock.h"

#include <cstdlib>
#include <new>

namespace norvo {
namespace {

// Direct reads want buffers aligned to the device's blocks.
constexpr std::size_t block_alignment = 4096;

std::byte* allocate(std::size_t bytes) {
  const std::size_t whole = (bytes + block_alignment - 1) / block_alignment * block_alignment;
  void* block = std::aligned_alloc(block_alignment, whole);
  if (block == nullptr) throw std::bad_alloc();
  return static_cast<std::byte*>(block);
}

}  // namespace

void SectorBlock::FreeAligned::operator()(std::byte* block) const {
  std::free(block);
}

SectorBlock::SectorBlock(std::size_t sectors)
    : room_(sectors), data_(allocate(sectors * sector_size)), candidates_((sectors + 63) / 64) {
}

std::int64_t SectorBlock::fill(Device& device, std::uint64_t first, std::size_t sectors,
                               const HeaderMatcher& matcher) {
  start = first;
  const std::span wanted(data_.get(), sectors * sector_size);
  const std::int64_t got = device.read_block(first << sector_shift, wanted);
  valid = got < 0 ? 0 : static_cast<std::size_t>(got) / sector_size;
  mark_candidates(matcher);
  return got;
}

void SectorBlock::mark_candidates(const HeaderMatcher& matcher) {
  matcher.mark_candidates(data_.get(), valid, candidates_);
}

}  // namespace norvo
