#include "platform/terminal/ReportFacts.h"

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <string_view>
#include <system_error>

#include "platform/terminal/Version.h"

namespace norvo {
namespace {

std::string user_name(uid_t uid) {
  std::array<char, 16384> room{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(uid, &entry, room.data(), room.size(), &found) != 0 || found == nullptr) return {};
  return found->pw_name;
}

std::string time_now() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  std::array<char, 32> text{};
  if (gmtime_r(&now, &parts) == nullptr) return {};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

std::string quoted(std::string_view word) {
  constexpr std::string_view plain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./,:+=@%";
  if (!word.empty() && word.find_first_not_of(plain) == std::string_view::npos) {
    return std::string(word);
  }
  std::string text = "'";
  for (const char c : word) {
    if (c == '\'') {
      text += R"('\'')";
    } else {
      text += c;
    }
  }
  return text + "'";
}

}  // namespace

std::string shell_command(std::span<const char* const> arguments) {
  std::string command = "norvo-recover";
  for (const char* argument : arguments) command += " " + quoted(argument);
  return command;
}

ReportFacts gather_report_facts(std::span<const char* const> arguments,
                                const std::filesystem::path& device, std::uint64_t sectors) {
  ReportFacts facts;
  facts.program_version = program_version;
#ifdef __clang__
  facts.compiler = __VERSION__;
#else
  facts.compiler = "GCC " __VERSION__;
#endif
  utsname system{};
  if (uname(&system) == 0) {
    facts.os_sysname = system.sysname;
    facts.os_release = system.release;
    facts.os_version = system.version;
    facts.host = system.nodename;
    facts.arch = system.machine;
  }
  facts.command_line = shell_command(arguments);
  facts.uid = std::to_string(getuid());
  facts.username = user_name(getuid());
  facts.start_time = time_now();
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(device, error);
  facts.image_filename = (error ? device : absolute).native();
  facts.sectors = sectors;
  return facts;
}

}  // namespace norvo
