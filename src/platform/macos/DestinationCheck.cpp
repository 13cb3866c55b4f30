#include <sys/mount.h>
#include <sys/param.h>

#include <string>

#include "platform/System.h"

namespace norvo {

// Nodes are named after their disk: disk2, its slice disk2s1, and the raw nodes rdisk2, rdisk2s1.
bool lies_on_device(const std::filesystem::path& destination, const std::filesystem::path& device) {
  struct statfs volume {};
  std::filesystem::path folder = destination;
  while (statfs(folder.c_str(), &volume) != 0) {
    if (folder == folder.parent_path()) return false;
    folder = folder.parent_path();
  }
  const auto plain_name = [](const std::filesystem::path& node) {
    std::string name = node.filename().native();
    return name.starts_with("rdisk") ? name.substr(1) : name;
  };
  const std::string holder = plain_name(volume.f_mntfromname);
  const std::string searched = plain_name(device);
  return searched.starts_with("disk") && (holder == searched || holder.starts_with(searched + "s"));
}

}  // namespace norvo
