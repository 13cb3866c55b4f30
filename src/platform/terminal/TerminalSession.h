// A search shown on a terminal: what the window would show becomes lines, and nothing waits for an
// answer. The main thread waits for the worker and then shows the final screen.
#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>

#include "app/MyTableController.h"
#include "engine/ScanOperations.h"
#include "platform/terminal/EventWriter.h"
#include "platform/terminal/FoundTable.h"
#include "platform/terminal/RecoveryReport.h"

namespace norvo {

// Where a session writes. The streams outlive it.
struct TerminalOutput {
  std::ostream& out;
  std::ostream& err;
  bool json = false;           // events on `out` and nothing else there
  bool progress = true;        // the progress line on `err`
  bool rewrites_line = false;  // `err` is a terminal: the progress line stays in its place
};

class TerminalSession final : public ScanOperations, public ReportListener {
 public:
  explicit TerminalSession(const TerminalOutput& output) : output_(output), events_(output.out) {}

  // Runs a search of `controller` to its end and returns how it ended. `report`, unless it is null,
  // tells of every file, and is ended. Nothing of the progress is written after it. Once; main
  // thread.
  SearchOutcome run(MyTableController& controller, const ScanRequest& request,
                    RecoveryReport* report = nullptr);

  // What was found, for the summary. After run().
  const FoundTable& found() const { return found_; }

  void perform(const ScanOperation& operation) override;
  void Show_MessageBox(TextView message) override;
  void showPermissionAlertAndGuideUser(int error) override;
  void showGenericErrorAlert(int error) override;
  void post_Final_or_Stop_Screen() override;
  bool main_window_is_modal() const override { return false; }
  int run_SaveFile_Info_Window() override { return 1; }
  void close_SaveFile_Info_Window() override {}
  void pause(std::chrono::milliseconds /*duration*/) override {}
  void file_reported(const std::filesystem::path& path, TextView imageName, TextView image_UID,
                     const ItemReport& report) override;
  void images_emptied() override {}

 private:
  void show_progress(const Text& label);
  void write_error_line(const std::string& line);
  void tell(const std::optional<std::string>& fault);
  void report_device_error(int error, bool permission);

  TerminalOutput output_;
  EventWriter events_;
  FoundTable found_;           // worker thread, then main thread
  Pass pass_ = Pass::general;  // worker thread
  RecoveryReport* report_ = nullptr;

  std::mutex line_mutex_;  // guards the progress line and `err`
  std::string shown_label_;
  std::size_t shown_width_ = 0;
  bool progress_ended_ = false;  // what comes after it is the summary

  std::atomic<bool> final_screen_posted_{false};
};

}  // namespace norvo
