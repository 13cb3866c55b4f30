#include "util/RunProgram.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "support/Child.h"
#include "support/TemporaryFolder.h"
#include "util/ChildProcess.h"
#include "util/UniqueFd.h"

namespace norvo {
namespace {

using std::chrono::milliseconds;
using End = ProgramResult::End;
using Clock = std::chrono::steady_clock;

constexpr ProgramLimits patient{.time = std::chrono::seconds(30), .output_bytes = 1 << 20};

ProgramResult run_shell(const std::string& script, const ProgramLimits& limits = patient) {
  return run_program("/bin/sh", {"-c", script}, limits);
}

// Whether a process ends within some seconds: what was killed may still be on its way.
bool ends_soon(pid_t pid) {
  for (int i = 0; i < 500; ++i) {
    if (kill(pid, 0) != 0) return true;
    // A child whose parent is gone stays as a zombie where nobody waits for orphans.
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string status;
    if (std::getline(file, status) && status.find(") Z ") != std::string::npos) return true;
    std::this_thread::sleep_for(milliseconds(10));
  }
  return false;
}

TEST(RunProgram, ReturnsOutputAndStatus) {
  const ProgramResult result = run_shell("echo out; exit 3");
  EXPECT_EQ(result.end, End::exited);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "out\n");
  EXPECT_EQ(run_shell("exit 0").status, 0);
}

TEST(RunProgram, ArgumentsArriveAsTheyAreWithoutAShell) {
  const ProgramResult result =
      run_program("/usr/bin/printf", {"[%s]", "$HOME", "a b", "", "*; exit"}, patient);
  EXPECT_EQ(result.output, "[$HOME][a b][][*; exit]");
}

TEST(RunProgram, OnlyAnAbsolutePathIsStarted) {
  for (const char* path : {"", "sh", "./sh", "/nowhere/norvo", "/etc/passwd", "/"}) {
    EXPECT_EQ(run_program(path, {}, patient).end, End::not_started) << path;
  }
}

TEST(RunProgram, ErrorOutputIsNotPartOfTheOutput) {
  EXPECT_EQ(run_shell("echo wrong >&2; echo right").output, "right\n");
}

TEST(RunProgram, ReadsNothing) {
  EXPECT_EQ(run_shell("cat; echo end").output, "end\n");
}

TEST(RunProgram, TheEnvironmentIsClean) {
  ASSERT_EQ(setenv("NORVO_TEST_VARIABLE", "seen", 1), 0);
  const ProgramResult result = run_program("/usr/bin/env", {}, patient);
  unsetenv("NORVO_TEST_VARIABLE");
  EXPECT_EQ(result.output, "PATH=/usr/sbin:/usr/bin:/sbin:/bin\nLC_ALL=C\n");
}

TEST(RunProgram, InheritsNoDescriptor) {
  // Without the flag that closes it in other programs.
  const UniqueFd open_file(open("/dev/null", O_RDONLY));  // NOLINT
  ASSERT_TRUE(open_file);
  const UniqueFd far_file(fcntl(open_file.get(), F_DUPFD, 200));  // NOLINT
  ASSERT_TRUE(far_file);
  // The folder that is listed is itself the fourth one.
  EXPECT_EQ(run_program("/bin/ls", {"/dev/fd/"}, patient).output, "0\n1\n2\n3\n");
}

TEST(RunProgram, SignalsThatAreIgnoredHereEndTheProgram) {
  const auto before = signal(SIGPIPE, SIG_IGN);
  const ProgramResult result = run_shell("kill -PIPE $$; echo survived");
  signal(SIGPIPE, before);
  EXPECT_EQ(result.end, End::died);
  EXPECT_EQ(result.output, "");
}

// Who started this program may have ignored the ends of children.
TEST(RunProgram, TheStatusIsKnownOnceEndedChildrenAreKept) {
  EXPECT_EQ(test::status_in_child([] {
              signal(SIGCHLD, SIG_IGN);
              keep_ended_children();
              const ProgramResult result = run_shell("echo out; exit 3");
              return result.end == End::exited && result.output == "out\n" ? result.status : 100;
            }),
            3);
}

TEST(RunProgram, AProgramThatTakesTooLongIsKilledWithAllItStarted) {
  const test::TemporaryFolder folder;
  const std::string file = (folder.path() / "pids").string();
  pid_t child = 0;
  pid_t shell = 0;
  // A busy machine may reach a limit before both numbers are written.
  for (milliseconds limit(500); shell == 0 && limit < std::chrono::minutes(1); limit *= 4) {
    const auto begin = Clock::now();
    const ProgramResult result =
        run_shell("echo partial; sleep 300 & echo $! >" + file + "; echo $$ >>" + file + "; wait",
                  {.time = limit, .output_bytes = 1000});
    EXPECT_LT(Clock::now() - begin, limit + std::chrono::seconds(20));
    EXPECT_EQ(result.end, End::timed_out);
    EXPECT_EQ(result.output, "");
    std::ifstream(file) >> child >> shell;
  }
  ASSERT_GT(child, 0);
  ASSERT_GT(shell, 0);
  EXPECT_TRUE(ends_soon(child));
  EXPECT_TRUE(ends_soon(shell));
}

TEST(RunProgram, AProgramThatClosesItsOutputAndStaysIsKilledToo) {
  const ProgramResult result = run_shell("echo done; exec >&- 2>&-; sleep 300",
                                         {.time = milliseconds(500), .output_bytes = 1000});
  EXPECT_EQ(result.end, End::timed_out);
}

TEST(RunProgram, AProgramThatEndsAWhileAfterItsOutputIsWaitedFor) {
  const ProgramResult result = run_shell("echo done; exec >&- 2>&-; sleep 0.2; exit 4");
  EXPECT_EQ(result.end, End::exited);
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.output, "done\n");
}

TEST(RunProgram, TooMuchOutputEndsTheProgram) {
  const auto begin = Clock::now();
  const ProgramResult result =
      run_program("/usr/bin/yes", {}, {.time = std::chrono::seconds(30), .output_bytes = 100000});
  EXPECT_EQ(result.end, End::too_much_output);
  EXPECT_EQ(result.output, "");
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(20));
}

TEST(RunProgram, OutputUpToTheLimitIsAccepted) {
  const ProgramLimits limits{.time = std::chrono::seconds(30), .output_bytes = 4};
  EXPECT_EQ(run_shell("printf 1234", limits).output, "1234");
  EXPECT_EQ(run_shell("printf 12345", limits).end, End::too_much_output);
}

}  // namespace
}  // namespace norvo
