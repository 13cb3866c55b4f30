// A program that is killed and cannot be waited for, as one is that hangs in the kernel.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"
#include "util/RunProgram.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// How long the program cannot be waited for; far more than it is given to die.
constexpr std::chrono::seconds long_wait{60};

pid_t number_in(const fs::path& file) {
  pid_t number = 0;
  std::ifstream(file) >> number;
  return number;
}

// Traces the program whose number comes in the file `pid`, and then does nothing: until it has
// ended itself nobody else learns that the program died. Says through the pipe `gate` whether that
// worked.
[[noreturn]] void trace(const fs::path& folder) {
  while (number_in(folder / "pid") == 0) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  const bool traced = ptrace(PTRACE_SEIZE, number_in(folder / "pid"), nullptr, nullptr) == 0;
  test::write_file(folder / "gate", traced ? "traced\n" : "refused\n");
  std::this_thread::sleep_for(long_wait);
  _exit(0);
}

TEST(StuckProgram, IsNotWaitedForWhenItDoesNotDie) {
  const test::TemporaryFolder folder;
  const fs::path place = folder.path();
  ASSERT_EQ(mkfifo((place / "gate").c_str(), 0600), 0);
  const pid_t tracer = fork();
  ASSERT_GE(tracer, 0);
  if (tracer == 0) trace(place);
  const auto begin = Clock::now();
  const ProgramResult result =
      run_program("/bin/sh",
                  {"-c",
                   // Nothing that sends it a signal, which would stop it for its tracer.
                   "cd \"$0\"; echo $$ >pid; read answer <gate\n"
                   "[ $answer = traced ] || exit 0; exec yes",
                   place.native()},
                  {.time = std::chrono::minutes(5), .output_bytes = 1000});
  const auto taken = Clock::now() - begin;
  // For as long as it is traced it stays.
  const int status_of_dead = waitpid(number_in(place / "pid"), nullptr, WNOHANG);
  kill(tracer, SIGKILL);
  waitpid(tracer, nullptr, 0);
  waitpid(number_in(place / "pid"), nullptr, 0);
  if (result.end == ProgramResult::End::exited) GTEST_SKIP() << "no process may be traced here";
  EXPECT_EQ(result.end, ProgramResult::End::too_much_output);
  EXPECT_EQ(status_of_dead, 0);
  EXPECT_LT(taken, long_wait);
}

}  // namespace
}  // namespace norvo
