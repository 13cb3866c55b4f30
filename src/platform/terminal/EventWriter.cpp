#include "platform/terminal/EventWriter.h"

#include <nlohmann/json.hpp>

#include "util/Numbers.h"

namespace norvo {
namespace {

// Keeps the keys in the order in which they are written here.
using Json = nlohmann::ordered_json;

// Whoever named a volume or wrote a signature file must not steer the terminal that a list is read
// on, and programs need the words unchanged: JSON in ASCII allows for both.
enum class Letters { as_they_are, ascii };

// Paths are bytes; those that are no UTF-8 show U+FFFD.
std::string line_of(const Json& event, Letters letters = Letters::as_they_are) {
  return event.dump(-1, ' ', letters == Letters::ascii, Json::error_handler_t::replace);
}

const char* code_of(Pass pass) {
  return pass == Pass::general ? "GEN" : "THD";
}

const char* name_of(SearchOutcome outcome) {
  switch (outcome) {
    case SearchOutcome::completed:
      return "completed";
    case SearchOutcome::stopped:
      return "stopped";
    case SearchOutcome::save_failed:
      return "save_failed";
    case SearchOutcome::open_failed:
      return "open_failed";
  }
  return "";
}

}  // namespace

void EventWriter::pass(Pass pass, TextView label) {
  write_line(
      line_of({{"event", "pass"}, {"pass", code_of(pass)}, {"label", utf8_from_text(label)}}));
}

void EventWriter::file(Pass pass, const std::filesystem::path& path, TextView name, TextView uid) {
  write_line(line_of({{"event", "file"},
                      {"pass", code_of(pass)},
                      {"path", path.native()},
                      {"name", utf8_from_text(name)},
                      {"uid", utf8_from_text(uid)}}));
}

void EventWriter::clear(TextView notice) {
  write_line(line_of({{"event", "clear"}, {"notice", utf8_from_text(notice)}}));
}

void EventWriter::message(TextView text) {
  write_line(line_of({{"event", "message"}, {"text", utf8_from_text(text)}}));
}

void EventWriter::device_error(int error, bool permission) {
  write_line(line_of({{"event", "device_error"}, {"errno", error}, {"permission", permission}}));
}

void EventWriter::final(SearchOutcome outcome) {
  write_line(line_of({{"event", "final"}, {"outcome", name_of(outcome)}}));
}

void EventWriter::drive(const MyDataObject& row, const std::filesystem::path& node) {
  write_line(line_of({{"event", "drive"},
                      {"device", node.native()},
                      {"identifier", utf8_from_text(row.nsStrDiskIdentifier)},
                      {"volume", utf8_from_text(row.nsStrVolName)},
                      {"file_system", utf8_from_text(row.nsStrFileSystem)},
                      {"size", utf8_from_text(row.nsStrSize)},
                      {"parent_disk", utf8_from_text(row.nsStrParentDisk)},
                      {"sectors", integer64_value(row.nsStrSectors)}},
                     Letters::ascii));
}

void EventWriter::type(const FileTypeEntry& row) {
  write_line(line_of({{"event", "type"},
                      {"extension", utf8_from_text(row.Extension)},
                      {"thorough", row.Thoro == u"YES"},
                      {"description", utf8_from_text(row.Description)}},
                     Letters::ascii));
}

void EventWriter::write_line(std::string_view line) {
  const std::lock_guard lock(mutex_);
  stream_ << line << '\n' << std::flush;
}

}  // namespace norvo
