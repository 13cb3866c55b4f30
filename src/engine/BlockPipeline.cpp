#include "engine/BlockPipeline.h"

#include <algorithm>

namespace norvo {

BlockPipeline::BlockPipeline(Device& device, const HeaderMatcher& matcher,
                             std::size_t block_sectors, std::uint64_t start, std::uint64_t end)
    : device_(device),
      matcher_(matcher),
      block_sectors_(block_sectors),
      start_(start),
      end_(end),
      slots_{{{SectorBlock(block_sectors)},
              {SectorBlock(block_sectors)},
              {SectorBlock(block_sectors)},
              {SectorBlock(block_sectors)}}},
      spare_(block_sectors),
      helper_([this] { help(); }) {
}

BlockPipeline::~BlockPipeline() {
  stop();
}

void BlockPipeline::stop() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  if (helper_.joinable()) helper_.join();
}

const SectorBlock* BlockPipeline::take() {
  std::unique_lock lock(mutex_);
  if (taken_slot_ != nullptr) {
    taken_slot_->state = SlotState::free;
    taken_slot_ = nullptr;
    changed_.notify_all();
  }
  while (!ending_) {
    Slot& next = slot(taken_);
    const bool claimed = claimed_ > taken_;
    if (claimed && next.state == SlotState::complete) {
      ++taken_;
      taken_slot_ = &next;
      return &next.block;
    }
    if (claimed ? next.state == SlotState::incomplete : all_claimed()) {
      ending_ = true;
    } else if (can_claim()) {
      fill_next(lock);
    } else if (!claimed) {
      // An overtaken block is still being filled in the next one's place.
      ++claimed_;
      return overtake(lock);
    } else if (!changed_.wait_for(lock, patience(),
                                  [&next] { return next.state != SlotState::filling; })) {
      next.state = SlotState::overtaken;
      return overtake(lock);
    }
  }
  return nullptr;
}

// Reads the next block on the scan's own account.
const SectorBlock* BlockPipeline::overtake(std::unique_lock<std::mutex>& lock) {
  const std::uint64_t number = taken_++;
  lock.unlock();
  spare_.fill(device_, first_of(number), sectors_of(number), matcher_);
  if (spare_.valid == sectors_of(number)) return &spare_;
  lock.lock();
  ending_ = true;
  return nullptr;
}

// A block that takes several times as long as the last one is held up by something other than the
// device.
std::chrono::nanoseconds BlockPipeline::patience() const {
  constexpr std::chrono::nanoseconds shortest = std::chrono::microseconds(200);
  return std::max(4 * last_fill_, shortest);
}

void BlockPipeline::help() {
  std::unique_lock lock(mutex_);
  while (!ending_) {
    if (can_claim()) {
      fill_next(lock);
    } else {
      changed_.wait(lock);
    }
  }
}

bool BlockPipeline::can_claim() const {
  return !ending_ && !all_claimed() && slots_[claimed_ % slots].state == SlotState::free;
}

std::size_t BlockPipeline::sectors_of(std::uint64_t number) const {
  return static_cast<std::size_t>(std::min<std::uint64_t>(block_sectors_, end_ - first_of(number)));
}

void BlockPipeline::fill_next(std::unique_lock<std::mutex>& lock) {
  const std::uint64_t number = claimed_++;
  Slot& mine = slot(number);
  mine.state = SlotState::filling;
  lock.unlock();
  const auto begin = std::chrono::steady_clock::now();
  mine.block.fill(device_, first_of(number), sectors_of(number), matcher_);
  const auto duration = std::chrono::steady_clock::now() - begin;
  lock.lock();
  last_fill_ = duration;
  if (mine.state == SlotState::overtaken) {
    mine.state = SlotState::free;
  } else {
    const bool complete = mine.block.valid == sectors_of(number);
    mine.state = complete ? SlotState::complete : SlotState::incomplete;
  }
  changed_.notify_all();
}

}  // namespace norvo
