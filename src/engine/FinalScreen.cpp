#include "engine/FinalScreen.h"

#include <exception>

namespace norvo {
namespace {

using operation::Control;

void show(ScanOperations& operations, Control control, bool on) {
  operations.perform(operation::Show{.control = control, .on = on});
}

void enable(ScanOperations& operations, Control control) {
  operations.perform(operation::Enable{.control = control, .on = true});
}

void run_steps(const ScanRequest& request, ScanState& state, ScanOperations& operations) {
  state.stop_now = 1;
  state.stop_screen_already_show = 1;
  operations.perform(operation::SetHelpText{
      u"\nTo select another disk for recovery, click on \u2018Back\u2019 Button."});
  if (!state.pass_running) {
    state.pFile_Disk.reset();
    state.pFile_op.abandon();
  }
  for (const Control control :
       {Control::Mode_label, Control::Progress_Horz, Control::sector_label, Control::stop_scan}) {
    show(operations, control, false);
  }
  if (operations.run_SaveFile_Info_Window() == 1) operations.close_SaveFile_Info_Window();
  // A pass that waits for its drive has yet to see the request, and takes it back itself.
  if (!state.pass_running) state.stop_now = 0;
  const bool photo_search = request.Recovery_MODE == 0;
  show(operations, Control::zoom_label, photo_search);
  show(operations, Control::zoom_slider, photo_search);
  show(operations, photo_search ? Control::open_folder : Control::open_folder_Sig, true);
  enable(operations, Control::back_btn);
  enable(operations, Control::browse_path);
  enable(operations, Control::Thro_Mode_Chk);
}

}  // namespace

void Final_or_Stop_Screen(const ScanRequest& request, ScanState& state,
                          ScanOperations& operations) {
  try {
    run_steps(request, state, operations);
  } catch (const std::exception& reason) {
    operations.Show_MessageBox(text_from_utf8_lossy(reason.what()));
  }
}

bool stop_usb_disk(AlertPanel& panel, ScanState& state) {
  const AlertAnswer answer = panel.run({.message = u"\nDo you want to stop searching?",
                                        .default_button = u"Yes",
                                        .alternate_button = {},
                                        .other_button = u"No",
                                        .informative_text = {}});
  if (answer != AlertAnswer::default_button) return false;
  state.stop_now = 1;
  return true;
}

}  // namespace norvo
