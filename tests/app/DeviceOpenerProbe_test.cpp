#include "app/DeviceOpenerProbe.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace norvo {
namespace {

class CountedDevice final : public Device {
 public:
  explicit CountedDevice(int& open_devices) : open_devices_(open_devices) { ++open_devices_; }
  ~CountedDevice() override { --open_devices_; }
  std::int64_t read_block(std::uint64_t /*offset*/, std::span<std::byte> /*block*/) override {
    ADD_FAILURE() << "the probe reads nothing";
    return -1;
  }
  std::int64_t read_sector(std::uint64_t offset, std::span<std::byte> sector) override {
    return read_block(offset, sector);
  }
  bool can_position(std::uint64_t /*offset*/) override { return false; }
  void will_need(std::uint64_t /*offset*/, std::size_t /*length*/) override {}

 private:
  int& open_devices_;
};

class CountingOpener final : public DeviceOpener {
 public:
  OpenedDevice open(const std::filesystem::path& path) override {
    ++opened;
    last = path;
    if (error != 0) return {.device = nullptr, .error = error};
    return {.device = std::make_unique<CountedDevice>(open_devices)};
  }
  int error = 0;
  int opened = 0;
  int open_devices = 0;
  std::filesystem::path last;
};

TEST(DeviceOpenerProbe, ADeviceThatOpensIsClosedAtOnce) {
  CountingOpener opener;
  DeviceOpenerProbe probe(opener);
  EXPECT_EQ(probe.open_and_close("/dev/sdb1"), 0);
  EXPECT_EQ(opener.opened, 1);
  EXPECT_EQ(opener.last, "/dev/sdb1");
  EXPECT_EQ(opener.open_devices, 0);
}

TEST(DeviceOpenerProbe, AFailureIsItsErrorNumber) {
  CountingOpener opener;
  opener.error = EACCES;
  EXPECT_EQ(DeviceOpenerProbe(opener).open_and_close("/dev/sdb1"), EACCES);
}

}  // namespace
}  // namespace norvo
