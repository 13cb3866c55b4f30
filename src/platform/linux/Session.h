// The person's session, which the tool that gives the right does not pass on.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/Person.h"

namespace norvo {

// What of the session is there.
struct SessionPlaces {
  std::filesystem::path runtime_folder;  // empty when there is none
  bool has_bus = false;                  // the session bus listens in the runtime folder
  std::string wayland_display;           // name of its socket there; empty without one

  bool operator==(const SessionPlaces&) const = default;
};

// Looks for the person's folder in `runtime_folders` (/run/user). A folder that belongs to somebody
// else does not count. Of several Wayland displays the first by name is taken.
SessionPlaces find_session(const Person& person, const std::filesystem::path& runtime_folders);

struct Variable {
  std::string name;
  std::optional<std::string> value;  // nothing: the variable goes

  bool operator==(const Variable&) const = default;
};

// The changes that make the environment the person's. DISPLAY, XAUTHORITY, the language and all
// else stay as they are.
std::vector<Variable> session_environment(const Person& person, const SessionPlaces& places);

// Makes the environment and the working folder the person's; the root folder where the home cannot
// be entered. Called as the person and before any thread exists.
void enter_session(const Person& person);

}  // namespace norvo
