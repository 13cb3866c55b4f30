// A scan shown in the window: what the worker and the timer ask for is done on the main thread, in
// their order; what the worker must wait for makes it wait.
//
// Made before the controller that reports to it, and attached to the window's parts before the
// first search. The functions of ScanOperations and ReportListener may be called by any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <thread>
#include <utility>

#include "app/MyTableController.h"
#include "engine/ScanOperations.h"
#include "storage/DevicePermissions.h"
#include "wizard/MainThread.h"
#include "wizard/MessageBoxes.h"
#include "wizard/Notices.h"
#include "wizard/Screens.h"
#include "wizard/TimeLeft.h"
#include "wizard/WizardView.h"

namespace norvo {

class WindowOperations final : public ScanOperations, public ReportListener {
 public:
  // Made on the main thread. `now` tells how fast a search goes.
  using Now = std::function<TimeLeft::Clock::time_point()>;
  explicit WindowOperations(MainThread& main_thread, Now now = TimeLeft::Clock::now)
      : main_thread_(main_thread), main_(std::this_thread::get_id()), now_(std::move(now)) {}

  // The window's parts. What is referred to outlives the last search.
  struct Parts {
    MyTableController& controller;
    WizardView& view;
    Screens& screens;
    MessageBoxes& boxes;
    Notices& notices;
    DevicePermissions& permissions;
    std::ostream& out;  // where the reason of a failed open is printed
    std::ostream& log;
    std::function<void(bool searching)> searching_changed;
  };
  void attach(const Parts& parts) { parts_.emplace(parts); }

  // A search begins; the worker of the one before has ended. Main thread.
  void begin_search();

  // The person has turned away from a search whose worker still runs. What that one asks of the
  // window is not done any more; its message boxes are shown. Until the next search begins. Main
  // thread.
  void abandon_search() { abandoned_ = true; }

  // Bytes of the files that the running or last search has reported.
  std::uint64_t found_bytes() const { return found_bytes_; }

  void perform(const ScanOperation& operation) override;
  void Show_MessageBox(TextView message) override;
  void showPermissionAlertAndGuideUser(int error) override;
  void showGenericErrorAlert(int error) override;
  void post_Final_or_Stop_Screen() override;
  bool main_window_is_modal() const override { return false; }
  int run_SaveFile_Info_Window() override;
  void close_SaveFile_Info_Window() override;
  void pause(std::chrono::milliseconds duration) override;
  void file_reported(const std::filesystem::path& path, TextView imageName, TextView image_UID,
                     const ItemReport& report) override;
  void images_emptied() override;

 private:
  void apply(const ScanOperation& operation);
  void return_to_settings();
  void apply_progress(double value);
  void show_clearing_notice(TextView text);
  void apply_screen(const operation::ShowHideScreen& step);
  void call_and_wait(const std::function<void()>& work);
  void post_reload(bool scroll_to_last);
  void reload();

  MainThread& main_thread_;
  const std::thread::id main_;
  const Now now_;
  std::optional<Parts> parts_;
  TimeLeft time_left_;      // main thread
  bool clearing_ = false;   // main thread: the notice of the gallery's clearing stands
  bool abandoned_ = false;  // main thread
  std::atomic<std::uint64_t> found_bytes_{0};
  std::atomic<bool> final_screen_posted_{false};
  std::atomic<bool> reload_posted_{false};
  std::atomic<bool> scroll_to_last_{false};
};

}  // namespace norvo
