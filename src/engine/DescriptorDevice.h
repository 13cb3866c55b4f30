// A device or disk image behind a POSIX file descriptor.
#pragma once

#include <cstdint>
#include <span>
#include <utility>

#include "engine/Device.h"
#include "util/UniqueFd.h"

namespace norvo {

// The base of every system's device: plain positioned reads. A system overrides read_sector and
// will_need with what it does better.
class DescriptorDevice : public Device {
 public:
  // `fd` is open for reading.
  explicit DescriptorDevice(UniqueFd fd) : fd_(std::move(fd)) {}

  std::int64_t read_block(std::uint64_t offset, std::span<std::byte> block) override;
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override;
  bool can_position(std::uint64_t offset) override;
  void will_need(std::uint64_t offset, std::size_t length) override;

 protected:
  int fd() const { return fd_.get(); }

 private:
  UniqueFd fd_;
};

}  // namespace norvo
