// The program with its window, put together: the controller, the lists, the window and its dialogs,
// and the session that joins them. Main thread.
#pragma once

#include <QApplication>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>

#include "app/DeviceOpenerProbe.h"
#include "app/WindowSession.h"
#include "platform/qt/DecoderThumbnails.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/PreviewBox.h"
#include "platform/qt/QtAlertPanel.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtMainThread.h"
#include "platform/qt/QtNotices.h"
#include "wizard/SleepGuard.h"

namespace norvo {

// What the program gets from its bundle and its system.
struct WindowSurroundings {
  Text bundle_name;
  Text bundle_identifier;
  Text process_name;  // file name of the executable
  std::filesystem::path resource_folder;
  std::filesystem::path decoder;  // the program norvo-decoder
  std::filesystem::path player;   // the program norvo-player
  DeviceOpener& opener;           // outlives the program
  std::unique_ptr<DiskUtility> disk_utility;
  std::unique_ptr<SleepGuard> sleep_guard;
  std::unique_ptr<PrivacyReset> privacy_reset;  // null where the system has no such permissions
  Text permission_help;
  std::function<std::filesystem::path(TextView disk_identifier)> raw_node;
  std::function<bool(const std::filesystem::path& folder, const std::filesystem::path& device)>
      lies_on_device;
  std::ostream& log;  // the system log; outlives the program
};

class WindowProgram {
 public:
  // An application object exists.
  explicit WindowProgram(WindowSurroundings surroundings);

  // Ends a search that still runs, and waits for it.
  ~WindowProgram();

  // Shows the window with the first screen.
  void show();

  // Puts a disk image into the drive list, or says why it cannot be searched.
  void open_disk_image(const std::filesystem::path& image) { session_.disk_image_chosen(image); }

  // From now on no thread reaches the window.
  void shutdown() { main_thread_.shutdown(); }

  bool is_searching() const { return session_.is_searching(); }

  // Whether a search has a thread that may still wait for its drive.
  bool has_worker() const { return session_.has_worker(); }
  MainWindow& window() { return window_; }
  MyTableController& controller() { return controller_; }

 private:
  class Addresses final : public AddressOpener {
   public:
    explicit Addresses(Desktop& desktop) : desktop_(desktop) {}
    bool open(TextView address) override { return desktop_.open_address(address); }

   private:
    Desktop& desktop_;
  };

  ContactTexts contact_texts() const;
  PreviewBox::Setting preview_setting();
  DevicePermissionsSetting permissions_setting();
  WindowSession::Setting session_setting();

  // In the order in which they need each other.
  WindowSurroundings surroundings_;
  QtMainThread main_thread_;
  WindowOperations operations_{main_thread_};
  MyTableController controller_;
  DriveList drives_;
  DecoderThumbnails thumbnails_;
  DecoderThumbnails preview_pictures_;
  MainWindow window_;
  QtAlertPanel panel_;
  QtDesktop desktop_;
  QtNotices notices_;
  PreviewBox preview_;
  DeviceOpenerProbe probe_;
  Addresses addresses_{desktop_};
  DevicePermissions permissions_;
  WindowSession session_;
};

}  // namespace norvo
