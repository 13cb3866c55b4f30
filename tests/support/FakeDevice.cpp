#include "support/FakeDevice.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace norvo::test {

std::uint64_t FakeDevice::size() const {
  if (medium_.gone) return 0;
  return medium_.sector ? medium_.made_sectors * sector_size : medium_.bytes.size();
}

std::int64_t FakeDevice::read_block(std::uint64_t offset, std::span<std::byte> block) {
  const std::lock_guard lock(reading_);
  ++medium_.block_reads;
  block = block.first(std::min(block.size(), medium_.largest_read));
  pull_when_reading(offset);
  const std::uint64_t first = offset / sector_size;
  const std::uint64_t sectors = block.size() / sector_size;
  std::uint64_t readable = sectors;
  const auto bad = medium_.unreadable.lower_bound(first);
  if (bad != medium_.unreadable.end()) readable = std::min(readable, *bad - first);
  if (medium_.blocks_fail_whole && readable < sectors) return -1;
  if (medium_.gone_after_sector && *medium_.gone_after_sector > first) {
    readable = std::min(readable, *medium_.gone_after_sector - first);
  }
  if (readable == 0) return -1;
  return read(offset, block.first(static_cast<std::size_t>(readable) * sector_size));
}

std::int64_t FakeDevice::read_sector(std::uint64_t offset, std::span<std::byte> sector) {
  const std::lock_guard lock(reading_);
  ++medium_.sector_reads;
  pull_when_reading(offset);
  if (medium_.unreadable.contains(offset / sector_size)) return -1;
  return read(offset, sector);
}

bool FakeDevice::can_position(std::uint64_t offset) {
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return false;
  if (medium_.positions_refused.contains(offset / sector_size)) return false;
  return !medium_.position_past_end_fails || offset <= size();
}

void FakeDevice::pull_when_reading(std::uint64_t offset) {
  const auto& last = medium_.gone_after_sector;
  if (last && offset / sector_size >= *last) medium_.gone = true;
}

std::int64_t FakeDevice::read(std::uint64_t offset, std::span<std::byte> target) {
  if (medium_.gone) return -1;
  if (offset >= size()) return 0;
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(target.size(), size() - offset));
  copy(offset, target.first(count));
  return static_cast<std::int64_t>(count);
}

void FakeDevice::copy(std::uint64_t offset, std::span<std::byte> target) const {
  if (!medium_.sector) {
    std::memcpy(target.data(), medium_.bytes.data() + offset, target.size());
    return;
  }
  for (std::size_t at = 0; at < target.size(); at += sector_size) {
    const std::span item = target.subspan(at, sector_size);
    std::memset(item.data(), 0, sector_size);
    medium_.sector((offset + at) / sector_size, item);
  }
}

OpenedDevice FakeOpener::open(const std::filesystem::path& /*path*/) {
  if (medium_.open_error != 0) return {.device = nullptr, .error = medium_.open_error};
  ++medium_.opened;
  return {.device = std::make_unique<FakeDevice>(medium_)};
}

}  // namespace norvo::test
