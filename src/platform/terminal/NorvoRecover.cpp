#include "platform/terminal/NorvoRecover.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/MyTableController.h"
#include "engine/OutputFolders.h"
#include "platform/System.h"
#include "platform/terminal/CommandLine.h"
#include "platform/terminal/DriveReport.h"
#include "platform/terminal/ExitStatus.h"
#include "platform/terminal/OptionValues.h"
#include "platform/terminal/ReportSetUp.h"
#include "platform/terminal/SignatureReport.h"
#include "platform/terminal/TerminalSession.h"
#include "platform/terminal/TypeTable.h"
#include "platform/terminal/Version.h"
#include "sigdb/FileTypeCheckList.h"
#include "wizard/SectorRange.h"

namespace norvo {
namespace {

int refuse(const NorvoRecoverSetting& setting, const std::string& message) {
  setting.err << message << '\n';
  return exit_status::wrong_usage;
}

int status_of(SearchOutcome outcome) {
  switch (outcome) {
    case SearchOutcome::completed:
      return exit_status::completed;
    case SearchOutcome::stopped:
      return exit_status::stopped;
    case SearchOutcome::save_failed:
      return exit_status::save_failed;
    case SearchOutcome::open_failed:
      return exit_status::open_failed;
  }
  return exit_status::wrong_usage;
}

// A device whose size cannot be told still goes to the search, which reports why it cannot be
// opened; only then there is no drive whose range could be checked.
std::variant<ScanRequest, UsageError> make_request(const CommandLine& line,
                                                   const EditionProfile& profile) {
  const DeviceSize size = device_size(line.device);
  ScanRequest request;
  request.Recovery_MODE = line.Recovery_MODE;
  request.device_path = line.device;
  request.sectors_val = size.bytes >> sector_shift;
  request.thorough = line.thorough;
  request.destination = line.destination;
  request.Rec_Folder_Name = profile.Rec_Folder_Name;
  if (line.start_sector && size.error == 0) {
    const auto fault =
        check_sector_range(*line.start_sector, *line.end_sector, decimal(request.sectors_val));
    if (fault) return UsageError{utf8_from_text(fault->message)};
    request.entire_disk = false;
    request.sector_range = true;
    request.start_slider_val = *line.start_sector;
    request.end_slider_val = *line.end_sector;
  }
  return request;
}

ModeTables tables_of_search_type(const SignatureTables& tables, int Recovery_MODE) {
  return Recovery_MODE == 0 ? ModeTables{tables.Ext_Array, tables.Adv_Ext_Array}
                            : tables_of_mode(tables, Recovery_MODE);
}

void warn_without_signatures(const ModeTables& tables, const std::filesystem::path& signatures,
                             std::ostream& err) {
  if (!tables.general.empty() || !tables.thorough.empty()) return;
  err << "Warning: no signatures could be read from " << signatures.string() << ".\n";
}

void warn_before_search(const CommandLine& line, std::ostream& err) {
  if (lies_on_device(line.destination, line.device)) {
    err << "Warning: the destination lies on the device that is searched. What is saved there can "
           "overwrite what is still to be found; choose a folder on another drive.\n";
  }
}

void show_summary(const TerminalSession& session, const ScanRequest& request, SearchOutcome outcome,
                  std::ostream& out) {
  if (outcome == SearchOutcome::open_failed) return;
  if (outcome == SearchOutcome::stopped) out << "Stopped. Found up to there:\n";
  out << session.found().text();
  if (session.found().files() == 0) return;
  out << "Saved in "
      << (request.destination / search_folder(request.Rec_Folder_Name, request.Recovery_MODE))
             .string()
      << '\n'
      << std::flush;
}

// What is wrong with the name of the call's edition, or nothing.
std::optional<std::string> edition_fault(const CommandLine& line, const EditionProfile& profile) {
  if (profile.is_edition()) return std::nullopt;
  std::vector<std::string> keywords;
  for (const TextView keyword : edition_keywords()) keywords.push_back(utf8_from_text(keyword));
  return "\"" + utf8_from_text(line.edition) + "\" names no edition: its name holds none of " +
         listed(keywords, "and") + ".";
}

// What is wrong with the call's edition or search type, or nothing.
std::optional<std::string> search_type_fault(const CommandLine& line,
                                             const EditionProfile& profile) {
  if (auto fault = edition_fault(line, profile)) return fault;
  if (profile.has_search_type(line.Recovery_MODE)) return std::nullopt;
  return "The edition \"" + utf8_from_text(line.edition) + "\" does not have this search type.";
}

const std::filesystem::path& signature_folder(const CommandLine& line,
                                              const NorvoRecoverSetting& setting) {
  return line.signatures.empty() ? setting.shipped_signatures : line.signatures;
}

// Ticks the wanted types. What is wrong with them, or nothing.
std::optional<std::string> tick_types(FileTypeCheckList& list,
                                      const std::optional<std::vector<Text>>& types) {
  if (types) {
    list.Select_Unselect_Check(false);
    for (const Text& type : *types) {
      const auto& rows = list.rows();
      const auto row = std::find_if(rows.begin(), rows.end(), [&](const FileTypeEntry& entry) {
        return entry.Extension == type;
      });
      if (row == rows.end()) {
        return "There is no type \"" + utf8_from_text(type) + "\"; see --list-types.";
      }
      list.set_State(static_cast<std::size_t>(row - rows.begin()), true);
    }
  }
  if (list.Check_For_One_Extension_Selection()) return std::nullopt;
  return "Please select atleast one extension type.";
}

int list_types(const CommandLine& line, const NorvoRecoverSetting& setting) {
  const EditionProfile profile = select_edition(line.edition);
  if (const auto fault = search_type_fault(line, profile)) return refuse(setting, *fault);
  SignatureTables tables;
  tables.load(signature_folder(line, setting), profile.signature_files);
  FileTypeCheckList list;
  const ModeTables types = tables_of_search_type(tables, line.Recovery_MODE);
  warn_without_signatures(types, signature_folder(line, setting), setting.err);
  list.build(types);
  report_types(list, line.json, setting.out);
  return 0;
}

int list_drives(const CommandLine& line, const NorvoRecoverSetting& setting) {
  const EditionProfile profile = select_edition(line.edition);
  if (const auto fault = edition_fault(line, profile)) return refuse(setting, *fault);
  DriveList list(setting.disk_utility, profile.USE_HARD_DISK);
  list.Reload_Drive_list_Function();
  report_drives(list, profile.USE_HARD_DISK, line.json, setting.out, setting.err);
  return 0;
}

int search(const CommandLine& line, std::span<const char* const> arguments,
           const NorvoRecoverSetting& setting) {
  std::unique_ptr<RecoveryReport> report;  // open files refer to it until the controller is gone
  TerminalSession session({.out = setting.out,
                           .err = setting.err,
                           .json = line.json,
                           .progress = !line.quiet,
                           .rewrites_line = setting.err_is_terminal});
  MyTableController controller(line.edition, setting.opener, session, session);
  if (const auto fault = search_type_fault(line, controller.profile())) {
    return refuse(setting, *fault);
  }
  const auto request = make_request(line, controller.profile());
  if (const auto* fault = std::get_if<UsageError>(&request)) return refuse(setting, fault->message);
  controller.load_signature_tables(signature_folder(line, setting));
  warn_without_signatures(tables_of_search_type(controller.tables(), line.Recovery_MODE),
                          signature_folder(line, setting), setting.err);
  if (line.Recovery_MODE != 0) {
    controller.check_list().build(tables_of_mode(controller.tables(), line.Recovery_MODE));
    const auto fault = tick_types(controller.check_list(), line.types);
    if (fault) return refuse(setting, *fault);
  }
  auto begun = begin_report(line, arguments, std::get<ScanRequest>(request));
  if (const auto* fault = std::get_if<UsageError>(&begun)) return refuse(setting, fault->message);
  report = std::get<std::unique_ptr<RecoveryReport>>(std::move(begun));
  warn_before_search(line, setting.err);
  if (setting.publish_stop_flag != nullptr) setting.publish_stop_flag(&controller.state().stop_now);
  if (line.Recovery_MODE != 0) controller.hand_over_selection(line.Recovery_MODE);
  const SearchOutcome outcome =
      session.run(controller, std::get<ScanRequest>(request), report.get());
  if (setting.publish_stop_flag != nullptr) setting.publish_stop_flag(nullptr);
  if (!line.json) show_summary(session, std::get<ScanRequest>(request), outcome, setting.out);
  const int status = status_of(outcome);
  return status == exit_status::completed && report && !report->is_whole()
             ? exit_status::report_lost
             : status;
}

int perform(const CommandLine& line, std::span<const char* const> arguments,
            const NorvoRecoverSetting& setting) {
  switch (line.action) {
    case CommandLine::Action::help:
      setting.out << help_text();
      return 0;
    case CommandLine::Action::version:
      setting.out << "norvo-recover " << program_version << '\n';
      return 0;
    case CommandLine::Action::list_types:
      return list_types(line, setting);
    case CommandLine::Action::list_drives:
      return list_drives(line, setting);
    case CommandLine::Action::check_signatures:
      return report_signature_faults(line.checked_signatures, setting.out, setting.err);
    case CommandLine::Action::search:
      return search(line, arguments, setting);
  }
  return exit_status::wrong_usage;
}

}  // namespace

int norvo_recover(std::span<const char* const> arguments, const NorvoRecoverSetting& setting) {
  const auto parsed = parse_command_line(arguments);
  if (const auto* fault = std::get_if<UsageError>(&parsed)) {
    return refuse(setting, fault->message + "\nTry norvo-recover --help.");
  }
  const int status = perform(std::get<CommandLine>(parsed), arguments, setting);
  // Whoever reads it may be gone in the middle of a search, which goes on all the same.
  if (setting.out.flush()) return status;
  setting.err << "Not all of the output could be written: standard output took no more.\n";
  return status == exit_status::completed ? exit_status::output_lost : status;
}

}  // namespace norvo
