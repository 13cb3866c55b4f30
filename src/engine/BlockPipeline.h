// Blocks read and searched for candidates ahead of the scan, by a helper thread and by the scan
// itself while it would have to wait.
//
// Copying from the system's cache is most of a scan's work, and which record a sector starts
// depends on that sector alone; so two threads, each reading and searching blocks of its own, are
// nearly twice as quick as one, while handing full buffers from a reading thread to a searching
// one is slower than doing both in one. On a slow device the helper reads on while the scan writes.
// When the system gives the helper no processor for a while, the scan reads the block that it waits
// for itself.
//
// Made, used and destroyed by the scan's thread. The device must allow read_block() from two
// threads at once.
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <thread>

#include "engine/Device.h"
#include "engine/HeaderMatcher.h"
#include "engine/SectorBlock.h"

namespace norvo {

class BlockPipeline {
 public:
  // Blocks of `block_sectors` from device sector `start` up to `end`; the last one may be shorter.
  BlockPipeline(Device& device, const HeaderMatcher& matcher, std::size_t block_sectors,
                std::uint64_t start, std::uint64_t end);
  BlockPipeline(const BlockPipeline&) = delete;
  BlockPipeline& operator=(const BlockPipeline&) = delete;
  ~BlockPipeline();

  // The next block, valid until the next call, or null when it could not be read completely or the
  // end is reached. Nothing can be taken after that.
  const SectorBlock* take();

  // Returns when nobody reads the device any more. Nothing can be taken after that, but the block
  // taken last stays valid.
  void stop();

 private:
  static constexpr std::size_t slots = 4;
  // overtaken: somebody still fills it, but the scan did not wait.
  enum class SlotState { free, filling, overtaken, complete, incomplete };
  struct Slot {
    SectorBlock block;
    SlotState state = SlotState::free;
  };

  void help();
  bool all_claimed() const { return first_of(claimed_) >= end_; }
  bool can_claim() const;
  void fill_next(std::unique_lock<std::mutex>& lock);
  const SectorBlock* overtake(std::unique_lock<std::mutex>& lock);
  std::chrono::nanoseconds patience() const;
  Slot& slot(std::uint64_t number) { return slots_[number % slots]; }
  std::uint64_t first_of(std::uint64_t number) const { return start_ + number * block_sectors_; }
  std::size_t sectors_of(std::uint64_t number) const;

  Device& device_;
  const HeaderMatcher& matcher_;
  const std::size_t block_sectors_;
  const std::uint64_t start_;
  const std::uint64_t end_;

  std::mutex mutex_;  // guards what follows; a slot's block belongs to whoever fills or took it
  std::condition_variable changed_;
  std::array<Slot, slots> slots_;
  std::uint64_t claimed_ = 0;   // blocks whose filling has begun
  std::uint64_t taken_ = 0;     // blocks handed out
  Slot* taken_slot_ = nullptr;  // the one whose block was handed out last
  std::chrono::nanoseconds last_fill_{0};
  bool ending_ = false;
  SectorBlock spare_;  // the scan's own, for blocks that it overtakes
  std::thread helper_;
};

}  // namespace norvo
