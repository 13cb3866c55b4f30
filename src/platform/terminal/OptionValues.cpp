#include "platform/terminal/OptionValues.h"

#include "app/EditionProfile.h"
#include "util/Text.h"

namespace norvo {

std::optional<OptionValue> option_value(std::string_view value_name) {
  if (value_name == "PATH") return OptionValue{ValueKind::device, {}};
  if (value_name == "DIR") return OptionValue{ValueKind::folder, {}};
  if (value_name == "FILE") return OptionValue{ValueKind::file, {}};
  if (value_name == "NAME") return OptionValue{ValueKind::choice, bundle_names()};
  if (value_name == "TYPE") {
    return OptionValue{ValueKind::choice, {search_type_names.begin(), search_type_names.end()}};
  }
  if (value_name == "N" || value_name == "A,B,...") return OptionValue{};
  return std::nullopt;
}

std::vector<std::string> bundle_names() {
  std::vector<std::string> names;
  for (const TextView keyword : edition_keywords()) {
    names.push_back("Norvo " + utf8_from_text(keyword));
  }
  return names;
}

std::string listed(std::span<const std::string> words, std::string_view conjunction) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0 && i + 1 == words.size()) {
      list += " " + std::string(conjunction) + " ";
    } else if (i > 0) {
      list += ", ";
    }
    list += words[i];
  }
  return list;
}

}  // namespace norvo
