// What a decoder may take of the processors, and what it has taken. Each system has its own.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace norvo {

enum class DecoderRank {
  usual,       // behind the other programs, with a share of a busy processor all the same
  background,  // where the system can do that: only while nobody else wants the processor
};

// For the calling process, before its first thread; there is no way back. What the system refuses
// is left out.
void take_rank(DecoderRank rank);

// How long all threads of a process have computed so far. None where the system does not tell, and
// for a process that has ended.
std::optional<std::chrono::nanoseconds> processor_time(pid_t pid);

}  // namespace norvo
