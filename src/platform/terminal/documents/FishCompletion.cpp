#include "platform/terminal/OptionValues.h"
#include "platform/terminal/documents/Completions.h"
#include "platform/terminal/documents/Replace.h"

namespace norvo {
namespace {

constexpr std::string_view fish_head =
    R"(# Completion of norvo-recover for fish. Made with the program; changes are lost.

function __norvo_recover_devices
    for node in /dev/*
        test -b $node; and echo $node
    end
end

complete -c norvo-recover -f
)";

std::string fish_quoted(std::string_view word) {
  return "'" + replaced(replaced(word, R"(\)", R"(\\)"), "'", R"(\')") + "'";
}

// What `complete` is told of a value.
std::string value_arguments(const OptionValue& value) {
  switch (value.kind) {
    case ValueKind::text:
      return " -x";
    case ValueKind::device:
      return " -r -F -a '(__norvo_recover_devices)'";
    case ValueKind::folder:
      return " -x -a '(__fish_complete_directories)'";
    case ValueKind::file:
      return " -r -F";
    case ValueKind::choice:
      break;
  }
  std::string words;
  for (const std::string& choice : value.choices) {
    words += (words.empty() ? "" : " ") + fish_quoted(choice);
  }
  return " -x -a " + fish_quoted(words);
}

}  // namespace

std::string fish_completion(std::span<const Option> options) {
  std::string text(fish_head);
  for (const Option& option : options) {
    text += "complete -c norvo-recover -l " + std::string(option.name.substr(2));
    if (!option.value_name.empty()) {
      text += value_arguments(option_value(option.value_name).value_or(OptionValue{}));
    }
    text += " -d " + fish_quoted(option.description) + "\n";
  }
  return text;
}

}  // namespace norvo
