// Gives up the rights of the calling process for good. Each system has its own.
#pragma once

#include <cstdint>

namespace norvo {

struct SandboxLimits {
  std::uint64_t memory = 0;       // bytes of address space
  std::uint64_t cpu_seconds = 0;  // over the whole life of the process
};

// Closes every descriptor but the three standard ones. To be called first of all.
void close_other_descriptors();

// Afterwards the process can compute, allocate up to its limit, start threads, receive on standard
// input, write to the standard descriptors, and read what it is given; it cannot open, make or
// change a file, reach a network, start a program or look at another process. What it needs of
// libraries must be loaded before. The process dies with the one that started it, where the system
// can do that.
//
// To be called once, before the first thread. False when a right may be left: the caller must end.
bool give_up_rights(const SandboxLimits& limits);

}  // namespace norvo
