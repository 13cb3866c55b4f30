// The device as a sequence of 512-byte items, with the rule for items that cannot be read.
//
// The device has a position of its own, apart from the index of the sector that the scan asks for.
// A sector that is read moves it one sector on. A sector that cannot be read changes nothing in the
// sector buffer and positions the device at the index just asked for; from then on the device is
// one sector behind the index. At the end of a device that is shorter than it said, the bytes that
// exist are copied into the buffer.
//
// Underneath, blocks of 256 KiB are read (they stay in the processor's second-level cache while
// they are searched). A block that cannot be read is read again sector by sector.
//
// Owned and used by one scan pass, on the worker thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "engine/Device.h"

namespace norvo {

class SectorReader {
 public:
  static constexpr std::size_t default_block_sectors = 512;

  // One or more consecutive items. Valid until the next call of read().
  struct Items {
    const std::byte* data = nullptr;
    std::size_t count = 0;
    // The device could neither be read nor positioned again; count is then 1.
    bool lost_position = false;
  };

  explicit SectorReader(Device& device, std::size_t block_sectors = default_block_sectors);

  // Positions the device at `sector`. When that fails the position stays where it is.
  // Returns whether it succeeded.
  bool position_at(std::uint64_t sector);

  // The items for the indices from `index` on, at least one and at most `most` (which is not 0).
  // An item that could not be read is handed out alone, as the buffer then is.
  Items read(std::uint64_t index, std::uint64_t most);

 private:
  struct FreeAligned {
    void operator()(std::byte* block) const;
  };

  std::size_t available() const;
  void keep_last_item();
  void fill_block();
  void fill_sector_by_sector(std::size_t wanted);
  Items failed_item(std::uint64_t index);

  Device& device_;
  std::size_t block_sectors_;
  std::unique_ptr<std::byte[], FreeAligned> block_;
  std::uint64_t block_start_ = 0;    // device sector of the block's first item
  std::size_t block_valid_ = 0;      // whole sectors in the block
  std::uint64_t position_ = 0;       // device sector that the next read takes
  std::uint64_t careful_until_ = 0;  // device sectors below this are read one by one
  unsigned ask_ahead_ = 0;           // blocks for which a slow device is asked ahead
  const std::byte* last_item_ = nullptr;
  alignas(64) std::array<std::byte, sector_size> buffer_{};  // the last item, once its block is gone
  std::array<std::byte, sector_size> partial_{};             // what a read past the end left
  std::size_t partial_bytes_ = 0;
};

}  // namespace norvo
