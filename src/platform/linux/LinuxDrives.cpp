#include "platform/System.h"
#include "platform/linux/LinuxDiskUtility.h"

namespace norvo {

std::unique_ptr<DiskUtility> make_system_disk_utility() {
  return std::make_unique<LinuxDiskUtility>();
}

// Drives are guarded by file permissions here, which no program has of its own.
std::unique_ptr<PrivacyReset> make_system_privacy_reset() {
  return nullptr;
}

std::filesystem::path raw_node(TextView identifier) {
  return "/dev/" + utf8_from_text(identifier);
}

Text permission_help() {
  return u"On Linux drives can be read with administrator rights: start the program again and "
         u"enter the password when it is asked for, or let an administrator add you to the group "
         u"\"disk\".\n";
}

}  // namespace norvo
