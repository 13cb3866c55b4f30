// How the player that people get reaches the sound server of a person's session, and nothing else.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "player/MovieClient.h"
#include "support/TemporaryFolder.h"
#include "util/ChildProcess.h"
#include "util/UniqueFd.h"

namespace norvo::test {
namespace {

namespace fs = std::filesystem;
using Kind = MovieEvent::Kind;

constexpr const char* sound_server = "/usr/bin/pulseaudio";

class PlayerSound : public ::testing::Test {
 protected:
  PlayerSound() {
    EXPECT_EQ(unsetenv("PULSE_SERVER"), 0);
    EXPECT_EQ(setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1), 0);
  }

  fs::path socket_of_server() const { return folder_.path() / "pulse" / "native"; }

  std::uint64_t play_tone() {
    const fs::path tone = folder_.path() / "tone.wav";
    const std::string command =
        "ffmpeg -v error -f lavfi -i sine=frequency=440:duration=20 -y " + tone.native();
    EXPECT_EQ(std::system(command.c_str()), 0);
    return client_.player.open(tone, {.width = 50, .height = 50});
  }

  TemporaryFolder folder_;
  MovieClient client_{{.player = NORVO_PLAYER_PROGRAM}};
};

UniqueFd listen_at(const fs::path& path) {
  fs::create_directories(path.parent_path());
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  path.native().copy(address.sun_path, sizeof address.sun_path - 1);
  UniqueFd listener(socket(AF_UNIX, SOCK_STREAM, 0));
  EXPECT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(listen(listener.get(), 1), 0);
  return listener;
}

bool has_something(int descriptor) {
  pollfd watched{.fd = descriptor, .events = POLLIN, .revents = 0};
  return poll(&watched, 1, 30'000) == 1;
}

// How many filters lie on a process, as the kernel says.
int filters_of(const std::string& process) {
  std::ifstream status("/proc/" + process + "/status");
  int filters = -1;
  for (std::string word; status >> word;) {
    if (word == "Seccomp_filters:") status >> filters;
  }
  return filters;
}

// The only child of this process.
std::string child() {
  std::string found;
  for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
    std::ifstream children(thread.path() / "children");
    if (children >> found) break;
  }
  return found;
}

TEST_F(PlayerSound, IsBroughtToTheServerOfTheSession) {
  UniqueFd listener = listen_at(socket_of_server());
  const auto movie = play_tone();
  EXPECT_TRUE(has_something(listener.get()));
  listener = UniqueFd();
  EXPECT_TRUE(client_.wait_for(Kind::opened, movie)) << "sound is no condition";
}

TEST_F(PlayerSound, NothingElseCanBeReachedOnceAMovieIsOpen) {
  if (filters_of("self") < 0) GTEST_SKIP() << "NOT RUN: this kernel does not tell of filters";
  const auto movie = play_tone();
  ASSERT_TRUE(client_.wait_for(Kind::opened, movie));
  EXPECT_EQ(filters_of(child()), filters_of("self") + 2)
      << "one from the beginning, one against connections";
}

// A real server, whose loudspeaker is a pipe.
TEST_F(PlayerSound, IsHeard) {
  if (!fs::exists(sound_server)) GTEST_SKIP() << sound_server << " is not installed";
  const fs::path pipe = folder_.path() / "loudspeaker";
  const StartedChild server =
      start_child({.executable = sound_server,
                   .arguments = {"-n", "--daemonize=no", "--exit-idle-time=-1",
                                 "--load=module-pipe-sink file=" + pipe.native(),
                                 "--load=module-native-protocol-unix"},
                   .environment = {{"XDG_RUNTIME_DIR=" + folder_.path().native(),
                                    "HOME=" + folder_.path().native()}}});
  ASSERT_GT(server.pid, 0);
  for (int i = 0; i < 3000 && !fs::exists(socket_of_server()); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  const UniqueFd loudspeaker(open(pipe.c_str(), O_RDONLY | O_NONBLOCK));
  ASSERT_TRUE(loudspeaker);
  play_tone();
  std::array<char, 4096> samples{};
  bool heard = false;
  while (!heard && client_.of(Kind::ended).empty() && has_something(loudspeaker.get())) {
    const ssize_t size = read(loudspeaker.get(), samples.data(), samples.size());
    heard = std::any_of(samples.begin(), samples.begin() + std::max<ssize_t>(size, 0),
                        [](char sample) { return sample != 0; });
  }
  EXPECT_TRUE(heard);
  kill(server.pid, SIGTERM);
  wait_for_child(server.pid);
}

}  // namespace
}  // namespace norvo::test
