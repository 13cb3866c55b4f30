#include "platform/linux/Session.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

void make_socket(const fs::path& path) {
  const UniqueFd fd(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.native().size(), sizeof address.sun_path);
  std::strcpy(address.sun_path, path.c_str());
  ASSERT_EQ(bind(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

class Session : public testing::Test {
 protected:
  Session() {
    person_.uid = geteuid();
    runtime_ = folder_.path() / std::to_string(person_.uid);
  }

  SessionPlaces find() const { return find_session(person_, folder_.path()); }

  test::TemporaryFolder folder_;
  Person person_{.uid = 0, .gid = 7, .name = "me", .home = "/home/me", .shell = "/bin/zsh"};
  fs::path runtime_;
};

TEST_F(Session, WithoutARuntimeFolderIsNoSession) {
  EXPECT_EQ(find(), SessionPlaces{});
  test::write_file(runtime_, "no folder");
  EXPECT_EQ(find(), SessionPlaces{});
}

TEST_F(Session, IsInTheFolderThatBearsTheNumber) {
  fs::create_directory(runtime_);
  EXPECT_EQ(find(),
            (SessionPlaces{.runtime_folder = runtime_, .has_bus = false, .wayland_display = ""}));
}

TEST_F(Session, HasABusWhereASocketOfThatNameIs) {
  fs::create_directory(runtime_);
  test::write_file(runtime_ / "bus", "no socket");
  EXPECT_FALSE(find().has_bus);
  fs::remove(runtime_ / "bus");
  make_socket(runtime_ / "bus");
  EXPECT_TRUE(find().has_bus);
}

TEST_F(Session, TakesTheFirstWaylandDisplay) {
  fs::create_directory(runtime_);
  test::write_file(runtime_ / "wayland-0", "no socket");
  test::write_file(runtime_ / "wayland-1.lock", "");
  EXPECT_EQ(find().wayland_display, "");
  make_socket(runtime_ / "wayland-3");
  make_socket(runtime_ / "wayland-1");
  make_socket(runtime_ / "wayland-2");
  make_socket(runtime_ / "other");
  EXPECT_EQ(find().wayland_display, "wayland-1");
}

TEST_F(Session, DoesNotCountALinkToAnotherFolder) {
  fs::create_directory(folder_.path() / "elsewhere");
  fs::create_directory_symlink(folder_.path() / "elsewhere", runtime_);
  EXPECT_EQ(find(), SessionPlaces{});
}

TEST_F(Session, DoesNotCountAFolderOfSomebodyElse) {
  fs::create_directory(runtime_);
  fs::create_directory(folder_.path() / std::to_string(person_.uid + 1));
  person_.uid += 1;
  EXPECT_EQ(find(), SessionPlaces{});
}

TEST(SessionEnvironment, NamesThePersonAndTheSession) {
  const Person person{.uid = 1000, .gid = 7, .name = "me", .home = "/home/me", .shell = "/bin/zsh"};
  const SessionPlaces places{
      .runtime_folder = "/run/user/1000", .has_bus = true, .wayland_display = "wayland-1"};
  EXPECT_EQ(session_environment(person, places),
            (std::vector<Variable>{{"HOME", "/home/me"},
                                   {"USER", "me"},
                                   {"LOGNAME", "me"},
                                   {"SHELL", "/bin/zsh"},
                                   {"XDG_RUNTIME_DIR", "/run/user/1000"},
                                   {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/user/1000/bus"},
                                   {"WAYLAND_DISPLAY", "wayland-1"},
                                   {"PKEXEC_UID", std::nullopt},
                                   {"SUDO_UID", std::nullopt},
                                   {"SUDO_GID", std::nullopt},
                                   {"SUDO_USER", std::nullopt},
                                   {"SUDO_COMMAND", std::nullopt}}));
}

TEST(SessionEnvironment, TakesAwayWhatIsNotThereAndLeavesTheDisplayAlone) {
  const std::vector<Variable> variables = session_environment({}, {});
  for (const char* name : {"XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY"}) {
    EXPECT_EQ(std::count(variables.begin(), variables.end(), Variable{name, std::nullopt}), 1)
        << name;
  }
  for (const Variable& variable : variables) {
    EXPECT_NE(variable.name, "DISPLAY");
    EXPECT_NE(variable.name, "XAUTHORITY");
  }
}

}  // namespace
}  // namespace norvo
