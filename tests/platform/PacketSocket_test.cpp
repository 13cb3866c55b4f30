#include "platform/linux/PacketSocket.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>

namespace norvo {
namespace {

class PacketSocket : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(sockets_.first);
    ASSERT_TRUE(sockets_.second);
  }

  Packet receive(std::size_t longest = 100) const {
    return receive_packet(sockets_.second.get(), longest);
  }
  bool send(std::string_view bytes, int fd = -1) const {
    return send_packet(sockets_.first.get(), bytes, fd);
  }

  SocketPair sockets_ = make_packet_sockets();
};

bool is_same_file(int a, int b) {
  struct stat first {};
  struct stat second {};
  return fstat(a, &first) == 0 && fstat(b, &second) == 0 && first.st_ino == second.st_ino &&
         first.st_dev == second.st_dev;
}

std::ptrdiff_t open_descriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

TEST_F(PacketSocket, KeepsPacketsApart) {
  ASSERT_TRUE(send("first"));
  ASSERT_TRUE(send(std::string_view("\0second", 7)));
  EXPECT_EQ(receive().bytes, "first");
  const Packet second = receive();
  EXPECT_EQ(second.bytes, std::string("\0second", 7));
  EXPECT_FALSE(second.ended);
  EXPECT_FALSE(second.fd);
}

TEST_F(PacketSocket, IsNotPassedOnToOtherPrograms) {
  for (const UniqueFd* end : {&sockets_.first, &sockets_.second}) {
    EXPECT_NE(fcntl(end->get(), F_GETFD) & FD_CLOEXEC, 0);
  }
}

TEST_F(PacketSocket, BringsACopyOfADescriptor) {
  const UniqueFd file(open("/proc/self/status", O_RDONLY | O_CLOEXEC));
  ASSERT_TRUE(send("with a file", file.get()));
  const Packet packet = receive();
  EXPECT_EQ(packet.bytes, "with a file");
  ASSERT_TRUE(packet.fd);
  EXPECT_NE(packet.fd.get(), file.get());
  EXPECT_TRUE(is_same_file(packet.fd.get(), file.get()));
  EXPECT_NE(fcntl(packet.fd.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(PacketSocket, ShowsThatAPacketWasTooLong) {
  ASSERT_TRUE(send("0123456789"));
  EXPECT_EQ(receive(10).bytes, "0123456789");
  ASSERT_TRUE(send("0123456789abc"));
  EXPECT_EQ(receive(10).bytes, "0123456789a");
  ASSERT_TRUE(send("next"));
  EXPECT_EQ(receive(10).bytes, "next");
}

TEST_F(PacketSocket, SaysThatTheOtherEndIsGone) {
  ASSERT_TRUE(send("last"));
  ASSERT_TRUE(sockets_.first.close());
  EXPECT_EQ(receive().bytes, "last");
  EXPECT_TRUE(receive().ended);
  EXPECT_FALSE(send_packet(sockets_.second.get(), "to nobody"));
}

TEST_F(PacketSocket, KeepsTheFirstOfSeveralDescriptorsAndClosesTheRest) {
  const UniqueFd file(open("/proc/self/status", O_RDONLY | O_CLOEXEC));
  constexpr std::size_t count = 8;
  std::array<int, count> fds{};
  fds.fill(file.get());
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof fds)> room{};
  char byte = 'x';
  iovec part{.iov_base = &byte, .iov_len = 1};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = room.data();
  message.msg_controllen = room.size();
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof fds);
  std::memcpy(CMSG_DATA(header), fds.data(), sizeof fds);
  const std::ptrdiff_t before = open_descriptors();
  ASSERT_EQ(sendmsg(sockets_.first.get(), &message, 0), 1);
  {
    const Packet packet = receive();
    EXPECT_TRUE(packet.fd);
    EXPECT_EQ(open_descriptors(), before + 1);
  }
  EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
}  // namespace norvo
