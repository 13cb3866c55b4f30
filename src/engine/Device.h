// The searched device, as the engine sees it: bytes at offsets, read-only.
//
// A Device belongs to the scan pass that opened it. read_block() may be called by two threads at
// once, and while it runs nothing else is called; otherwise one thread at a time uses it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace norvo {

// Sector: the unit of all device reading and of all recovered data.
inline constexpr std::size_t sector_size = 512;
inline constexpr unsigned sector_shift = 9;

class Device {
 public:
  virtual ~Device() = default;

  // Reads into `block` from byte `offset` on. Returns the bytes read, fewer than asked before the
  // end or before an unreadable place, 0 at the end, or -1 when nothing could be read.
  virtual std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) = 0;

  // Reads one sector with as little around it as the system allows, so that an unreadable
  // neighbour does not take it along. Returns as read_block.
  virtual std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) = 0;

  // Whether the device can be positioned at `offset`. A device that shrank or went away cannot be
  // positioned beyond its end.
  virtual bool can_position(std::uint64_t offset) = 0;

  // A hint that these bytes are read next; returns at once.
  virtual void will_need(std::uint64_t offset, std::size_t length) = 0;
};

struct OpenedDevice {
  std::unique_ptr<Device> device;  // null when opening failed
  int error = 0;                   // errno of the failure
};

class DeviceOpener {
 public:
  virtual ~DeviceOpener() = default;

  // Opens the raw node at `path` for reading only. Called by the worker at the start of each pass.
  virtual OpenedDevice open(const std::filesystem::path& path) = 0;
};

}  // namespace norvo
