#include "engine/SectorReader.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstring>

namespace norvo {
namespace {

// A device that needs longer than this for 256 KiB (under 260 MB/s) is worth asking ahead; for a
// faster one, or for cached data, the extra call costs more than the waiting that it hides.
constexpr std::chrono::microseconds slow_block{1000};
constexpr std::size_t blocks_ahead = 4;
// How long one slow block counts: reading ahead makes the following blocks quick.
constexpr unsigned blocks_until_judged_again = 64;

}  // namespace

std::size_t SectorReader::Items::find_candidate(std::size_t from, std::size_t to) const {
  while (from < to) {
    const std::size_t bit = first_bit + from;
    const std::uint64_t word = candidates[bit / 64] >> (bit % 64);
    if (word != 0) return std::min(to, from + static_cast<std::size_t>(std::countr_zero(word)));
    from += 64 - bit % 64;
  }
  return to;
}

SectorReader::SectorReader(Device& device, const HeaderMatcher& matcher, std::size_t block_sectors)
    : device_(device), matcher_(matcher), own_block_(block_sectors) {
  last_item_ = buffer_.data();
}

bool SectorReader::position_at(std::uint64_t sector) {
  if (!device_.can_position(sector << sector_shift)) return false;
  position_ = sector;
  return true;
}

void SectorReader::read_with_helper(std::uint64_t end) {
  pipeline_.emplace(device_, matcher_, own_block_.room(), position_, end);
}

void SectorReader::stop() {
  if (pipeline_) pipeline_->stop();
}

SectorReader::Items SectorReader::read(std::uint64_t index, std::uint64_t most) {
  if (available() == 0) {
    keep_last_item();
    fill_block(most);
    if (available() == 0) return failed_item(index);
  }
  const auto first = static_cast<std::size_t>(position_ - block_->start);
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(available(), most));
  const std::byte* data = block_->data() + first * sector_size;
  const SectorOrigin origin{.kind = SectorOrigin::Kind::read, .sector = position_};
  position_ += count;
  last_sector_ = position_ - 1;
  last_item_ = data + (count - 1) * sector_size;
  return {.data = data,
          .count = count,
          .origin = origin,
          .candidates = block_->candidates(),
          .first_bit = first};
}

std::size_t SectorReader::available() const {
  const bool inside = position_ >= block_->start && position_ - block_->start < block_->valid;
  return inside ? block_->valid - static_cast<std::size_t>(position_ - block_->start) : 0;
}

void SectorReader::keep_last_item() {
  if (last_item_ == buffer_.data()) return;
  std::memcpy(buffer_.data(), last_item_, sector_size);
  last_item_ = buffer_.data();
}

void SectorReader::fill_block(std::uint64_t most) {
  if (pipeline_) {
    block_ = pipeline_->take();
    if (block_ != nullptr) return;
    // Something is wrong with the device here: from now on it is read by one thread, with care.
    pipeline_.reset();
  }
  block_ = &own_block_;
  partial_bytes_ = 0;
  const std::size_t room = own_block_.room();
  // Nothing beyond the range is read: there may be nothing, or something broken.
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(room, most));
  if (position_ < careful_until_) {
    read_one_sector();
    return;
  }
  if (ask_ahead_ > 0) {
    const std::size_t bytes = room * sector_size;
    device_.will_need((position_ << sector_shift) + bytes, blocks_ahead * bytes);
    --ask_ahead_;
  }
  const auto begin = std::chrono::steady_clock::now();
  const std::int64_t got = own_block_.fill(device_, position_, wanted, matcher_);
  if (std::chrono::steady_clock::now() - begin > slow_block) ask_ahead_ = blocks_until_judged_again;
  if (got < 0) {
    careful_until_ = position_ + wanted;
    read_one_sector();
  } else if (own_block_.valid == 0) {
    keep_partial_item(own_block_.data(), got);
  }
}

// One sector at a time, so that a stop need not wait for a whole block of slow attempts.
void SectorReader::read_one_sector() {
  own_block_.start = position_;
  const std::span item = own_block_.sector(0);
  const std::int64_t got = device_.read_sector(position_ << sector_shift, item);
  own_block_.valid = got == static_cast<std::int64_t>(sector_size) ? 1 : 0;
  if (own_block_.valid == 0) keep_partial_item(item.data(), got);
  own_block_.mark_candidates(matcher_);
}

void SectorReader::keep_partial_item(const std::byte* item, std::int64_t bytes) {
  partial_bytes_ = bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
  std::memcpy(partial_.data(), item, partial_bytes_);
}

SectorOrigin SectorReader::failed_origin() const {
  if (!last_sector_) return {};
  return {.kind = SectorOrigin::Kind::repeated, .sector = *last_sector_};
}

SectorReader::Items SectorReader::failed_item(std::uint64_t index) {
  std::memcpy(buffer_.data(), partial_.data(), partial_bytes_);
  if (partial_bytes_ != 0) last_sector_.reset();
  matcher_.mark_candidates(buffer_.data(), 1, std::span(&buffer_candidate_, 1));
  const bool positioned = position_at(index);
  return {.data = buffer_.data(),
          .count = 1,
          .origin = failed_origin(),
          .lost_position = !positioned,
          .candidates = std::span(&buffer_candidate_, 1),
          .first_bit = 0};
}

}  // namespace norvo
