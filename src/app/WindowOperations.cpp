#include "app/WindowOperations.h"

#include <exception>
#include <system_error>
#include <utility>

#include "util/Diagnostics.h"

namespace norvo {
namespace {

Control control_of(operation::Control control) {
  switch (control) {
    case operation::Control::Thro_Mode_Chk:
      return Control::Thro_Mode_Chk;
    case operation::Control::browse_path:
      return Control::browse_path;
    case operation::Control::back_btn:
      return Control::back_btn;
    case operation::Control::open_folder:
      return Control::open_folder;
    case operation::Control::open_folder_Sig:
      return Control::open_folder_Sig;
    case operation::Control::Mode_label:
      return Control::Mode_label;
    case operation::Control::sector_label:
      return Control::sector_label;
    case operation::Control::Progress_Horz:
      return Control::Progress_Horz;
    case operation::Control::stop_scan:
      return Control::stop_scan;
    case operation::Control::zoom_label:
      return Control::zoom_label;
    case operation::Control::zoom_slider:
      return Control::zoom_slider;
  }
  return Control::help_info;
}

template <typename... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};
// Not every compiler guesses it.
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

}  // namespace

void WindowOperations::begin_search() {
  abandoned_ = false;
  final_screen_posted_ = false;
  found_bytes_ = 0;
  parts_->searching_changed(true);
}

void WindowOperations::perform(const ScanOperation& operation) {
  // What the worker has posted before the main thread's own operations was done before them.
  if (std::this_thread::get_id() == main_) return apply(operation);
  main_thread_.post([this, operation] {
    if (!abandoned_) apply(operation);
  });
}

void WindowOperations::apply(const ScanOperation& operation) {
  WizardView& view = parts_->view;
  std::visit(
      Overloaded{
          [](const operation::BeginPass&) {},
          [&](const operation::SetModeLabel& step) {
            view.set_text(Control::Mode_label, step.text);
          },
          [&](const operation::SetSectorLabel& step) {
            view.set_text(Control::sector_label, step.text);
          },
          [&](const operation::SetHelpText& step) { view.set_text(Control::help_info, step.text); },
          [&](const operation::SetProgressLimits& step) {
            view.set_range(Control::Progress_Horz, step.minimum, step.maximum);
            time_left_.begin(step.maximum - step.minimum);
          },
          [&](const operation::SetProgressValue& step) { apply_progress(step.value); },
          [&](const operation::SetProgressDeterminate&) {
            view.set_value(Control::Progress_Horz, view.value(Control::Progress_Horz));
          },
          [&](const operation::SetZoom& step) {
            view.set_value(Control::zoom_slider, step.slider);
            view.set_value(Control::imageBrowser, step.browser);
          },
          [&](const operation::ShowClearingNotice& step) { show_clearing_notice(step.text); },
          [&](const operation::SetPreviewTitle& step) {
            view.set_text(Control::QuickLook_View_Box, step.text);
          },
          [&](const operation::ForgetPreviousSelection&) {
            parts_->controller.wizard.Prev_Index = WizardState::no_previous_selection;
          },
          [&](const operation::PrintOpenError& step) {
            parts_->out << "err no : " << step.error << '\n' << std::flush;
          },
          [&](const operation::SystemLog& step) {
            parts_->log << utf8_from_text(step.line) << '\n' << std::flush;
          },
          [&](const operation::DecreaseScreenCounter&) { return_to_settings(); },
          [&](const operation::Enable& step) {
            view.set_enabled(control_of(step.control), step.on);
          },
          [&](const operation::Show& step) { view.set_hidden(control_of(step.control), !step.on); },
          [&](const operation::ShowHideScreen& step) { apply_screen(step); },
      },
      operation);
}

// A drive that opened for the General pass may refuse the Thorough pass, which then leaves controls
// disabled that only a final screen would enable.
void WindowOperations::return_to_settings() {
  --parts_->controller.wizard.screen_counter;
  for (const Control control : {Control::browse_path, Control::Thro_Mode_Chk}) {
    parts_->view.set_enabled(control, true);
  }
}

void WindowOperations::apply_progress(double value) {
  WizardView& view = parts_->view;
  view.set_value(Control::Progress_Horz, value);
  time_left_.add(now_(), value);
  const Text text = time_left_.text();
  view.set_text(Control::time_left, text);
  // The timer goes on after the end of a search, when the stop button is gone.
  const bool searching = parts_->controller.state().stop_screen_already_show == 0;
  view.set_hidden(Control::time_left, text.empty() || !searching);
}

// The label stays until the person goes back; the notice stands until the gallery is empty.
void WindowOperations::show_clearing_notice(TextView text) {
  parts_->view.set_text(Control::ClearThumbnail_Label, text);
  parts_->view.set_hidden(Control::ClearThumbnail_Label, false);
  if (parts_->controller.wizard.Recovery_MODE != 0) return;
  clearing_ = true;
  parts_->notices.show_ClearPreview();
}

void WindowOperations::images_emptied() {
  post_reload(false);
  main_thread_.post([this] {
    if (std::exchange(clearing_, false)) parts_->notices.hide_ClearPreview();
  });
}

// A screen is hidden by the flag and shown without it.
void WindowOperations::apply_screen(const operation::ShowHideScreen& step) {
  const Screen flag = step.hide ? Screen::hide : Screen::show;
  Screens& screens = parts_->screens;
  switch (step.screen) {
    case operation::Screen::screen_2:
      return screens.show_hide_2_screen(flag);
    case operation::Screen::screen_3_Photo:
      return screens.show_hide_3_screen_Photo(flag);
    case operation::Screen::screen_3_RawFile:
      return screens.show_hide_3_screen_RawFile(flag);
    case operation::Screen::screen_4_RawFile:
      return screens.show_hide_4_screen_RawFile(flag);
  }
}

void WindowOperations::Show_MessageBox(TextView message) {
  parts_->boxes.Show_MessageBox(message);
}

void WindowOperations::call_and_wait(const std::function<void()>& work) {
  try {
    main_thread_.call_and_wait(work);
  } catch (const std::exception& reason) {
    Show_NSLog_Message(text_from_utf8_lossy(reason.what()));
  }
}

void WindowOperations::showPermissionAlertAndGuideUser(int /*error*/) {
  call_and_wait([this] {
    if (abandoned_) return;
    parts_->searching_changed(false);
    parts_->permissions.showPermissionAlertAndGuideUser();
  });
}

void WindowOperations::showGenericErrorAlert(int error) {
  call_and_wait([this, error] {
    if (abandoned_) return;
    parts_->searching_changed(false);
    parts_->permissions.showGenericErrorAlert({error, std::generic_category()});
  });
}

// A stopped pass posts the screen, and the worker may post it again before it has begun; shown
// twice it would tell the person twice. A pass that waits for its drive meanwhile must not change
// the screens that the person goes on to.
void WindowOperations::post_Final_or_Stop_Screen() {
  if (final_screen_posted_.exchange(true)) return;
  main_thread_.post([this] {
    if (parts_->controller.state().pass_running) abandon_search();
    parts_->searching_changed(false);
    parts_->view.set_hidden(Control::time_left, true);
    parts_->controller.Final_or_Stop_Screen();
  });
}

int WindowOperations::run_SaveFile_Info_Window() {
  return parts_->notices.run_SaveFile_Info();
}

void WindowOperations::close_SaveFile_Info_Window() {
  parts_->notices.close_SaveFile_Info();
}

// A stop ends the pause: the person need not wait for what is then left out.
void WindowOperations::pause(std::chrono::milliseconds duration) {
  constexpr std::chrono::milliseconds step{50};
  const auto end = std::chrono::steady_clock::now() + duration;
  while (parts_->controller.state().stop_now == 0 && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(step);
  }
}

void WindowOperations::file_reported(const std::filesystem::path& path, TextView /*imageName*/,
                                     TextView /*image_UID*/, const ItemReport& report) {
  std::error_code error;
  const std::uintmax_t bytes = std::filesystem::file_size(path, error);
  if (!error) found_bytes_ += bytes;
  if (report.item_added) post_reload(report.scroll_to_last);
}

// A burst of reports is one redraw.
void WindowOperations::post_reload(bool scroll_to_last) {
  if (scroll_to_last) scroll_to_last_ = true;
  if (!parts_ || reload_posted_.exchange(true)) return;
  main_thread_.post([this] { reload(); });
}

void WindowOperations::reload() {
  reload_posted_ = false;
  const bool scroll_to_last = scroll_to_last_.exchange(false);
  WizardView& view = parts_->view;
  if (parts_->controller.wizard.Recovery_MODE == 0) {
    view.reload(Control::imageBrowser, scroll_to_last);
    return;
  }
  view.reload(Control::imageBrowser_2, scroll_to_last);
  view.reload(Control::idSigTableView);
}

}  // namespace norvo
