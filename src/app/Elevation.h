// What the entry point needs of the system to get the administrator right and to end. Each system
// implements these interfaces; they are used by the main thread only.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace norvo {

// 0 for success; any other value is the system's own and goes to the diagnostic sink.
using AuthorizationStatus = std::int32_t;

struct AuthorizationItem {
  std::string name;
  std::uint64_t value_length = 0;
  const void* value = nullptr;
  std::uint32_t flags = 0;

  bool operator==(const AuthorizationItem&) const = default;
};

using AuthorizationRights = std::vector<AuthorizationItem>;

namespace authorization_flag {
inline constexpr std::uint32_t interaction_allowed = 1;
inline constexpr std::uint32_t extend_rights = 2;
inline constexpr std::uint32_t destroy_rights = 8;
inline constexpr std::uint32_t preauthorize = 16;
}  // namespace authorization_flag

// The system's authorisation service, with the one reference that the program holds.
class Authorization {
 public:
  virtual ~Authorization() = default;

  // Makes the reference: no rights, no environment, default flags. The other calls may follow even
  // when this one failed, and then fail on their own.
  virtual AuthorizationStatus create() = 0;

  // Asks for `rights`, without an environment and without wanting a copy of what was granted. May
  // show the system's password prompt; a cancelled prompt is a status other than 0.
  virtual AuthorizationStatus copy_rights(const AuthorizationRights& rights,
                                          std::uint32_t flags) = 0;

  // Starts the executable at the absolute path `tool` with the right and default options, and does
  // not wait for it. `arguments` ends with a null. `communications` receives the stream to the new
  // process, or null where there is none; nobody reads, writes or closes it.
  virtual AuthorizationStatus execute_with_privileges(const std::string& tool,
                                                      const char* const* arguments,
                                                      std::FILE*& communications) = 0;

  virtual AuthorizationStatus free(std::uint32_t flags) = 0;
};

class ProcessEnd {
 public:
  virtual ~ProcessEnd() = default;

  // Ends the process at once with `status`, without running any clean-up handler. Nothing is done
  // after this call, so that a stand-in may return from it.
  virtual void end_at_once(int status) = 0;
};

}  // namespace norvo
