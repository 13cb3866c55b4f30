#include "platform/decoder/PixelReceiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "util/DescriptorPair.h"

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Progress = PixelReceiver::Progress;

// Messages of two bytes, the first of which counts the pixels that follow; 0xFF is no count.
class PixelReceiverTest : public testing::Test {
 protected:
  void send(std::span<const std::uint8_t> bytes) const {
    ASSERT_EQ(::send(sockets_.first.get(), bytes.data(), bytes.size(), 0),
              static_cast<ssize_t>(bytes.size()));
  }
  void send_message(std::uint8_t count) const { send(std::array<std::uint8_t, 2>{count, 7}); }
  void send_pixels(const std::vector<std::uint32_t>& pixels) const {
    const auto bytes = std::as_bytes(std::span(pixels));
    send({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  }
  void close() { static_cast<void>(sockets_.first.close()); }

  Progress receive() {
    return receiver_.receive(
        sockets_.second.get(),
        [this](std::span<const std::byte> message) -> std::optional<std::size_t> {
          ++messages_;
          EXPECT_THAT(message, testing::SizeIs(2));
          EXPECT_EQ(message[1], std::byte{7});
          if (message[0] == std::byte{0xFF}) return std::nullopt;
          return std::to_integer<std::size_t>(message[0]);
        });
  }

  DescriptorPair sockets_ = make_socket_pair();
  PixelReceiver receiver_{2};
  int messages_ = 0;
};

TEST_F(PixelReceiverTest, WaitsForWhatIsNotThereYet) {
  EXPECT_EQ(receive(), Progress::waiting);
  send(std::array<std::uint8_t, 1>{2});
  EXPECT_EQ(receive(), Progress::waiting);
  EXPECT_EQ(messages_, 0);
  send(std::array<std::uint8_t, 1>{7});
  EXPECT_EQ(receive(), Progress::waiting);
  EXPECT_EQ(messages_, 1);
  send_pixels({0x11223344});
  EXPECT_EQ(receive(), Progress::waiting);
  send_pixels({0x55667788});
  EXPECT_EQ(receive(), Progress::complete);
  EXPECT_THAT(receiver_.pixels(), ElementsAre(0x11223344U, 0x55667788U));
  EXPECT_EQ(messages_, 1) << "a message is asked about once";
}

TEST_F(PixelReceiverTest, AMessageWithoutPixelsIsCompleteAtOnce) {
  send_message(0);
  EXPECT_EQ(receive(), Progress::complete);
  EXPECT_THAT(receiver_.pixels(), IsEmpty());
}

TEST_F(PixelReceiverTest, TakesNothingOfTheNextMessageBeforeItIsAskedTo) {
  send_message(1);
  send_pixels({1});
  send_message(1);
  send_pixels({2});
  EXPECT_EQ(receive(), Progress::complete);
  EXPECT_EQ(receive(), Progress::complete);
  EXPECT_THAT(receiver_.pixels(), ElementsAre(1U));
  receiver_.start_anew();
  EXPECT_THAT(receiver_.pixels(), IsEmpty());
  EXPECT_EQ(receive(), Progress::complete);
  EXPECT_THAT(receiver_.pixels(), ElementsAre(2U));
}

TEST_F(PixelReceiverTest, MakesNoRoomForARefusedMessage) {
  send_message(0xFF);
  EXPECT_EQ(receive(), Progress::refused);
  EXPECT_THAT(receiver_.pixels(), IsEmpty());
}

TEST_F(PixelReceiverTest, SeesThatTheOtherEndIsGone) {
  send_message(2);
  send_pixels({1});
  close();
  EXPECT_EQ(receive(), Progress::ended);
}

}  // namespace
}  // namespace norvo
