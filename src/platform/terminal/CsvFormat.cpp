#include "platform/terminal/CsvFormat.h"

#include <initializer_list>

namespace norvo {
namespace {

std::string row_of(std::initializer_list<std::string> cells) {
  std::string row;
  for (const std::string& cell : cells) row += (row.empty() ? "" : ",") + csv_cell(cell);
  return row + "\r\n";
}

void add_numbers(std::string& list, const std::string& numbers) {
  if (!list.empty()) list += ' ';
  list += numbers;
}

// "offset:img_offset:len" of each run, without a number in the middle for what was not read.
std::string runs_text(const FileEvidence& evidence) {
  std::string text;
  for (const ByteRun& run : evidence.runs) {
    add_numbers(text, std::to_string(run.offset) + ":" +
                          (run.img_offset ? std::to_string(*run.img_offset) : "") + ":" +
                          std::to_string(run.length));
  }
  return text;
}

// "offset:repeats:len" of each run that was not read.
std::string unread_text(const FileEvidence& evidence) {
  std::string text;
  for (const ByteRun& run : evidence.runs) {
    if (run.img_offset) continue;
    add_numbers(text, std::to_string(run.offset) + ":" +
                          (run.repeats ? std::to_string(*run.repeats) : "") + ":" +
                          std::to_string(run.length));
  }
  return text;
}

}  // namespace

std::string csv_cell(std::string_view text) {
  std::string cell(text);
  if (cell.find_first_of("=+-@\t'") == 0) cell.insert(0, 1, '\'');
  if (cell.find_first_of(",;\t\"\r\n") == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

std::string CsvFormat::beginning() const {
  return row_of({"filename", "filesize", "byte_runs", "sha256", "search", "unread"});
}

std::string CsvFormat::file(const ReportedFile& file) const {
  const FileEvidence evidence = file.evidence.value_or(FileEvidence{});
  return row_of({reportable(file.filename), std::to_string(file.size), runs_text(evidence),
                 evidence.sha256, pass_name(file.pass), unread_text(evidence)});
}

}  // namespace norvo
