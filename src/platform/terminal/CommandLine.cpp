#include "platform/terminal/CommandLine.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/terminal/ExitStatus.h"
#include "platform/terminal/OptionValues.h"

namespace norvo {
namespace {

std::optional<std::string> set_mode(CommandLine& line, std::string_view value) {
  const auto* const found = std::find(search_type_names.begin(), search_type_names.end(), value);
  if (found == search_type_names.end()) {
    return "it takes " +
           listed(std::vector<std::string>(search_type_names.begin(), search_type_names.end()),
                  "or") +
           ".";
  }
  line.Recovery_MODE = static_cast<std::int32_t>(found - search_type_names.begin());
  return std::nullopt;
}

std::optional<std::string> set_edition(CommandLine& line, std::string_view value) {
  const std::optional<Text> name = text_from_utf8(value);
  if (!name || name->find_first_of(Text(u"/\0", 2)) != Text::npos) {
    return "it takes the name of a bundle, in UTF-8 and without a slash.";
  }
  line.edition = *name;
  return std::nullopt;
}

template <auto Member>
std::optional<std::string> set_path(CommandLine& line, std::string_view value) {
  if (value.empty()) return "the path is empty.";
  line.*Member = std::filesystem::path(value);
  return std::nullopt;
}

template <auto Member>
std::optional<std::string> set_text(CommandLine& line, std::string_view value) {
  line.*Member = text_from_utf8_lossy(value);
  return std::nullopt;
}

template <auto Member, auto Value>
std::optional<std::string> set_value(CommandLine& line, std::string_view /*value*/) {
  line.*Member = Value;
  return std::nullopt;
}

std::optional<std::string> set_check(CommandLine& line, std::string_view value) {
  line.action = CommandLine::Action::check_signatures;
  return set_path<&CommandLine::checked_signatures>(line, value);
}

std::optional<std::string> set_types(CommandLine& line, std::string_view value) {
  std::vector<Text> types;
  while (!value.empty()) {
    const std::size_t comma = std::min(value.find(','), value.size());
    if (comma > 0) types.push_back(text_from_utf8_lossy(value.substr(0, comma)));
    value.remove_prefix(std::min(comma + 1, value.size()));
  }
  line.types = std::move(types);
  return std::nullopt;
}

using Action = CommandLine::Action;

constexpr std::array<Option, 17> options{{
    {"--device", "PATH", "block device, raw node or disk image to search; opened read-only",
     set_path<&CommandLine::device>},
    {"--destination", "DIR", "folder under which the results folder is made",
     set_path<&CommandLine::destination>},
    {"--edition", "NAME", "bundle name that selects the edition (default: Norvo Spruce)",
     set_edition},
    {"--mode", "TYPE", "photo, video, raw or audio (default: photo)", set_mode},
    {"--start-sector", "N", "first sector to search; goes with --end-sector",
     set_text<&CommandLine::start_sector>},
    {"--end-sector", "N", "sector before which the search ends (default: entire disk)",
     set_text<&CommandLine::end_sector>},
    {"--no-thorough", "", "General pass only", set_value<&CommandLine::thorough, false>},
    {"--types", "A,B,...", "tick only these types (video, raw, audio; default: all)", set_types},
    {"--list-types", "", "print the check list of the search type, and end",
     set_value<&CommandLine::action, Action::list_types>},
    {"--list-drives", "", "print the drive list of the edition, and end",
     set_value<&CommandLine::action, Action::list_drives>},
    {"--signatures", "DIR", "folder with the edition's signature files (default: shipped ones)",
     set_path<&CommandLine::signatures>},
    {"--json", "", "events on standard output, one JSON object a line",
     set_value<&CommandLine::json, true>},
    {"--report", "FILE", "also report every file: DFXML, or CSV for *.csv; FILE must not exist",
     set_path<&CommandLine::report>},
    {"--check-signatures", "DIR", "name the faults of the signature files in DIR, and end",
     set_check},
    {"--quiet", "", "no progress on standard error", set_value<&CommandLine::quiet, true>},
    {"--help", "", "show this help, and end", set_value<&CommandLine::action, Action::help>},
    {"--version", "", "show the version, and end",
     set_value<&CommandLine::action, Action::version>},
}};

const Option* find_option(std::string_view name) {
  const auto* const found = std::find_if(options.begin(), options.end(),
                                         [&](const Option& option) { return option.name == name; });
  return found == options.end() ? nullptr : found;
}

std::optional<std::string> missing_in(const CommandLine& line) {
  if (line.action != Action::search) return std::nullopt;
  if (line.device.empty()) return "--device is required.";
  if (line.destination.empty()) return "--destination is required.";
  if (line.start_sector.has_value() != line.end_sector.has_value()) {
    return "--start-sector and --end-sector go together.";
  }
  if (line.types && line.Recovery_MODE == 0) {
    return "--types goes with --mode video, raw or audio; a photo search looks for every type.";
  }
  return std::nullopt;
}

}  // namespace

std::variant<CommandLine, UsageError> parse_command_line(std::span<const char* const> arguments) {
  CommandLine line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(0, equals);
    const Option* option = find_option(name);
    if (option == nullptr) return UsageError{"Unknown option \"" + std::string(name) + "\"."};

    std::string_view value;
    if (option->value_name.empty()) {
      if (equals != std::string_view::npos) {
        return UsageError{std::string(name) + " takes no value."};
      }
    } else if (equals != std::string_view::npos) {
      value = argument.substr(equals + 1);
    } else if (++i < arguments.size()) {
      value = arguments[i];
    } else {
      return UsageError{std::string(name) + " needs a value."};
    }
    if (const auto fault = option->apply(line, value)) {
      return UsageError{std::string(name) + ": " + *fault};
    }
  }
  if (const auto fault = missing_in(line)) return UsageError{*fault};
  return line;
}

std::span<const Option> command_line_options() {
  return options;
}

std::string help_text() {
  constexpr std::size_t description_column = 28;
  std::string text =
      "norvo-recover searches a card, drive or disk image for lost files and copies what it\n"
      "finds. The device is only ever read.\n\n"
      "  norvo-recover --device PATH --destination DIR [options]\n\n";
  for (const Option& option : options) {
    std::string call = "  " + std::string(option.name);
    if (!option.value_name.empty()) call += " " + std::string(option.value_name);
    call.resize(std::max(description_column, call.size() + 1), ' ');
    text += call + std::string(option.description) + "\n";
  }
  text += "\nExit status:\n";
  for (const ExitStatusMeaning& exit : exit_statuses) {
    std::string status = "  " + std::to_string(exit.status);
    status.resize(7, ' ');
    text += status + std::string(exit.meaning) + "\n";
  }
  return text;
}

}  // namespace norvo
