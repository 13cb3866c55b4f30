#include <sched.h>
#include <time.h>
#include <unistd.h>

#include "platform/decoder/Background.h"

namespace norvo {
namespace {

constexpr int niceness = 10;

}  // namespace

void take_rank(DecoderRank rank) {
  static_cast<void>(nice(niceness));
  const sched_param no_priority{};
  if (rank == DecoderRank::background) {
    static_cast<void>(sched_setscheduler(0, SCHED_IDLE, &no_priority));
  }
}

std::optional<std::chrono::nanoseconds> processor_time(pid_t pid) {
  clockid_t clock{};
  timespec time{};
  if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0) {
    return std::nullopt;
  }
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace norvo
