#include "OutcomeComparison.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

namespace differential {
namespace {

using plain::Bytes;
using plain::Event;
using plain::EventKind;
using plain::Outcome;
using plain::Row;
using Difference = std::optional<std::string>;

std::string text_of(const Event& event) {
  static const std::array<const char*, 7> kinds = {
      "mode label",        "report",       "clearing",    "message",
      "exception message", "device error", "final screen"};
  std::ostringstream out;
  out << kinds.at(static_cast<std::size_t>(event.kind));
  for (const std::string* part : {&event.pass, &event.text, &event.path, &event.name, &event.uid}) {
    out << " \"" << *part << '"';
  }
  out << ' ' << event.error_number << (event.permission ? " permission" : "");
  return out.str();
}

std::string text_of(const Row& row) {
  return row.FileTypes + " | " + row.NoOfFile + " | " + row.FileName + " | " + row.FilePath +
         " | " + row.FileTypes_Hidden;
}

std::string text_of(const std::string& path) {
  return path;
}

std::vector<Event> without_repeated_final_screens(const std::vector<Event>& events) {
  std::vector<Event> kept;
  for (const Event& event : events) {
    const bool is_repeated = event.kind == EventKind::kFinalScreen && !kept.empty() &&
                             kept.back().kind == EventKind::kFinalScreen;
    if (!is_repeated) {
      kept.push_back(event);
    }
  }
  return kept;
}

template <typename Item>
Difference list_difference(const std::string& what, const std::vector<Item>& expected,
                           const std::vector<Item>& actual) {
  for (std::size_t i = 0; i < std::max(expected.size(), actual.size()); ++i) {
    const std::string wanted = i < expected.size() ? text_of(expected[i]) : "(nothing)";
    const std::string found = i < actual.size() ? text_of(actual[i]) : "(nothing)";
    if (i >= expected.size() || i >= actual.size() || !(expected[i] == actual[i])) {
      std::ostringstream out;
      out << what << ' ' << i << ":\n  expected " << wanted << "\n  found    " << found;
      return out.str();
    }
  }
  return std::nullopt;
}

Difference bytes_difference(const std::string& path, const Bytes& expected, const Bytes& actual) {
  if (expected == actual) {
    return std::nullopt;
  }
  const auto ends = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  const auto offset = ends.first - expected.begin();
  std::ostringstream out;
  out << "file " << path << ": byte " << offset << " (sector " << offset / 512
      << " of the file), expected size " << expected.size() << ", found size " << actual.size();
  return out.str();
}

Difference files_difference(const Outcome& expected, const Outcome& actual) {
  for (const auto& [path, bytes] : expected.files) {
    const auto found = actual.files.find(path);
    if (found == actual.files.end()) {
      return "file " + path + " is missing";
    }
    if (Difference difference = bytes_difference(path, bytes, found->second)) {
      return difference;
    }
  }
  for (const auto& [path, bytes] : actual.files) {
    if (!expected.files.contains(path)) {
      return "file " + path + " should not be there";
    }
  }
  return std::nullopt;
}

std::string result_text(const Outcome& outcome) {
  std::ostringstream out;
  out << "General " << outcome.general_result << ", Thorough ";
  if (outcome.thorough_result) {
    out << *outcome.thorough_result;
  } else {
    out << "not run";
  }
  out << ", shown items " << outcome.shown_item_count;
  return out.str();
}

}  // namespace

std::optional<std::string> first_difference(const Outcome& expected, const Outcome& actual) {
  if (Difference difference =
          list_difference("event", without_repeated_final_screens(expected.events),
                          without_repeated_final_screens(actual.events))) {
    return difference;
  }
  if (Difference difference = files_difference(expected, actual)) {
    return difference;
  }
  const std::vector<std::string> wanted(expected.folders.begin(), expected.folders.end());
  const std::vector<std::string> found(actual.folders.begin(), actual.folders.end());
  if (Difference difference = list_difference("folder", wanted, found)) {
    return difference;
  }
  if (Difference difference = list_difference("row", expected.rows, actual.rows)) {
    return difference;
  }
  if (result_text(expected) != result_text(actual)) {
    return "results:\n  expected " + result_text(expected) + "\n  found    " + result_text(actual);
  }
  return std::nullopt;
}

}  // namespace differential
