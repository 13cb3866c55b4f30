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
      helper_([this] { help(); }) {}

BlockPipeline::~BlockPipeline() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  changed_.notify_all();
  helper_.join();
}

const SectorBlock* BlockPipeline::take() {
  std::unique_lock lock(mutex_);
  if (taken_ > 0) {
    slot(taken_ - 1).state = SlotState::free;
    changed_.notify_all();
  }
  while (true) {
    if (claimed_ > taken_) {
      Slot& next = slot(taken_);
      if (next.state == SlotState::complete) {
        ++taken_;
        return &next.block;
      }
      if (next.state == SlotState::incomplete) break;
    }
    if (can_claim()) {
      fill_next(lock);
    } else if (claimed_ == taken_) {
      break;
    } else {
      changed_.wait(lock);
    }
  }
  ending_ = true;
  return nullptr;
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
  return !ending_ && start_ + claimed_ * block_sectors_ < end_ &&
         slots_[claimed_ % slots].state == SlotState::free;
}

void BlockPipeline::fill_next(std::unique_lock<std::mutex>& lock) {
  Slot& mine = slot(claimed_);
  const std::uint64_t first = start_ + claimed_ * block_sectors_;
  const auto sectors =
      static_cast<std::size_t>(std::min<std::uint64_t>(block_sectors_, end_ - first));
  ++claimed_;
  mine.state = SlotState::filling;
  lock.unlock();
  mine.block.fill(device_, first, sectors, matcher_);
  lock.lock();
  mine.state = mine.block.valid == sectors ? SlotState::complete : SlotState::incomplete;
  changed_.notify_all();
}

}  // namespace norvo
