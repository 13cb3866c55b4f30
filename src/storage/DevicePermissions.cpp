#include "storage/DevicePermissions.h"

#include <algorithm>

namespace norvo {
namespace {

constexpr TextView privacy_pane = u"x-apple.systempreferences:com.apple.preference.security?";
constexpr TextView privacy_page =
    u"x-apple.systempreferences:com.apple.preference.security?Privacy";

constexpr TextView removable_volumes_text =
    u"%@ needs permission to access files on removable volumes (like USB drives).\n\n"
    u"Please go to System Settings > Privacy & Security > Files and Folders,\n"
    u"find \"%@\" in the list, and enable \"Removable Volumes\" access.\n\n";
constexpr TextView all_drives_text =
    u"%@ needs permission to access drive for scanning.\n\n"
    u"Please go to System Settings > Privacy & Security > Full Disk Access,\n"
    u"find \"%@\" in the list, and allow access.\n\n"
    u"OR\n\n"
    u"Please go to System Settings > Privacy & Security > Files and Folders,\n"
    u"find \"%@\" in the list, and enable \"Removable Volumes\" access.\n\n";

// The commands go to a shell, and one without an identifier would reset every program's permission.
bool is_plain_identifier(TextView identifier) {
  return !identifier.empty() && std::all_of(identifier.begin(), identifier.end(), [](char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'.' || c == u'-' || c == u'_';
  });
}

}  // namespace

void DevicePermissions::Check_Have_Permissions(const std::filesystem::path& raw_device) {
  const int error = setting_.probe.open_and_close(raw_device);
  if (error == 0) return;
  setting_.out << "err no : " << error << '\n' << std::flush;
  setting_.log << "Application Bundle Identifier: " << utf8_from_text(setting_.bundle_identifier)
               << '\n'
               << std::flush;
  reset_permission(u"SystemPolicyRemovableVolumes");
  if (setting_.USE_HARD_DISK) reset_permission(u"SystemPolicyAllFiles");
}

void DevicePermissions::reset_permission(TextView service) {
  if (setting_.privacy_reset == nullptr || !is_plain_identifier(setting_.bundle_identifier)) return;
  setting_.privacy_reset->run(u"tccutil reset " + Text(service) + u" " +
                              setting_.bundle_identifier);
}

Text DevicePermissions::permission_text() const {
  return Replace_char_in_string(setting_.USE_HARD_DISK ? all_drives_text : removable_volumes_text,
                                u"%@", setting_.process_name) +
         setting_.platform_help;
}

void DevicePermissions::showPermissionAlertAndGuideUser() {
  const AlertAnswer answer = setting_.panel.run({.message = u"Permission Required",
                                                 .default_button = u"Open System Settings",
                                                 .alternate_button = {},
                                                 .other_button = {},
                                                 .informative_text = permission_text()});
  if (answer == AlertAnswer::default_button) openSystemSettingsToPrivacyPane();
}

void DevicePermissions::showGenericErrorAlert(const std::error_code& error) {
  setting_.panel.run(
      {.message = u"Device Access Error",
       .default_button = u"OK",
       .alternate_button = {},
       .other_button = {},
       .informative_text = u"An unexpected error occurred while trying to access the device:\n\n" +
                           text_from_utf8_lossy(error.message())});
}

void DevicePermissions::openSystemSettingsToPrivacyPane() {
  if (setting_.address_opener == nullptr) return;
  if (!setting_.address_opener->open(privacy_pane)) setting_.address_opener->open(privacy_page);
}

}  // namespace norvo
