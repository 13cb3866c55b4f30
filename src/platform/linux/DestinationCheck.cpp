#include "platform/linux/DestinationCheck.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <fstream>

#include "platform/System.h"
#include "util/Files.h"

namespace norvo {
namespace fs = std::filesystem;
namespace {

// Mappings can lie on mappings; more than this many are no real set-up.
constexpr int deepest_mapping = 8;

std::string number_in(const fs::path& device_folder) {
  std::ifstream file(device_folder / "dev");
  std::string number;
  std::getline(file, number);
  return number;
}

bool is_on(const fs::path& folder, const std::string& device, int depth) {
  if (depth == 0) return false;
  if (number_in(folder) == device) return true;
  // A partition's folder lies inside its disk's.
  std::error_code error;
  if (fs::exists(folder / "partition", error) && is_on(folder.parent_path(), device, depth - 1)) {
    return true;
  }
  for (const fs::path& slave : entries_of(folder / "slaves")) {
    const fs::path below = fs::canonical(slave, error);
    if (!error && is_on(below, device, depth - 1)) return true;
  }
  return false;
}

std::string device_number(dev_t device) {
  return std::to_string(major(device)) + ":" + std::to_string(minor(device));
}

}  // namespace

bool is_on_block_device(const fs::path& tree, const std::string& holder,
                        const std::string& device) {
  std::error_code error;
  const fs::path folder = fs::canonical(tree / holder, error);
  return !error && is_on(folder, device, deepest_mapping);
}

bool lies_on_device(const fs::path& destination, const fs::path& device) {
  struct stat device_status {};
  if (stat(device.c_str(), &device_status) != 0 || !S_ISBLK(device_status.st_mode)) return false;
  std::error_code error;
  fs::path folder = fs::absolute(destination, error);
  struct stat folder_status {};
  while (stat(folder.c_str(), &folder_status) != 0) {
    if (folder == folder.parent_path()) return false;
    folder = folder.parent_path();
  }
  return is_on_block_device("/sys/dev/block", device_number(folder_status.st_dev),
                            device_number(device_status.st_rdev));
}

}  // namespace norvo
