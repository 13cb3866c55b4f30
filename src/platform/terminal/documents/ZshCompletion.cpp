#include "platform/terminal/OptionValues.h"
#include "platform/terminal/documents/Completions.h"
#include "platform/terminal/documents/Replace.h"

namespace norvo {
namespace {

constexpr std::string_view zsh_head = R"(#compdef norvo-recover
# Completion of norvo-recover for zsh. Made with the program; changes are lost.

_norvo_recover_media() {
  local -a devices=(/dev/*(N%b))
  _alternative 'devices:block device:compadd -a devices' 'images:disk image:_files'
}

_arguments)";

std::string zsh_quoted(std::string_view word) {
  return "'" + replaced(word, "'", R"('\'')") + "'";
}

// A text in brackets or between colons of an argument's description.
std::string plain(std::string_view text) {
  std::string result = replaced(text, R"(\)", R"(\\)");
  for (const std::string_view special : {":", "[", "]"}) {
    result = replaced(result, special, R"(\)" + std::string(special));
  }
  return result;
}

std::string action(const OptionValue& value) {
  switch (value.kind) {
    case ValueKind::device:
      return "_norvo_recover_media";
    case ValueKind::folder:
      return "_files -/";
    case ValueKind::file:
      return "_files";
    case ValueKind::choice: {
      std::string words;
      for (const std::string& choice : value.choices) {
        words += (words.empty() ? "" : " ") + replaced(choice, " ", R"(\ )");
      }
      return "(" + words + ")";
    }
    case ValueKind::text:
      break;
  }
  return " ";  // shows the value's name, and proposes nothing
}

std::string argument(const Option& option) {
  const std::string description = "[" + plain(option.description) + "]";
  if (option.value_name.empty()) return zsh_quoted(std::string(option.name) + description);
  const OptionValue value = option_value(option.value_name).value_or(OptionValue{});
  return zsh_quoted(std::string(option.name) + "=" + description + ":" + plain(option.value_name) +
                    ":" + action(value));
}

}  // namespace

std::string zsh_completion(std::span<const Option> options) {
  std::string text(zsh_head);
  for (const Option& option : options) text += " \\\n  " + argument(option);
  return text + "\n";
}

}  // namespace norvo
