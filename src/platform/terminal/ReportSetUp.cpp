#include "platform/terminal/ReportSetUp.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "platform/System.h"
#include "platform/terminal/CsvFormat.h"
#include "platform/terminal/DfxmlFormat.h"
#include "platform/terminal/ReportFacts.h"
#include "util/LetterCase.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

bool wants_csv(const fs::path& path) {
  return fold_case(text_from_utf8_lossy(path.extension().native())) == u".csv";
}

// Links are followed as far as there are any.
std::optional<fs::path> place_of(const fs::path& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  if (error) return std::nullopt;
  const fs::path clean = fs::weakly_canonical(absolute, error);
  if (error) return std::nullopt;
  return clean.has_filename() ? clean : clean.parent_path();
}

// Whether `path` is `folder` or lies in it.
bool lies_below(const fs::path& path, const fs::path& folder) {
  const std::optional<fs::path> inner = place_of(path);
  const std::optional<fs::path> outer = place_of(folder);
  if (!inner || !outer) return false;
  return std::mismatch(outer->begin(), outer->end(), inner->begin(), inner->end()).first ==
         outer->end();
}

// Why there may be no report at the wanted place, or nothing.
std::optional<std::string> fault_of_place(const CommandLine& line, const ScanRequest& request) {
  const fs::path& report = line.report;
  if (lies_on_device(report.has_parent_path() ? report.parent_path() : ".", line.device)) {
    return " would lie on the device that is searched. Choose another drive.";
  }
  // A file is made anew for each name there, so a report among them could be emptied.
  const fs::path results = request.destination / request.Rec_Folder_Name;
  if (lies_below(report, results)) {
    return " would lie among the recovered files. Choose another folder.";
  }
  std::error_code error;
  if (!fs::exists(report, error) && lies_below(results, report)) {
    return " would lie where the destination is to be made. Choose another name.";
  }
  return std::nullopt;
}

}  // namespace

std::variant<std::unique_ptr<RecoveryReport>, UsageError> begin_report(
    const CommandLine& line, std::span<const char* const> arguments, const ScanRequest& request) {
  if (line.report.empty()) return nullptr;
  const std::string name = "--report: " + line.report.string();
  if (const auto fault = fault_of_place(line, request)) return UsageError{name + *fault};
  std::unique_ptr<ReportFormat> format;
  if (wants_csv(line.report)) {
    format = std::make_unique<CsvFormat>();
  } else {
    format = std::make_unique<DfxmlFormat>(
        gather_report_facts(arguments, line.device, request.sectors_val));
  }
  auto report =
      std::make_unique<RecoveryReport>(line.report, std::move(format), request.destination);
  const int error = report->begin();
  if (error == EEXIST) {
    return UsageError{name + " exists already and is not replaced. Choose another name."};
  }
  if (error != 0) {
    return UsageError{name + " cannot be written: " + std::generic_category().message(error) + "."};
  }
  return report;
}

}  // namespace norvo
