#include "app/EntryPoint.h"

#include <array>

#include "app/Bundle.h"
#include "util/Diagnostics.h"

namespace norvo {

std::int32_t Main_Calling = 0;
Text main_call_argc;

namespace {

void compose(TextView beginning, std::int32_t number) {
  Show_NSLog_Message(Text(beginning) + text_from_utf8_lossy(std::to_string(number)));
}

void compose(TextView beginning, const std::string& path) {
  Show_NSLog_Message(Text(beginning) + text_from_utf8_lossy(path));
}

void record_start(int argc, char** argv) {
  Main_Calling = 1;
  compose(u"argument count : ", argc);
  Main_Calling = argc;
  const char* const program = argc > 0 ? argv[0] : nullptr;
  main_call_argc =
      u"argc value : 0  " + text_from_utf8_lossy(program != nullptr ? program : "(null)");
}

AuthorizationStatus request_right(Authorization& authorization) {
  using namespace authorization_flag;
  const AuthorizationRights rights{{.name = "system.privilege.admin"}};
  return authorization.copy_rights(rights, interaction_allowed | extend_rights | preauthorize);
}

std::string relaunched_executable(const std::string& bundle_path) {
  compose(u"bundle path : ", bundle_path);
  const std::string path = named_executable(bundle_path);
  compose(u" path : ", path);
  std::string executable = delete_path_extension(path);
  compose(u" no ext : ", executable);
  return executable;
}

void relaunch_with_right(const StartUp& start_up) {
  Authorization& authorization = start_up.authorization;
  const AuthorizationStatus created = authorization.create();
  if (created != 0) compose(u"Error Creating Initial Authorization: ", created);

  const AuthorizationStatus granted = request_right(authorization);
  if (granted != 0) {
    compose(u"Copy Rights Unsuccessful: ", granted);
    compose(u"Copy Rights Unsuccessful: ", authorization.free(authorization_flag::destroy_rights));
    return;
  }

  const std::string executable = relaunched_executable(start_up.bundle_path());
  const std::array<const char*, 4> arguments{"a", "b", "c", nullptr};
  std::FILE* communications = nullptr;
  const AuthorizationStatus started =
      authorization.execute_with_privileges(executable, arguments.data(), communications);
  if (started != 0) compose(u"Error: ", started);
  compose(u"status: ", authorization.free(authorization_flag::destroy_rights));
}

}  // namespace

int entry_point(int argc, char** argv, const StartUp& start_up) {
  record_start(argc, argv);
  if (argc < 1 || argc > 3) return start_up.run_application(argc, argv);
  relaunch_with_right(start_up);
  start_up.process_end.end_at_once(0);
  return 0;
}

}  // namespace norvo
