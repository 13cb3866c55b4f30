#include "platform/terminal/OptionValues.h"
#include "platform/terminal/documents/Completions.h"
#include "platform/terminal/documents/Replace.h"

namespace norvo {
namespace {

constexpr std::string_view head =
    R"(# Completion of norvo-recover for bash. Made with the program; changes are lost.

_norvo_recover() {
  local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]} choices=() choice
  # "--mode=ph" arrives as three words where "=" divides words, as it usually does.
  if [[ $word == = ]]; then
    word=
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD-2]}
  fi
  # A word arrives as it was typed: with an opening quote, with backslashes.
  word=${word#[\"\']}
  word=${word//\\/}
  COMPREPLY=()
  case $option in
)";

constexpr std::string_view tail = R"(    *)
      choices=(@OPTIONS@)
      ;;
  esac
  for choice in "${choices[@]}"; do
    [[ $choice == "$word"* ]] && COMPREPLY+=("$choice")
  done
  # Readline quotes the names of files: a choice may have a space in it.
  compopt -o filenames
}

complete -F _norvo_recover norvo-recover
)";

std::string in_quotes(std::string_view word) {
  return "'" + replaced(word, "'", R"('\'')") + "'";
}

// The branch for the value of an option.
std::string value_branch(const Option& option) {
  std::string branch = "    " + std::string(option.name) + ")\n";
  const OptionValue value = option_value(option.value_name).value_or(OptionValue{});
  switch (value.kind) {
    case ValueKind::text:
      branch += "      return\n";
      break;
    case ValueKind::device:
      // The block devices stand before the files as long as nothing is typed.
      branch +=
          "      compopt -o default\n"
          "      [[ -z $word ]] || return\n"
          "      for choice in /dev/*; do\n"
          "        [[ -b $choice ]] && choices+=(\"$choice\")\n"
          "      done\n"
          "      mapfile -t -O ${#choices[@]} choices < <(compgen -f)\n";
      break;
    case ValueKind::folder:
      branch +=
          "      compopt -o dirnames\n"
          "      return\n";
      break;
    case ValueKind::file:
      branch +=
          "      compopt -o default\n"
          "      return\n";
      break;
    case ValueKind::choice:
      branch += "      choices=(";
      for (const std::string& choice : value.choices) {
        branch += (branch.back() == '(' ? "" : " ") + in_quotes(choice);
      }
      branch += ")\n";
      break;
  }
  return branch + "      ;;\n";
}

}  // namespace

std::string bash_completion(std::span<const Option> options) {
  std::string text(head);
  std::string names;
  for (const Option& option : options) {
    if (!option.value_name.empty()) text += value_branch(option);
    names += (names.empty() ? "" : " ") + std::string(option.name);
  }
  return text + replaced(tail, "@OPTIONS@", names);
}

}  // namespace norvo
