#include "platform/linux/PkexecAuthorization.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/linux/DetachedProcess.h"

namespace norvo {
namespace {

int error_of_running(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return errno;
  if (!S_ISREG(status.st_mode)) return EACCES;
  return access(path.c_str(), X_OK) == 0 ? 0 : errno;
}

}  // namespace

std::vector<std::string> relaunch_command(const std::string& pkexec, bool is_root,
                                          const std::string& tool, const char* const* arguments) {
  std::vector<std::string> command;
  if (!is_root) command = {pkexec, "--disable-internal-agent"};
  command.push_back(tool);
  for (; *arguments != nullptr; ++arguments) command.emplace_back(*arguments);
  return command;
}

PkexecAuthorization::PkexecAuthorization(std::string pkexec, bool is_root)
    : pkexec_(std::move(pkexec)), is_root_(is_root) {
}

AuthorizationStatus PkexecAuthorization::create() {
  return 0;
}

AuthorizationStatus PkexecAuthorization::copy_rights(const AuthorizationRights& /*rights*/,
                                                     std::uint32_t /*flags*/) {
  return is_root_ ? 0 : error_of_running(pkexec_);
}

AuthorizationStatus PkexecAuthorization::execute_with_privileges(const std::string& tool,
                                                                 const char* const* arguments,
                                                                 std::FILE*& communications) {
  communications = nullptr;
  const int error = error_of_running(tool);
  if (error != 0) return error;
  // pkexec ends without a prompt when the shell is none of those that the system lists. The new
  // process takes the account's shell.
  const std::vector<std::string> left_out =
      is_root_ ? std::vector<std::string>() : std::vector<std::string>{"SHELL"};
  return start_detached(relaunch_command(pkexec_, is_root_, tool, arguments), left_out);
}

AuthorizationStatus PkexecAuthorization::free(std::uint32_t /*flags*/) {
  return 0;
}

}  // namespace norvo
