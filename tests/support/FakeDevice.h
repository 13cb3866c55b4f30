// One stand-in for every kind of bad drive: unreadable sectors, short, pulled in the middle,
// sparse.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

#include "engine/Device.h"

namespace norvo::test {

// What the drive is like. Sector numbers are device sectors.
struct FakeMedium {
  std::vector<std::uint8_t> bytes;
  // When set, the drive has this many sectors made by `sector`, and `bytes` is not used.
  std::uint64_t made_sectors = 0;
  std::function<void(std::uint64_t number, std::span<std::byte> sector)> sector;

  std::set<std::uint64_t> unreadable;
  // One unreadable sector makes a whole block read fail, instead of shortening it.
  bool blocks_fail_whole = false;
  // Positioning beyond the last byte fails, as on a block device.
  bool position_past_end_fails = false;
  // Positioning at the start of these sectors fails.
  std::set<std::uint64_t> positions_refused;
  // The drive is pulled by the first read at this sector or a later one, for good.
  std::optional<std::uint64_t> gone_after_sector;
  int open_error = 0;  // errno; 0: it opens
  // The most bytes that one read brings. With 512, a read never touches a later sector than the
  // one that is wanted: for drives on which reading itself changes something.
  std::size_t largest_read = static_cast<std::size_t>(-1);

  bool gone = false;
  std::uint64_t opened = 0;       // how often
  std::uint64_t block_reads = 0;  // calls
  std::uint64_t sector_reads = 0;
};

// Two threads may read it at once.
class FakeDevice final : public Device {
 public:
  explicit FakeDevice(FakeMedium& medium) : medium_(medium) {}

  std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) override;
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override;
  bool can_position(std::uint64_t offset) override;
  void will_need(std::uint64_t /*offset*/, std::size_t /*length*/) override {}

 private:
  std::uint64_t size() const;
  void pull_when_reading(std::uint64_t offset);
  std::int64_t read(std::uint64_t offset, std::span<std::byte> target);
  void copy(std::uint64_t offset, std::span<std::byte> target) const;

  std::mutex reading_;
  FakeMedium& medium_;
};

// Opens the medium whatever the path.
class FakeOpener final : public DeviceOpener {
 public:
  explicit FakeOpener(FakeMedium& medium) : medium_(medium) {}
  OpenedDevice open(const std::filesystem::path& path) override;

 private:
  FakeMedium& medium_;
};

}  // namespace norvo::test
