#include "platform/macos/SecurityAuthorization.h"

#include <Security/AuthorizationTags.h>

#include <utility>
#include <vector>

namespace norvo {

static_assert(authorization_flag::interaction_allowed == kAuthorizationFlagInteractionAllowed);
static_assert(authorization_flag::extend_rights == kAuthorizationFlagExtendRights);
static_assert(authorization_flag::destroy_rights == kAuthorizationFlagDestroyRights);
static_assert(authorization_flag::preauthorize == kAuthorizationFlagPreAuthorize);

AuthorizationStatus SecurityAuthorization::create() {
  return AuthorizationCreate(nullptr, kAuthorizationEmptyEnvironment, kAuthorizationFlagDefaults,
                             &reference_);
}

AuthorizationStatus SecurityAuthorization::copy_rights(const AuthorizationRights& rights,
                                                       std::uint32_t flags) {
  std::vector<::AuthorizationItem> items;
  for (const AuthorizationItem& item : rights) {
    // The service takes the value as writable and does not write it.
    items.push_back({.name = item.name.c_str(),
                     .valueLength = static_cast<size_t>(item.value_length),
                     .value = const_cast<void*>(item.value),
                     .flags = item.flags});
  }
  const ::AuthorizationRights set{.count = static_cast<UInt32>(items.size()),
                                  .items = items.data()};
  return AuthorizationCopyRights(reference_, &set, kAuthorizationEmptyEnvironment, flags, nullptr);
}

// The service has no successor that starts a program of one's own choice with a window.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
AuthorizationStatus SecurityAuthorization::execute_with_privileges(const std::string& tool,
                                                                   const char* const* arguments,
                                                                   std::FILE*& communications) {
  return AuthorizationExecuteWithPrivileges(reference_, tool.c_str(), kAuthorizationFlagDefaults,
                                            const_cast<char* const*>(arguments), &communications);
}
#pragma clang diagnostic pop

AuthorizationStatus SecurityAuthorization::free(std::uint32_t flags) {
  return AuthorizationFree(std::exchange(reference_, nullptr), flags);
}

}  // namespace norvo
