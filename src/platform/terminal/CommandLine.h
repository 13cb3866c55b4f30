// The options of norvo-recover: one table from which parsing and help text are made.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "util/Text.h"

namespace norvo {

struct CommandLine {
  enum class Action { search, list_types, check_signatures, help, version };

  Action action = Action::search;
  std::filesystem::path device;
  std::filesystem::path destination;
  Text edition = u"Norvo Spruce";
  std::int32_t Recovery_MODE = 0;
  std::optional<Text> start_sector;  // as typed; both or neither
  std::optional<Text> end_sector;
  bool thorough = true;
  std::optional<std::vector<Text>> types;    // the extensions to tick; all without it
  std::filesystem::path signatures;          // empty: the edition's shipped files
  std::filesystem::path checked_signatures;  // the folder of --check-signatures
  bool json = false;
  bool quiet = false;
};

// What is wrong with a call, in one sentence for standard error.
struct UsageError {
  std::string message;
};

// Parses the arguments without the program's name. The last of several equal options counts.
std::variant<CommandLine, UsageError> parse_command_line(std::span<const char* const> arguments);

// The text of --help.
std::string help_text();

}  // namespace norvo
