#include "util/RunProgram.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <thread>

#include "util/ChildProcess.h"

namespace norvo {
namespace {

using Clock = std::chrono::steady_clock;
using End = ProgramResult::End;

// How long a program that has closed its output may take until it is asked again whether it ended.
constexpr std::chrono::milliseconds exit_check_interval{2};
constexpr std::chrono::seconds longest_dying{1};

// Whether there is something to read (an end, too) before the deadline.
bool becomes_readable(int fd, Clock::time_point deadline) {
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return false;
    pollfd watched{.fd = fd, .events = POLLIN, .revents = 0};
    const int ready = poll(&watched, 1, static_cast<int>(std::min<long long>(left, 60'000)));
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  }
}

// Reads to the end. What was in the way, or End::exited.
End read_output(int fd, std::size_t limit, Clock::time_point deadline, std::string& output) {
  std::array<char, 16384> chunk;
  while (becomes_readable(fd, deadline)) {
    const ssize_t got = read(fd, chunk.data(), chunk.size());
    if (got == 0) return End::exited;
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) break;
    if (static_cast<std::size_t>(got) > limit - output.size()) return End::too_much_output;
    output.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return End::timed_out;
}

// The status of a child that ends before the deadline. One that was ended by it is gone afterwards.
std::optional<int> wait_until(pid_t pid, Clock::time_point deadline) {
  int status = 0;
  while (true) {
    const pid_t ended = waitpid(pid, &status, WNOHANG);
    if (ended == pid) return status;
    if (ended < 0 && errno != EINTR) return -1;
    if (Clock::now() >= deadline) return std::nullopt;
    std::this_thread::sleep_for(exit_check_interval);
  }
}

// One that hangs in the kernel, on a drive that does not answer, dies when that is over. It is not
// waited for: it costs an entry in the table of processes until then, or until this program ends.
void kill_group(pid_t leader) {
  kill(-leader, SIGKILL);
  static_cast<void>(wait_until(leader, Clock::now() + longest_dying));
}

}  // namespace

ProgramResult run_program(const std::filesystem::path& executable,
                          const std::vector<std::string>& arguments, const ProgramLimits& limits) {
  const Clock::time_point deadline = Clock::now() + limits.time;
  const StartedChild child =
      start_child({.executable = executable,
                   .arguments = arguments,
                   .environment = {{"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"}},
                   .own_group = true});
  if (child.pid < 0) return {};

  ProgramResult result;
  result.end = read_output(child.output.get(), limits.output_bytes, deadline, result.output);
  std::optional<int> status;
  if (result.end == End::exited) {
    status = wait_until(child.pid, deadline);
    if (!status) result.end = End::timed_out;
  }
  if (!status) {
    kill_group(child.pid);
    return {.end = result.end, .status = 0, .output = {}};
  }
  if (!WIFEXITED(*status)) return {.end = End::died, .status = 0, .output = {}};
  result.status = WEXITSTATUS(*status);
  return result;
}

}  // namespace norvo
