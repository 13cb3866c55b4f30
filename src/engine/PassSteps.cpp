#include "engine/PassSteps.h"

#include <cerrno>
#include <utility>

#include "util/Numbers.h"

namespace norvo {
namespace {

void record_outcome(const ScanContext& context, SearchOutcome outcome) {
  if (outcome > context.state.outcome) context.state.outcome = outcome;
}

}  // namespace

void show_pass_label(const ScanContext& context, Pass pass) {
  const Text label =
      pass == Pass::general
          ? u"( Currently performing Search based on: Norvo General Recovery Procedure )"
          : u"( Currently performing Search based on: Norvo Thorough Scanning Algorithm )";
  context.operations.perform(operation::BeginPass{.pass = pass, .label = label});
  context.operations.perform(operation::SetModeLabel{label});
  context.state.Curr_Running_Mode_Info.set(label);
}

void close_device(const ScanContext& context) {
  context.state.pFile_Disk.reset();
}

void settle_range(const ScanContext& context) {
  const ScanRequest& request = context.request;
  std::uint64_t start = 0;
  std::uint64_t end = 0;
  if (request.entire_disk && !request.sector_range) {
    end = request.sectors_val;
  } else if (!request.entire_disk && request.sector_range) {
    start = static_cast<std::uint64_t>(integer64_value(request.start_slider_val));
    end = static_cast<std::uint64_t>(integer64_value(request.end_slider_val));
  }
  ScanState& state = context.state;
  state.start_sector = start;
  state.end_sector = end;
  state.total_sector = end - start;
  context.operations.perform(
      operation::SetProgressLimits{.minimum = 0, .maximum = static_cast<double>(end - start)});
}

int open_device(const ScanContext& context) {
  OpenedDevice opened = context.opener.open(context.request.device_path);
  context.state.pFile_Disk = std::move(opened.device);
  if (context.state.pFile_Disk) return 0;
  return opened.error != 0 ? opened.error : EIO;
}

void end_with_open_failure(const ScanContext& context, int error, const OpenFailureExit& exit) {
  record_outcome(context, SearchOutcome::open_failed);
  ScanOperations& operations = context.operations;
  operations.perform(operation::PrintOpenError{error});
  operations.perform(operation::DecreaseScreenCounter{});
  context.timer.invalidate();
  for (const operation::ShowHideScreen& screen : exit.screens) operations.perform(screen);
  operations.perform(operation::Show{.control = exit.open_folder, .on = false});
  context.state.stop_now = 0;
  if (exit.resets_shown_items) context.results.reset_Shown_Item_Count();
  context.state.stop_screen_already_show = 1;
  if (error == EPERM || error == EACCES) {
    operations.perform(operation::SystemLog{
        u"It appears there's a permission issue. Guiding user to System Settings."});
    operations.showPermissionAlertAndGuideUser(error);
  } else {
    operations.showGenericErrorAlert(error);
  }
}

void disable_settings(const ScanContext& context) {
  using operation::Control;
  context.operations.perform(operation::Enable{.control = Control::Thro_Mode_Chk, .on = false});
  context.operations.perform(operation::Enable{.control = Control::browse_path, .on = false});
}

void show_scanning_help(const ScanContext& context) {
  context.operations.perform(
      operation::SetHelpText{u"\nTo stop recovery, click on \u2018Stop\u2019 Button or please wait "
                             u"for the process to be completed."});
}

void end_with_final_screen(const ScanContext& context) {
  context.state.pass_running = false;
  context.operations.post_Final_or_Stop_Screen();
}

void begin_early_end(const ScanContext& context, SearchOutcome outcome) {
  record_outcome(context, outcome);
  context.state.stop_now = 0;
  close_device(context);
  context.timer.invalidate();
}

void end_with_saving_failure(const ScanContext& context,
                             const std::function<void()>& close_output) {
  begin_early_end(context, SearchOutcome::save_failed);
  close_output();
  context.operations.Show_MessageBox(unable_saving_Msg);
  end_with_final_screen(context);
}

}  // namespace norvo
