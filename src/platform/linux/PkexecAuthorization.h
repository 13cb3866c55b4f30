// The administrator right from polkit, whose tool pkexec asks for the password and starts the
// program with the right in one.
#pragma once

#include <string>
#include <vector>

#include "app/Elevation.h"

namespace norvo {

// The command that starts `tool` as root: by way of `pkexec`, or directly when the caller is root
// already. Only the graphical agent of the person's session may ask for the password, as a prompt
// on a terminal would compete with the shell that has it back by then.
std::vector<std::string> relaunch_command(const std::string& pkexec, bool is_root,
                                          const std::string& tool, const char* const* arguments);

// Statuses are errno values. There is no reference to make or to free, so create() and free()
// succeed.
class PkexecAuthorization final : public Authorization {
 public:
  // `pkexec` is the tool's absolute path; `is_root` tells whether this process has the right.
  PkexecAuthorization(std::string pkexec, bool is_root);

  AuthorizationStatus create() override;

  // Whether the right can be had here at all: the tool is there. The password prompt belongs to the
  // relaunch, and a refusal there means that no second process appears.
  AuthorizationStatus copy_rights(const AuthorizationRights& rights, std::uint32_t flags) override;

  // ENOENT, EACCES and so on when `tool` is no file that this process may run; then nothing is
  // started and no password is asked for. There is no communications stream. The new process is
  // start_detached's, and pkexec gets no SHELL; that it was refused the right is not told.
  AuthorizationStatus execute_with_privileges(const std::string& tool, const char* const* arguments,
                                              std::FILE*& communications) override;

  AuthorizationStatus free(std::uint32_t flags) override;

 private:
  std::string pkexec_;
  bool is_root_;
};

}  // namespace norvo
