#include "util/DescriptorPair.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "util/RunProgram.h"

namespace norvo::test {
namespace {

constexpr ProgramLimits patient{.time = std::chrono::seconds(30), .output_bytes = 1 << 20};

void expect_not_inherited(const UniqueFd& fd) {
  EXPECT_NE(fcntl(fd.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(DescriptorPair, APipeLeadsFromTheSecondToTheFirst) {
  const DescriptorPair pipe = make_pipe();
  ASSERT_TRUE(pipe);
  char byte = 'x';
  ASSERT_EQ(write(pipe.second.get(), &byte, 1), 1);
  byte = 0;
  ASSERT_EQ(read(pipe.first.get(), &byte, 1), 1);
  EXPECT_EQ(byte, 'x');
  expect_not_inherited(pipe.first);
  expect_not_inherited(pipe.second);
}

TEST(DescriptorPair, ASocketPairLeadsBothWays) {
  const DescriptorPair sockets = make_socket_pair();
  ASSERT_TRUE(sockets);
  char byte = 'x';
  ASSERT_EQ(write(sockets.first.get(), &byte, 1), 1);
  ASSERT_EQ(read(sockets.second.get(), &byte, 1), 1);
  ASSERT_EQ(write(sockets.second.get(), &byte, 1), 1);
  ASSERT_EQ(read(sockets.first.get(), &byte, 1), 1);
  expect_not_inherited(sockets.first);
  expect_not_inherited(sockets.second);
}

TEST(DescriptorPair, NoChildGetsAnEndWhileAnotherThreadMakesPairs) {
  std::atomic<bool> enough = false;
  std::thread maker([&] {
    while (!enough) {
      const DescriptorPair pipe = make_pipe();
      const DescriptorPair sockets = make_socket_pair();
    }
  });
  for (int child = 0; child < 200 && !HasFailure(); ++child) {
    // The folder that is listed is itself the fourth one.
    EXPECT_EQ(run_program("/bin/ls", {"/dev/fd/"}, patient).output, "0\n1\n2\n3\n");
  }
  enough = true;
  maker.join();
}

}  // namespace
}  // namespace norvo::test
