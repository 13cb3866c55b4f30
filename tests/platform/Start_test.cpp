// The start of a program with a window, as far as it needs no right.
#include "platform/Start.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/Child.h"

namespace norvo {
namespace {

constexpr int application_status = 42;
constexpr int stream_is_closed = 43;

int status_of_streams() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    if (fcntl(fd, F_GETFD) < 0) return stream_is_closed;
  }
  return application_status;
}

void close_streams() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) close(fd);
}

void refuse_every_descriptor() {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = 0;
  setrlimit(RLIMIT_NOFILE, &limit);
}

// The status of a program that is started with `words`, by nobody who could be told by a variable.
int start(std::vector<std::string> words) {
  for (const char* const person : {"PKEXEC_UID", "SUDO_UID"}) unsetenv(person);
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  return start_program(static_cast<int>(words.size()), argv.data(),
                       [](int, char**, DeviceOpener&) { return status_of_streams(); });
}

TEST(Start, TheApplicationFindsAllStandardStreamsWhoeverClosedThem) {
  EXPECT_EQ(test::status_in_child([] {
              close_streams();
              return start({"program", "a", "b", "c"});
            }),
            application_status);
}

TEST(Start, WithoutStandardStreamsThereIsNoApplication) {
  EXPECT_EQ(test::status_in_child([] {
              close_streams();
              refuse_every_descriptor();
              return start({"program", "a", "b", "c"});
            }),
            1);
}

// There is no program of the bundle's name here that could be started.
TEST(Start, TheProcessThatAsksForTheRightEndsWell) {
  EXPECT_EQ(test::status_in_child([] {
              start({"program"});
              return 1;
            }),
            0);
}

TEST(Start, TheProcessThatAsksForTheRightEndsWellWithoutStandardStreams) {
  EXPECT_EQ(test::status_in_child([] {
              close_streams();
              refuse_every_descriptor();
              start({"program"});
              return 1;
            }),
            0);
}

}  // namespace
}  // namespace norvo
