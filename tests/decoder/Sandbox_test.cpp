// What a decoder and a player can no longer do, tried by a program that gives up its rights as they
// do.
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/ChildProcess.h"

namespace norvo::test {
namespace {

constexpr int done = 10;
constexpr int refused = 11;

struct Attempt {
  const char* rights;
  const char* action;
};

std::ostream& operator<<(std::ostream& out, const Attempt& attempt) {
  return out << attempt.rights << " " << attempt.action;
}

// Whether the kernel can say which files a process may reach.
bool kernel_restricts_files() {
  return syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0;
}

class SandboxTest : public ::testing::TestWithParam<Attempt> {
 protected:
  SandboxTest() {
    write_file(folder_.path() / "file", "content");
    // Ends with the status that says "done".
    write_file(folder_.path() / "program", "#!/bin/sh\nexit 10\n");
    std::filesystem::permissions(folder_.path() / "program", std::filesystem::perms::owner_all);
  }

  int status_of(const std::string& rights, const std::string& action) {
    const StartedChild child = start_child({.executable = NORVO_SANDBOX_PROBE,
                                            .arguments = {rights, action, folder_.path().native()},
                                            .environment = {}});
    EXPECT_GT(child.pid, 0);
    return wait_for_child(child.pid);
  }

  TemporaryFolder folder_;
};

TEST_P(SandboxTest, IsPossibleBeforeAndRefusedAfterwards) {
  const std::string action = GetParam().action;
  const bool about_files = action.ends_with("-file") || action == "make-folder";
  if (GetParam().rights == std::string("player") && about_files && !kernel_restricts_files()) {
    GTEST_SKIP() << "this kernel cannot say which files a process may reach";
  }
  const int locked = status_of(GetParam().rights, action);
  const bool killed = WIFSIGNALED(locked) && WTERMSIG(locked) == SIGSYS;
  const bool failed = WIFEXITED(locked) && WEXITSTATUS(locked) == refused;
  EXPECT_TRUE(killed || failed) << "status " << locked;
  EXPECT_EQ(read_file(folder_.path() / "file"), "content");
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "new"));

  const int free = status_of("free", action);
  EXPECT_TRUE(WIFEXITED(free) && WEXITSTATUS(free) == done) << "the probe shows nothing: " << free;
}

INSTANTIATE_TEST_SUITE_P(
    Decoder, SandboxTest,
    ::testing::Values(Attempt{"decoder", "read-file"}, Attempt{"decoder", "write-file"},
                      Attempt{"decoder", "create-file"}, Attempt{"decoder", "remove-file"},
                      Attempt{"decoder", "rename-file"}, Attempt{"decoder", "make-folder"},
                      Attempt{"decoder", "change-mode"}, Attempt{"decoder", "write-opened"},
                      Attempt{"decoder", "truncate-opened"}, Attempt{"decoder", "socket"},
                      Attempt{"decoder", "local-socket"}, Attempt{"decoder", "fork"},
                      Attempt{"decoder", "execute"}, Attempt{"decoder", "execute-shell"},
                      Attempt{"decoder", "trace"}, Attempt{"decoder", "signal"},
                      Attempt{"decoder", "map-code"}, Attempt{"decoder", "make-code"},
                      Attempt{"decoder", "too-much-memory"}));

INSTANTIATE_TEST_SUITE_P(
    Player, SandboxTest,
    ::testing::Values(
        Attempt{"player", "read-file"}, Attempt{"player", "write-file"},
        Attempt{"player", "create-file"}, Attempt{"player", "remove-file"},
        Attempt{"player", "rename-file"}, Attempt{"player", "make-folder"},
        Attempt{"player", "change-mode"}, Attempt{"player", "write-opened"},
        Attempt{"player", "truncate-opened"}, Attempt{"player", "change-mode-given"},
        Attempt{"player", "change-owner-given"}, Attempt{"player", "change-owner-of-link"},
        Attempt{"player", "set-times-given"}, Attempt{"player", "set-attribute"},
        Attempt{"player", "set-attribute-given"}, Attempt{"player", "remove-attribute"},
        Attempt{"player", "remove-attribute-given"}, Attempt{"player", "socket"},
        Attempt{"player", "fork"}, Attempt{"player", "execute"}, Attempt{"player", "execute-shell"},
        Attempt{"player", "trace"}, Attempt{"player", "signal"}, Attempt{"player", "signal-thread"},
        Attempt{"player", "queue-signal"}, Attempt{"player", "signal-given"},
        Attempt{"player", "own-file-by-other"}, Attempt{"player", "choose-signal"},
        Attempt{"player", "own-socket-by-other"}, Attempt{"player", "limit-other"},
        Attempt{"player", "place-other"}, Attempt{"player", "rank-other"},
        Attempt{"player", "shared-memory"}));

INSTANTIATE_TEST_SUITE_P(Playing, SandboxTest,
                         ::testing::Values(Attempt{"playing", "local-socket"},
                                           Attempt{"playing", "pair-of-sockets"},
                                           Attempt{"playing", "connect"},
                                           Attempt{"playing", "execute"},
                                           Attempt{"playing", "signal-thread"}));

TEST_F(SandboxTest, WhatTheyNeedIsLeft) {
  for (const Attempt& attempt :
       {Attempt{"decoder", "compute"}, Attempt{"player", "compute"},
        Attempt{"player", "read-library"}, Attempt{"player", "local-socket"},
        Attempt{"player", "connect"}, Attempt{"playing", "compute"},
        Attempt{"playing", "read-library"}, Attempt{"playing", "signal-itself"},
        Attempt{"playing", "limit-itself"}}) {
    const int status = status_of(attempt.rights, attempt.action);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == done) << attempt << " " << status;
  }
}

}  // namespace
}  // namespace norvo::test
