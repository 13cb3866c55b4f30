#include "platform/terminal/documents/ManualPage.h"

#include <algorithm>
#include <vector>

#include "app/EditionProfile.h"
#include "platform/terminal/ExitStatus.h"
#include "platform/terminal/OptionValues.h"
#include "platform/terminal/Version.h"
#include "platform/terminal/documents/Replace.h"

namespace norvo {
namespace {

std::string escaped(std::string_view text) {
  return replaced(text, R"(\)", R"(\e)");
}

// The hyphens of what is typed can be copied from the page then.
std::string typed(std::string_view word) {
  return replaced(escaped(word), "-", R"(\-)");
}

// A line of its own, which is no request to the formatter.
std::string line_of(std::string_view text) {
  std::string line = text.starts_with('.') || text.starts_with('\'') ? R"(\&)" : "";
  bool first = true;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    line += (first ? "" : " ") + (word.starts_with("--") ? typed(word) : escaped(word));
    text.remove_prefix(std::min(end + 1, text.size()));
    first = false;
  }
  return line;
}

std::string entry(const std::string& term, const std::string& description) {
  return ".TP\n" + term + "\n" + description + "\n";
}

std::string option_entries(std::span<const Option> options) {
  std::string entries;
  for (const Option& option : options) {
    std::string term = R"(\fB)" + typed(option.name) + R"(\fR)";
    if (!option.value_name.empty()) term += R"( \fI)" + escaped(option.value_name) + R"(\fR)";
    entries += entry(term, line_of(option.description));
  }
  return entries;
}

std::string edition_entries() {
  std::string entries;
  for (const std::string& name : bundle_names()) {
    const EditionProfile profile = select_edition(text_from_utf8_lossy(name));
    std::vector<std::string> types;
    for (std::size_t mode = 0; mode < search_type_names.size(); ++mode) {
      if (profile.has_search_type(static_cast<std::int32_t>(mode))) {
        types.emplace_back(search_type_names[mode]);
      }
    }
    entries += entry(R"(\fB)" + escaped(name) + R"(\fR)",
                     line_of(utf8_from_text(profile.APP_LONG_NAME)) + ": " + listed(types, "and") +
                         (profile.USE_HARD_DISK ? "; lists fixed disks, too" : ""));
  }
  return entries;
}

std::string exit_status_entries() {
  std::string entries;
  for (const ExitStatusMeaning& exit : exit_statuses) {
    entries += entry(R"(\fB)" + std::to_string(exit.status) + R"(\fR)", line_of(exit.meaning));
  }
  return entries;
}

}  // namespace

std::string manual_page(std::string_view page, std::span<const Option> options) {
  std::string result = replaced(page, "@OPTIONS@\n", option_entries(options));
  result = replaced(result, "@EDITIONS@\n", edition_entries());
  result = replaced(result, "@EXIT_STATUSES@\n", exit_status_entries());
  const std::vector<std::string> types(search_type_names.begin(), search_type_names.end());
  result = replaced(result, "@SEARCH_TYPES@\n", listed(types, "or") + "\n");
  result = replaced(result, "@RELEASE_DAY@", release_day);
  return replaced(result, "@VERSION@", program_version);
}

}  // namespace norvo
