// What a scan asks of whoever shows it: the window, the terminal or a test.
//
// The operations keep their order. Those of the first group return at once and may be called from
// the worker, the timer and the main thread; the others say what they wait for.
#pragma once

#include <chrono>
#include <cstdint>
#include <variant>

#include "util/Text.h"

namespace norvo {

// "GEN" and "THD": the General pass and the Thorough pass.
enum class Pass { general, thorough };

namespace operation {

// A pass begins, and this is its mode label. The label alone does not tell: the timer repeats it.
struct BeginPass {
  Pass pass = Pass::general;
  Text label;
  bool operator==(const BeginPass&) const = default;
};
struct SetModeLabel {
  Text text;
  bool operator==(const SetModeLabel&) const = default;
};
struct SetSectorLabel {
  Text text;
  bool operator==(const SetSectorLabel&) const = default;
};
struct SetHelpText {
  Text text;
  bool operator==(const SetHelpText&) const = default;
};
// Progress bar, in sectors.
struct SetProgressLimits {
  double minimum = 0;
  double maximum = 0;
  bool operator==(const SetProgressLimits&) const = default;
};
struct SetProgressValue {
  double value = 0;
  bool operator==(const SetProgressValue&) const = default;
};
struct SetProgressDeterminate {
  bool operator==(const SetProgressDeterminate&) const = default;
};
// The gallery's zoom: the slider's value and the browser's own.
struct SetZoom {
  double slider = 0;
  double browser = 0;
  bool operator==(const SetZoom&) const = default;
};
// The notice that the shown items are cleared: its text is set and it becomes visible.
struct ShowClearingNotice {
  Text text;
  bool operator==(const ShowClearingNotice&) const = default;
};
// The preview box's title.
struct SetPreviewTitle {
  Text text;
  bool operator==(const SetPreviewTitle&) const = default;
};
// No item of the file window counts as previewed last.
struct ForgetPreviousSelection {
  bool operator==(const ForgetPreviousSelection&) const = default;
};
// Prints the reason why the device could not be opened.
struct PrintOpenError {
  int error = 0;
  bool operator==(const PrintOpenError&) const = default;
};
// A line for the system log.
struct SystemLog {
  Text line;
  bool operator==(const SystemLog&) const = default;
};
struct DecreaseScreenCounter {
  bool operator==(const DecreaseScreenCounter&) const = default;
};

// Controls that a scan enables or disables, and shows or hides.
enum class Control {
  Thro_Mode_Chk,
  browse_path,
  back_btn,
  open_folder,
  open_folder_Sig,
  Mode_label,
  sector_label,
  Progress_Horz,
  stop_scan,
  zoom_label,
  zoom_slider,
};
struct Enable {
  Control control;
  bool on = false;
  bool operator==(const Enable&) const = default;
};
struct Show {
  Control control;
  bool on = false;
  bool operator==(const Show&) const = default;
};

// The wizard's screens as a scan that could not open its device switches them; `hide` is the flag
// of show_hide_2_screen and its siblings.
enum class Screen { screen_2, screen_3_Photo, screen_3_RawFile, screen_4_RawFile };
struct ShowHideScreen {
  Screen screen;
  bool hide = false;
  bool operator==(const ShowHideScreen&) const = default;
};

}  // namespace operation

using ScanOperation =
    std::variant<operation::BeginPass, operation::SetModeLabel, operation::SetSectorLabel,
                 operation::SetHelpText, operation::SetProgressLimits, operation::SetProgressValue,
                 operation::SetProgressDeterminate, operation::SetZoom,
                 operation::ShowClearingNotice, operation::SetPreviewTitle,
                 operation::ForgetPreviousSelection, operation::PrintOpenError,
                 operation::SystemLog, operation::DecreaseScreenCounter, operation::Enable,
                 operation::Show, operation::ShowHideScreen>;

class ScanOperations {
 public:
  virtual ~ScanOperations() = default;

  virtual void perform(const ScanOperation& operation) = 0;

  // An information box whose text gets a line break in front; returns when it was closed. Any
  // thread but never while the main thread waits for the caller.
  virtual void Show_MessageBox(TextView message) = 0;

  // The alerts for a device that cannot be opened; `error` is the errno. Return when closed.
  virtual void showPermissionAlertAndGuideUser(int error) = 0;
  virtual void showGenericErrorAlert(int error) = 0;

  // Asks the main thread to run Final_or_Stop_Screen; returns at once. May be asked twice for one
  // search.
  virtual void post_Final_or_Stop_Screen() = 0;

  // Whether a dialog holds the main window, so that the final screen must wait for it.
  virtual bool main_window_is_modal() const = 0;

  // The window that says where the files are. Main thread; returns its code when it was closed, 1
  // when by its button, upon which close_SaveFile_Info_Window() follows.
  virtual int run_SaveFile_Info_Window() = 0;
  virtual void close_SaveFile_Info_Window() = 0;

  // Blocks the worker for the pause in which the person can read a notice; none where nobody does.
  virtual void pause(std::chrono::milliseconds duration) = 0;
};

// What the message boxes say when recovered data cannot be saved.
inline constexpr TextView unable_saving_Msg =
    u"Unable to continue saving recovered data.\n\nEither Destination Drive is inaccessible or "
    u"there is no free space available in drive to save recovered data.";

}  // namespace norvo
