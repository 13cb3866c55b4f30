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
#include <optional>
#include <span>

#include "engine/BlockPipeline.h"
#include "engine/Device.h"
#include "engine/HeaderMatcher.h"
#include "engine/SectorBlock.h"
#include "engine/Sectors.h"

namespace norvo {

class SectorReader {
 public:
  static constexpr std::size_t default_block_sectors = 512;

  // One or more consecutive items. Valid until the next call of read().
  struct Items {
    const std::byte* data = nullptr;
    std::size_t count = 0;
    SectorOrigin origin{};
    // The device could neither be read nor positioned again; count is then 1.
    bool lost_position = false;

    // `most` items from the one at index `from` on.
    Sectors sectors(std::size_t from, std::size_t most) const {
      return Sectors{.data = data, .count = count, .origin = origin}.part(from, most);
    }

    // The first item at or after `from` and before `to` that may start a record, or `to`.
    std::size_t find_candidate(std::size_t from, std::size_t to) const;

    // One bit an item, that of item i being bit `first_bit` + i.
    std::span<const std::uint64_t> candidates{};
    std::size_t first_bit = 0;
  };

  // `matcher` outlives the reader.
  SectorReader(Device& device, const HeaderMatcher& matcher,
               std::size_t block_sectors = default_block_sectors);

  // Positions the device at `sector`. When that fails the position stays where it is.
  // Returns whether it succeeded.
  bool position_at(std::uint64_t sector);

  // From now on a second thread helps reading the device, from its position up to sector `end`, as
  // long as nothing goes wrong.
  void read_with_helper(std::uint64_t end);

  // Returns when nobody reads the device any more, so that it can be closed. The items handed out
  // last stay valid; no more can be read.
  void stop();

  // The items for the indices from `index` on, at least one and at most `most` (which is not 0).
  // An item that could not be read is handed out alone, as the buffer then is.
  Items read(std::uint64_t index, std::uint64_t most);

 private:
  std::size_t available() const;
  void keep_last_item();
  void fill_block(std::uint64_t most);
  void read_one_sector();
  void keep_partial_item(const std::byte* item, std::int64_t bytes);
  SectorOrigin failed_origin() const;
  Items failed_item(std::uint64_t index);

  Device& device_;
  const HeaderMatcher& matcher_;
  SectorBlock own_block_;
  std::optional<BlockPipeline> pipeline_;  // until the first block that is not read completely
  const SectorBlock* block_ = &own_block_;
  std::uint64_t position_ = 0;       // device sector that the next read takes
  std::uint64_t careful_until_ = 0;  // device sectors below this are read one by one
  unsigned ask_ahead_ = 0;           // blocks for which a slow device is asked ahead
  const std::byte* last_item_ = nullptr;
  // The device sector whose bytes the last item holds; none before the first one is read, and after
  // a part of one.
  std::optional<std::uint64_t> last_sector_;
  alignas(
      64) std::array<std::byte, sector_size> buffer_{};  // the last item, once its block is gone
  std::uint64_t buffer_candidate_ = 0;
  std::array<std::byte, sector_size> partial_{};  // what a read past the end left
  std::size_t partial_bytes_ = 0;
};

}  // namespace norvo
