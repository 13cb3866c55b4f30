#include "engine/SectorReader.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>

namespace norvo {
namespace {

// Direct reads want buffers aligned to the device's blocks.
constexpr std::size_t block_alignment = 4096;

// A device that needs longer than this for 256 KiB (under 260 MB/s) is worth asking ahead; for a
// faster one, or for cached data, the extra call costs more than the waiting that it hides.
constexpr std::chrono::microseconds slow_block{1000};
constexpr std::size_t blocks_ahead = 4;
// How long one slow block counts: reading ahead makes the following blocks quick.
constexpr unsigned blocks_until_judged_again = 64;

std::byte* allocate_block(std::size_t bytes) {
  void* block = std::aligned_alloc(block_alignment, bytes);
  if (block == nullptr) throw std::bad_alloc();
  return static_cast<std::byte*>(block);
}

}  // namespace

void SectorReader::FreeAligned::operator()(std::byte* block) const { std::free(block); }

SectorReader::SectorReader(Device& device, std::size_t block_sectors)
    : device_(device), block_sectors_(block_sectors) {
  const std::size_t bytes = block_sectors_ * sector_size;
  block_.reset(allocate_block((bytes + block_alignment - 1) / block_alignment * block_alignment));
  last_item_ = buffer_.data();
}

bool SectorReader::position_at(std::uint64_t sector) {
  if (!device_.can_position(sector << sector_shift)) return false;
  position_ = sector;
  return true;
}

SectorReader::Items SectorReader::read(std::uint64_t index, std::uint64_t most) {
  if (available() == 0) {
    keep_last_item();
    fill_block();
    if (available() == 0) return failed_item(index);
  }
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(available(), most));
  const std::byte* data = block_.get() + (position_ - block_start_) * sector_size;
  position_ += count;
  last_item_ = data + (count - 1) * sector_size;
  return {.data = data, .count = count};
}

std::size_t SectorReader::available() const {
  const bool inside = position_ >= block_start_ && position_ - block_start_ < block_valid_;
  return inside ? block_valid_ - static_cast<std::size_t>(position_ - block_start_) : 0;
}

void SectorReader::keep_last_item() {
  if (last_item_ == buffer_.data()) return;
  std::memcpy(buffer_.data(), last_item_, sector_size);
  last_item_ = buffer_.data();
}

void SectorReader::fill_block() {
  block_start_ = position_;
  block_valid_ = 0;
  partial_bytes_ = 0;
  if (position_ < careful_until_) {
    const std::uint64_t rest = careful_until_ - position_;
    fill_sector_by_sector(static_cast<std::size_t>(std::min<std::uint64_t>(rest, block_sectors_)));
    return;
  }
  const std::size_t bytes = block_sectors_ * sector_size;
  const std::uint64_t offset = position_ << sector_shift;
  if (ask_ahead_ > 0) {
    device_.will_need(offset + bytes, blocks_ahead * bytes);
    --ask_ahead_;
  }
  const auto begin = std::chrono::steady_clock::now();
  const std::int64_t got = device_.read_block(offset, std::span(block_.get(), bytes));
  if (std::chrono::steady_clock::now() - begin > slow_block) ask_ahead_ = blocks_until_judged_again;
  if (got < 0) {
    careful_until_ = position_ + block_sectors_;
    fill_sector_by_sector(block_sectors_);
    return;
  }
  block_valid_ = static_cast<std::size_t>(got) / sector_size;
  if (block_valid_ == 0) {
    partial_bytes_ = static_cast<std::size_t>(got);
    std::memcpy(partial_.data(), block_.get(), partial_bytes_);
  }
}

void SectorReader::fill_sector_by_sector(std::size_t wanted) {
  while (block_valid_ < wanted) {
    const std::span item(block_.get() + block_valid_ * sector_size, sector_size);
    const std::uint64_t sector = block_start_ + block_valid_;
    const std::int64_t got = device_.read_sector(sector << sector_shift, item);
    if (got == static_cast<std::int64_t>(sector_size)) {
      ++block_valid_;
      continue;
    }
    if (block_valid_ == 0 && got > 0) {
      partial_bytes_ = static_cast<std::size_t>(got);
      std::memcpy(partial_.data(), item.data(), partial_bytes_);
    }
    return;
  }
}

SectorReader::Items SectorReader::failed_item(std::uint64_t index) {
  std::memcpy(buffer_.data(), partial_.data(), partial_bytes_);
  const bool positioned = position_at(index);
  return {.data = buffer_.data(), .count = 1, .lost_position = !positioned};
}

}  // namespace norvo
