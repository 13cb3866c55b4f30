// The right to read a drive: the probe before a search, and the alerts when the right is missing.
//
// Main thread only.
#pragma once

#include <filesystem>
#include <ostream>
#include <system_error>

#include "util/Alert.h"
#include "util/Text.h"

namespace norvo {

// Tries whether a device can be opened for reading.
class DeviceProbe {
 public:
  virtual ~DeviceProbe() = default;

  // Opens `raw_device` and closes it at once. 0, or the errno of the failure.
  virtual int open_and_close(const std::filesystem::path& raw_device) = 0;
};

// Where the system keeps permissions for each program: makes it forget one, so that it asks again.
class PrivacyReset {
 public:
  virtual ~PrivacyReset() = default;

  // Runs the shell command `command` to its end. Failures are not reported.
  virtual void run(TextView command) = 0;
};

// Opens addresses with whatever the system has for them.
class AddressOpener {
 public:
  virtual ~AddressOpener() = default;

  // Whether something took the address.
  virtual bool open(TextView address) = 0;
};

// What the permissions depend on. What is referred to outlives the DevicePermissions.
struct DevicePermissionsSetting {
  bool USE_HARD_DISK = false;
  Text process_name;
  Text bundle_identifier;
  // What a person can do on this system beyond what the alert says; follows the alert's text. May
  // be empty.
  Text platform_help;
  DeviceProbe& probe;
  PrivacyReset* privacy_reset;    // null where the system has no such permissions
  AddressOpener* address_opener;  // null where there is no privacy pane
  AlertPanel& panel;
  std::ostream& out;
  std::ostream& log;  // the system log
};

class DevicePermissions {
 public:
  explicit DevicePermissions(DevicePermissionsSetting setting) : setting_(std::move(setting)) {}

  // The probe: opens the device and closes it again. When that is refused, writes the error number
  // to `out` and the bundle identifier to `log`, and resets the removable-volumes permission, with
  // USE_HARD_DISK the all-files permission as well. Shows nothing; whoever opens the device next
  // reports the failure.
  void Check_Have_Permissions(const std::filesystem::path& raw_device);

  // Says which permission to grant, and opens the privacy pane when that was closed with its
  // button. Returns when the person has closed it.
  void showPermissionAlertAndGuideUser();

  // Says why a device could not be opened (any other reason). Returns when it was closed.
  void showGenericErrorAlert(const std::error_code& error);

  // Opens the privacy pane, or the page above it when that fails. A second failure is ignored.
  void openSystemSettingsToPrivacyPane();

 private:
  void reset_permission(TextView service);
  Text permission_text() const;

  DevicePermissionsSetting setting_;
};

}  // namespace norvo
