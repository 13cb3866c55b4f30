// The device opener and those who ask it, over a real socket; the opener is a thread here.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/AssistedDeviceOpener.h"
#include "platform/linux/DeviceOpenerProcess.h"
#include "platform/linux/OpenerProtocol.h"
#include "platform/linux/PacketSocket.h"
#include "platform/linux/RemoteDeviceOpener.h"
#include "support/FakeDevice.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// A block device that this process may read; empty when there is none.
std::string readable_block_device() {
  for (const fs::directory_entry& entry : fs::directory_iterator("/dev")) {
    if (fs::is_block_file(entry.symlink_status()) && open_block_device(entry.path()).fd) {
      return entry.path();
    }
  }
  return {};
}

class Opener {
 public:
  Opener() {
    SocketPair sockets = make_packet_sockets();
    socket_ = std::move(sockets.first);
    server_ = std::thread(
        [end = std::move(sockets.second)]() mutable { answer_device_requests(std::move(end)); });
  }
  Opener(const Opener&) = delete;
  Opener& operator=(const Opener&) = delete;
  ~Opener() {
    static_cast<void>(socket_.close());
    server_.join();
  }

  // The way to the opener, which may be taken away.
  UniqueFd& socket() { return socket_; }

  Packet answer_to(std::string_view packet, int fd = -1) {
    EXPECT_TRUE(send_packet(socket_.get(), packet, fd));
    return receive_packet(socket_.get(), answer_size);
  }

 private:
  UniqueFd socket_;
  std::thread server_;
};

TEST(DeviceOpenerProcess, AnswersARequestWithTheErrno) {
  Opener opener;
  const Packet answer = opener.answer_to(encode_request("/dev/null").value());
  EXPECT_EQ(decode_answer(answer.bytes), ENOTBLK);
  EXPECT_FALSE(answer.fd);
}

TEST(DeviceOpenerProcess, RefusesOtherPacketsAndGoesOn) {
  Opener opener;
  const std::string good = encode_request("/dev/null").value();
  for (const std::string& packet :
       {"x"s, "NORQ\1\0\2\0/dev/null"s, "NORQ\2\0\1\0/dev/null"s, good + std::string(5000, 'x')}) {
    const Packet answer = opener.answer_to(packet, STDIN_FILENO);
    EXPECT_EQ(decode_answer(answer.bytes), EPROTO);
    EXPECT_FALSE(answer.fd);
    EXPECT_EQ(decode_answer(opener.answer_to(good).bytes), ENOTBLK);
  }
}

TEST(DeviceOpenerProcess, HandsABlockDeviceOut) {
  const std::string path = readable_block_device();
  if (path.empty()) GTEST_SKIP() << "no block device that may be opened";
  Opener opener;
  const Packet answer = opener.answer_to(encode_request(path).value());
  EXPECT_EQ(decode_answer(answer.bytes), 0);
  ASSERT_TRUE(answer.fd);
  EXPECT_EQ(fcntl(answer.fd.get(), F_GETFL) & O_ACCMODE, O_RDONLY);
}

TEST(RemoteDeviceOpener, OpensABlockDevice) {
  const std::string path = readable_block_device();
  if (path.empty()) GTEST_SKIP() << "no block device that may be opened";
  Opener opener;
  RemoteDeviceOpener remote(std::move(opener.socket()));
  const OpenedDevice opened = remote.open(path);
  EXPECT_EQ(opened.error, 0);
  ASSERT_NE(opened.device, nullptr);
  EXPECT_TRUE(opened.device->can_position(0));
}

TEST(RemoteDeviceOpener, SaysWhyTheOpenerRefused) {
  Opener opener;
  RemoteDeviceOpener remote(std::move(opener.socket()));
  EXPECT_EQ(remote.open("/dev/null").error, ENOTBLK);
  EXPECT_EQ(remote.open("/etc/passwd").error, EACCES);
  EXPECT_EQ(remote.open("/dev/norvo-nothing").error, ENOENT);
  EXPECT_EQ(remote.open("/dev/" + std::string(300, 'x')).error, ENAMETOOLONG);
  EXPECT_EQ(remote.open("").error, ENOENT);
}

TEST(RemoteDeviceOpener, ServesSeveralThreadsAtOnce) {
  Opener opener;
  RemoteDeviceOpener remote(std::move(opener.socket()));
  std::vector<std::thread> threads;
  for (const auto& [path, error] : {std::pair{"/dev/null", ENOTBLK}, {"/etc/passwd", EACCES}}) {
    threads.emplace_back([&remote, path = path, error = error] {
      for (int i = 0; i < 200; ++i) EXPECT_EQ(remote.open(path).error, error);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(RemoteDeviceOpener, FailsFromThenOnWhenTheOpenerIsGone) {
  SocketPair sockets = make_packet_sockets();
  ASSERT_TRUE(sockets.second.close());
  RemoteDeviceOpener remote(std::move(sockets.first));
  EXPECT_EQ(remote.open("/dev/null").error, EIO);
  EXPECT_EQ(remote.open("/dev/null").error, EIO);
}

// What the client makes of one answer that an opener would not give.
OpenedDevice opened_with_answer(const std::string& answer, int fd = -1) {
  SocketPair sockets = make_packet_sockets();
  EXPECT_TRUE(send_packet(sockets.second.get(), answer, fd));
  RemoteDeviceOpener remote(std::move(sockets.first));
  return remote.open("/dev/sda");
}

TEST(RemoteDeviceOpener, BelievesNoDescriptorThatIsNoBlockDevice) {
  for (const char* path : {"/dev/null", "/proc/self/status", "/"}) {
    const UniqueFd file(open(path, O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(file);
    const OpenedDevice opened = opened_with_answer(encode_answer(0), file.get());
    EXPECT_EQ(opened.device, nullptr) << path;
    EXPECT_EQ(opened.error, ENOTBLK) << path;
  }
}

TEST(RemoteDeviceOpener, TakesAStrangeAnswerForAnError) {
  EXPECT_EQ(opened_with_answer(encode_answer(0)).error, EIO);
  EXPECT_EQ(opened_with_answer("NORA").error, EIO);
  EXPECT_EQ(opened_with_answer(encode_answer(0) + "x").error, EIO);
  EXPECT_EQ(opened_with_answer(encode_answer(ENOMEDIUM)).error, ENOMEDIUM);
}

TEST(RemoteDeviceOpener, TakesNoDescriptorThatComesWithAnError) {
  const std::string path = readable_block_device();
  if (path.empty()) GTEST_SKIP() << "no block device that may be opened";
  const OpenedNode node = open_block_device(path);
  const OpenedDevice opened = opened_with_answer(encode_answer(ENOMEDIUM), node.fd.get());
  EXPECT_EQ(opened.device, nullptr);
  EXPECT_EQ(opened.error, ENOMEDIUM);
}

// Opens nothing, and counts how often it is asked.
class Refusing final : public DeviceOpener {
 public:
  explicit Refusing(int error) : error_(error) {}
  OpenedDevice open(const fs::path& path) override {
    asked.push_back(path);
    return {.device = nullptr, .error = error_};
  }
  std::vector<fs::path> asked;

 private:
  int error_;
};

TEST(AssistedDeviceOpener, AsksForNoHelpWithWhatThePersonMayOpen) {
  test::FakeMedium medium;
  test::FakeOpener own(medium);
  Refusing helper(ENOMEDIUM);
  const OpenedDevice opened = AssistedDeviceOpener(own, helper).open("/dev/sda");
  EXPECT_NE(opened.device, nullptr);
  EXPECT_EQ(opened.error, 0);
  EXPECT_TRUE(helper.asked.empty());
}

TEST(AssistedDeviceOpener, AsksForHelpWhereThePermissionIsLacking) {
  for (const int error : {EACCES, EPERM}) {
    Refusing own(error);
    Refusing helper(ENOMEDIUM);
    EXPECT_EQ(AssistedDeviceOpener(own, helper).open("/dev/sda").error, ENOMEDIUM);
    EXPECT_EQ(own.asked, std::vector<fs::path>{"/dev/sda"});
    EXPECT_EQ(helper.asked, std::vector<fs::path>{"/dev/sda"});
  }
}

TEST(AssistedDeviceOpener, AsksForNoHelpWithOtherFailures) {
  for (const int error : {ENOENT, ENOTBLK, EIO, ENOMEDIUM, EBUSY}) {
    Refusing own(error);
    Refusing helper(0);
    EXPECT_EQ(AssistedDeviceOpener(own, helper).open("/dev/sda").error, error);
    EXPECT_TRUE(helper.asked.empty());
  }
}

}  // namespace
}  // namespace norvo
