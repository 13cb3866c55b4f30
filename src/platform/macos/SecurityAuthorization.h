// The administrator right from the system's Authorization Services.
#pragma once

#include <Security/Authorization.h>

#include "app/Elevation.h"

namespace norvo {

// Statuses are the service's own. The calls may show the system's password prompt and wait for it.
class SecurityAuthorization final : public Authorization {
 public:
  AuthorizationStatus create() override;
  AuthorizationStatus copy_rights(const AuthorizationRights& rights, std::uint32_t flags) override;
  AuthorizationStatus execute_with_privileges(const std::string& tool, const char* const* arguments,
                                              std::FILE*& communications) override;
  AuthorizationStatus free(std::uint32_t flags) override;

 private:
  AuthorizationRef reference_ = nullptr;
};

}  // namespace norvo
