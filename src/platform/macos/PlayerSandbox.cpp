#include "platform/player/PlayerSandbox.h"

#include <sandbox.h>
#include <sys/resource.h>

#include <cstdint>

namespace norvo {
namespace {

// Reading files is left, which the media libraries need, and so are the system's services, among
// them those for sound. The named profiles of the system refuse either writing or the network.
constexpr const char* profile = R"(
(version 1)
(allow default)
(deny file-write*)
(deny network*)
(deny process-exec)
(deny process-fork)
)";

}  // namespace

// The call has no successor that a program could make for itself at a moment of its own choice.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
bool give_up_player_rights() {
  constexpr rlimit no_core{.rlim_cur = 0, .rlim_max = 0};
  constexpr std::uint64_t profile_as_text = 0;
  char* error = nullptr;
  return setrlimit(RLIMIT_CORE, &no_core) == 0 &&
         sandbox_init(profile, profile_as_text, &error) == 0;
}
#pragma clang diagnostic pop

// The profile refuses them from the beginning.
bool give_up_new_connections() {
  return true;
}

}  // namespace norvo
