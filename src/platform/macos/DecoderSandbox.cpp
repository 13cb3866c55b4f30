#include <sandbox.h>
#include <sys/resource.h>
#include <unistd.h>

#include "platform/decoder/Sandbox.h"

namespace norvo {
namespace {

bool limit(int resource, rlim_t value) {
  const rlimit both{.rlim_cur = value, .rlim_max = value};
  return setrlimit(resource, &both) == 0;
}

}  // namespace

void close_other_descriptors() {
  const int end = getdtablesize();
  for (int descriptor = STDERR_FILENO + 1; descriptor < end; ++descriptor) ::close(descriptor);
}

// The call has no successor that a program could make for itself at a moment of its own choice.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
// The system's own profile for pure computation: no file, no network, no process. It has no limit
// on address space that holds; the time limit from outside is what ends a decoder that eats memory.
bool give_up_rights(const SandboxLimits& limits) {
  close_other_descriptors();
  static_cast<void>(limit(RLIMIT_AS, limits.memory));
  char* error = nullptr;
  return limit(RLIMIT_CPU, limits.cpu_seconds) && limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, 0) &&
         sandbox_init(kSBXProfilePureComputation, SANDBOX_NAMED, &error) == 0;
}
#pragma clang diagnostic pop

}  // namespace norvo
