// The program with its window: joins the controller, the wizard and the window, and hands what the
// person does to the part that answers for it. Main thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>

#include "app/MyTableController.h"
#include "app/WindowOperations.h"
#include "results/PreviewPane.h"
#include "storage/DevicePermissions.h"
#include "storage/DriveList.h"
#include "wizard/Desktop.h"
#include "wizard/HelpAndContact.h"
#include "wizard/ResultViews.h"
#include "wizard/SavedNotice.h"
#include "wizard/SearchHost.h"
#include "wizard/Wizard.h"
#include "wizard/WizardEvents.h"

namespace norvo {

// What the edition shows in its window.
EditionPresentation presentation_of(const EditionProfile& profile);

class WindowSession final : public WizardEvents, private SearchHost, private DestinationFacts {
 public:
  // What is referred to outlives the session.
  struct Setting {
    MyTableController& controller;
    WindowOperations& operations;
    DriveList& drives;
    WizardView& view;
    MainThread& main_thread;
    AlertPanel& panel;
    Notices& notices;
    Desktop& desktop;
    PreviewPane& preview;
    DevicePermissions& permissions;
    std::filesystem::path resource_folder;
    // The raw node of a drive's identifier.
    std::function<std::filesystem::path(TextView disk_identifier)> raw_node;
    // Whether a folder lies on a device.
    std::function<bool(const std::filesystem::path& folder, const std::filesystem::path& device)>
        lies_on_device;
    std::function<void(bool searching)> searching_changed;
    // Whether a dialog keeps the person from the window.
    std::function<bool()> modal_session_is_open;
    std::ostream& out;
    std::ostream& log;
  };
  explicit WindowSession(const Setting& setting);

  // Stops a search that still runs and waits for its end. The main thread takes no more work by
  // then: the worker would wait for it in vain.
  ~WindowSession() override;
  WindowSession(const WindowSession&) = delete;
  WindowSession& operator=(const WindowSession&) = delete;

  // Connects the interface: loads the signature tables, builds the drive list, shows screen 1.
  void set_up();

  // A button of the contact dialog or of a notice, by its name.
  void contact_clicked(std::string_view name) { help_.contact_clicked(name); }

  // A preview that was asked for is there. A stop that was asked for meanwhile leads to the final
  // screen of its search a little later, so that the preview is seen.
  void preview_shown();

  // What the notice at the end of the last search says.
  SavedNotice saved_notice() const;

  // Whether a search runs, or waits until the one before has ended.
  bool is_searching() const { return searching_; }

  // Whether the worker of a search has not told of its end. It can wait for its drive long after
  // the final screen of its search.
  bool has_worker() const { return worker_runs_; }

  void clicked(Control control) override;
  void changed(Control control) override;
  void ticked(std::size_t row, bool on) override { wizard_.tick(row, on); }
  void double_clicked(Control view, std::size_t index) override;
  void selection_changed(Control view) override;
  void removed(Control view, const std::vector<std::size_t>& indexes) override;
  void moved(Control view, const std::vector<std::size_t>& indexes,
             std::size_t destination) override;
  void disk_image_chosen(const std::filesystem::path& image) override;
  void windowShouldClose() override;

 private:
  void clear_stop_now() override;
  void hand_over_selection() override;
  void Check_Have_Permissions(TextView disk_identifier) override;
  void start_search(const SearchSettings& settings) override;

  void stop_usb_disk();
  void path_typed();

  bool lies_on_drive(const std::filesystem::path& folder, TextView disk_identifier) override;
  std::optional<std::uint64_t> free_space(const std::filesystem::path& folder) override;
  std::uint64_t found_so_far(TextView disk_identifier) override;

  std::filesystem::path device_of(TextView disk_identifier) const;
  void begin_search(const SearchSettings& settings);
  void worker_ended();
  void searching_changed(bool searching);

  Setting setting_;
  const EditionPresentation edition_;
  bool searching_ = false;
  SearchSettings searched_;  // of the last search
  bool worker_runs_ = false;
  std::optional<SearchSettings> waiting_;  // of the search that begins when the worker has ended
  std::uint64_t search_number_ = 0;
  std::uint64_t path_edits_ = 0;
  MessageBoxes boxes_;
  DriveScreen drive_screen_;
  SectorRangeControls range_;
  Destination destination_;
  Wizard wizard_;
  ResultViews results_;
  HelpAndContact help_;
};

}  // namespace norvo
