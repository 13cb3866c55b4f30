#include "platform/terminal/TerminalSession.h"

#include <system_error>
#include <type_traits>
#include <variant>

#include "engine/Progress.h"

namespace norvo {
namespace {

// The window's permission alert names its system's settings; a terminal can say what to type.
std::string permission_advice(int error) {
  return std::string("The device could not be opened: ") + std::generic_category().message(error) +
         ".\nReading a raw device needs administrator rights: run the same command with sudo.";
}

}  // namespace

SearchOutcome TerminalSession::run(MyTableController& controller, const ScanRequest& request,
                                   RecoveryReport* report) {
  report_ = report;
  controller.start_search(request, report);
  controller.wait_for_worker();
  if (report_ != nullptr) tell(report_->end());
  // The window's timer goes on after a search that ran to its end; here its last word is said at
  // once.
  const SearchOutcome outcome = controller.state().outcome;
  if (outcome == SearchOutcome::completed) timerTickSetLabel(controller.state(), *this);
  if (final_screen_posted_) controller.Final_or_Stop_Screen();
  {
    const std::lock_guard lock(line_mutex_);
    if (shown_width_ != 0) output_.err << '\n' << std::flush;
    shown_width_ = 0;
    progress_ended_ = true;
  }
  if (output_.json) events_.final(outcome);
  return outcome;
}

void TerminalSession::perform(const ScanOperation& operation) {
  std::visit(
      [this](const auto& step) {
        using Step = std::decay_t<decltype(step)>;
        if constexpr (std::is_same_v<Step, operation::BeginPass>) {
          pass_ = step.pass;
          if (output_.json) events_.pass(step.pass, step.label);
        } else if constexpr (std::is_same_v<Step, operation::SetSectorLabel>) {
          show_progress(step.text);
        } else if constexpr (std::is_same_v<Step, operation::ShowClearingNotice>) {
          if (output_.json) events_.clear(step.text);
        } else if constexpr (std::is_same_v<Step, operation::PrintOpenError>) {
          if (!output_.json) output_.out << "err no : " << step.error << '\n' << std::flush;
        } else if constexpr (std::is_same_v<Step, operation::SystemLog>) {
          write_error_line(utf8_from_text(step.line));
        }
      },
      operation);
}

void TerminalSession::Show_MessageBox(TextView message) {
  if (output_.json) events_.message(u"\n" + Text(message));
  write_error_line(utf8_from_text(message));
}

void TerminalSession::showPermissionAlertAndGuideUser(int error) {
  report_device_error(error, true);
  write_error_line(permission_advice(error));
}

void TerminalSession::showGenericErrorAlert(int error) {
  report_device_error(error, false);
  write_error_line(std::string("The device could not be opened: ") +
                   std::generic_category().message(error) + ".");
}

void TerminalSession::post_Final_or_Stop_Screen() {
  final_screen_posted_ = true;
}

void TerminalSession::file_reported(const std::filesystem::path& path, TextView imageName,
                                    TextView image_UID, const ItemReport& /*report*/) {
  if (output_.json) events_.file(pass_, path, imageName, image_UID);
  if (report_ != nullptr) tell(report_->file_reported(pass_, path));
  std::error_code error;
  const std::uintmax_t bytes = std::filesystem::file_size(path, error);
  if (error) return;
  const std::string extension = path.extension().native();
  found_.add(pass_, extension.empty() ? "" : extension.substr(1), bytes);
}

void TerminalSession::tell(const std::optional<std::string>& fault) {
  if (fault) write_error_line(*fault);
}

void TerminalSession::report_device_error(int error, bool permission) {
  if (output_.json) events_.device_error(error, permission);
}

// On a terminal the line is rewritten in place; in a log it is repeated only when the percentage
// has changed, or else an hour's search would write thousands of lines.
void TerminalSession::show_progress(const Text& label) {
  if (!output_.progress) return;
  const std::string line = utf8_from_text(label);
  const std::lock_guard lock(line_mutex_);
  // The timer goes on while the summary is written, which takes long where nobody reads it.
  if (progress_ended_) return;
  if (output_.rewrites_line) {
    const std::size_t width = line.size();
    output_.err << '\r' << line << std::string(shown_width_ > width ? shown_width_ - width : 0, ' ')
                << std::flush;
    shown_width_ = width;
    return;
  }
  const std::string percentage = line.substr(line.find('('));
  if (percentage == shown_label_) return;
  shown_label_ = percentage;
  output_.err << line << '\n' << std::flush;
}

void TerminalSession::write_error_line(const std::string& line) {
  const std::lock_guard lock(line_mutex_);
  if (shown_width_ != 0) output_.err << '\n';
  shown_width_ = 0;
  output_.err << line << '\n' << std::flush;
}

}  // namespace norvo
