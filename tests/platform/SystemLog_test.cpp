// The system log with a reader of its own, in a mount namespace whose /dev holds nothing else.
#include "platform/SystemLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>

#include "support/Child.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using testing::MatchesRegex;

constexpr int cannot_be_had = 77;

bool write_to(const fs::path& file, const std::string& text) {
  return static_cast<bool>(std::ofstream(file) << text << std::flush);
}

// A namespace in which whoever runs the tests is root.
bool become_root_of_a_namespace() {
  const std::string user = "0 " + std::to_string(geteuid()) + " 1";
  const std::string group = "0 " + std::to_string(getegid()) + " 1";
  const fs::path self = "/proc/self";
  return unshare(CLONE_NEWUSER) == 0 && write_to(self / "uid_map", user) &&
         write_to(self / "setgroups", "deny") && write_to(self / "gid_map", group);
}

bool enter_own_dev() {
  return (geteuid() == 0 || become_root_of_a_namespace()) && unshare(CLONE_NEWNS) == 0 &&
         mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", "/dev", "tmpfs", 0, nullptr) == 0;
}

UniqueFd log_socket() {
  UniqueFd socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  sockaddr_un place{};
  place.sun_family = AF_UNIX;
  std::strcpy(place.sun_path, "/dev/log");
  if (bind(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) return {};
  return socket;
}

// What there is to be read, each piece with a line end behind it.
std::string all_of(const UniqueFd& source) {
  std::string text;
  std::array<char, 4096> piece{};
  for (ssize_t got = 0; (got = read(source.get(), piece.data(), piece.size())) > 0;) {
    text += std::string(piece.data(), static_cast<std::size_t>(got)) + '\n';
  }
  return text;
}

class SystemLogTest : public testing::Test {
 protected:
  // Writes two lines and a half to the log and keeps what its reader got. `set_up` comes first.
  int write_lines(const std::function<void()>& set_up) const {
    return test::status_in_child([&] {
      set_up();
      std::ofstream kept(logged());  // its folder may lie below the /dev that is left
      if (!enter_own_dev()) return cannot_be_had;
      const UniqueFd socket = log_socket();
      if (!socket) return 1;
      {
        SystemLog log("norvo-test");
        log.stream() << "one\ntw\x1Bo\n"
                     << "the third" << std::flush;
      }
      return kept << all_of(socket) << std::flush ? 0 : 1;
    });
  }
  fs::path logged() const { return folder_.path() / "logged"; }
  fs::path standard_error() const { return folder_.path() / "standard_error"; }

  test::TemporaryFolder folder_;
};

TEST_F(SystemLogTest, GetsEveryLineUnderTheProgramsName) {
  const int status = write_lines(
      [this] { static_cast<void>(std::freopen(standard_error().c_str(), "w", stderr)); });
  if (status == cannot_be_had) GTEST_SKIP() << "no mount namespace can be had here";
  ASSERT_EQ(status, 0);
  // User messages of the level "notice".
  EXPECT_THAT(test::read_file(logged()),
              MatchesRegex("<13>[^\n]* norvo-test\\[[0-9]+\\]: one\n"
                           "<13>[^\n]* norvo-test\\[[0-9]+\\]: tw\uFFFDo\n"
                           "<13>[^\n]* norvo-test\\[[0-9]+\\]: the third\n"));
  EXPECT_EQ(test::read_file(standard_error()), "");
}

TEST_F(SystemLogTest, IsReadOnATerminalAsWell) {
  int terminal = -1;
  int end_for_programs = -1;
  ASSERT_EQ(openpty(&terminal, &end_for_programs, nullptr, nullptr, nullptr), 0);
  const UniqueFd reader(terminal);
  UniqueFd standard_error(end_for_programs);
  const int status = write_lines([&] { dup2(standard_error.get(), STDERR_FILENO); });
  if (status == cannot_be_had) GTEST_SKIP() << "no mount namespace can be had here";
  ASSERT_EQ(status, 0);
  std::array<char, 256> shown{};
  const ssize_t got = read(reader.get(), shown.data(), shown.size());
  EXPECT_EQ(std::string(shown.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0))),
            "one\r\ntw\uFFFDo\r\nthe third\r\n");
}

}  // namespace
}  // namespace norvo
