#include "platform/linux/Session.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace norvo {
namespace fs = std::filesystem;
namespace {

constexpr const char* bus_socket = "bus";

bool is_folder_of(const fs::path& path, uid_t uid) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == uid;
}

bool is_socket_at(const fs::path& path) {
  std::error_code error;
  return fs::is_socket(fs::symlink_status(path, error));
}

std::string first_wayland_display(const fs::path& folder) {
  std::string first;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename();
    if (!name.starts_with("wayland-") || !is_socket_at(entry.path())) continue;
    if (first.empty() || name < first) first = name;
  }
  return first;
}

std::optional<std::string> unless_empty(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

}  // namespace

SessionPlaces find_session(const Person& person, const fs::path& runtime_folders) {
  const fs::path folder = runtime_folders / std::to_string(person.uid);
  if (!is_folder_of(folder, person.uid)) return {};
  return {.runtime_folder = folder,
          .has_bus = is_socket_at(folder / bus_socket),
          .wayland_display = first_wayland_display(folder)};
}

std::vector<Variable> session_environment(const Person& person, const SessionPlaces& places) {
  const std::string runtime = places.runtime_folder;
  const std::string bus =
      places.has_bus ? "unix:path=" + (places.runtime_folder / bus_socket).native() : "";
  return {{"HOME", person.home},
          {"USER", person.name},
          {"LOGNAME", person.name},
          {"SHELL", person.shell},
          {"XDG_RUNTIME_DIR", unless_empty(runtime)},
          {"DBUS_SESSION_BUS_ADDRESS", unless_empty(bus)},
          {"WAYLAND_DISPLAY", unless_empty(places.wayland_display)},
          {"PKEXEC_UID", std::nullopt},
          {"SUDO_UID", std::nullopt},
          {"SUDO_GID", std::nullopt},
          {"SUDO_USER", std::nullopt},
          {"SUDO_COMMAND", std::nullopt}};
}

void enter_session(const Person& person) {
  for (const Variable& variable : session_environment(person, find_session(person, "/run/user"))) {
    if (variable.value) {
      setenv(variable.name.c_str(), variable.value->c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
    } else {
      unsetenv(variable.name.c_str());  // NOLINT(concurrency-mt-unsafe)
    }
  }
  if (chdir(person.home.c_str()) != 0) static_cast<void>(chdir("/"));
}

}  // namespace norvo
