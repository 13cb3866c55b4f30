// The options of norvo-recover: one table from which parsing, the help text, the manual page and
// the completions of the shells are made.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "util/Text.h"

namespace norvo {

struct CommandLine {
  enum class Action { search, list_types, list_drives, check_signatures, help, version };

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
  std::filesystem::path report;              // empty: none
  bool json = false;
  bool quiet = false;
};

// What is wrong with a call, in one sentence for standard error.
struct UsageError {
  std::string message;
};

// One option. Its value's name says what can stand there; OptionValues.h knows these names.
struct Option {
  std::string_view name;        // with its dashes
  std::string_view value_name;  // empty: the option takes no value
  std::string_view description;
  // Applies the option's value (empty for an option without one); a text is what is wrong with it.
  std::optional<std::string> (*apply)(CommandLine& line, std::string_view value);
};

// Every option, in the order of the help. Any thread.
std::span<const Option> command_line_options();

// Parses the arguments without the program's name. The last of several equal options counts.
std::variant<CommandLine, UsageError> parse_command_line(std::span<const char* const> arguments);

// The text of --help.
std::string help_text();

}  // namespace norvo
