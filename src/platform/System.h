// What the programs need of the operating system. Each system implements these functions in a
// folder of its own, and the build takes one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "engine/Device.h"
#include "storage/DevicePermissions.h"
#include "storage/DiskUtility.h"
#include "util/Text.h"

namespace norvo {

// Opens block devices (or raw nodes) and disk images, read-only. ENOMEDIUM for a drive that has no
// medium in it; an empty image is opened.
std::unique_ptr<DeviceOpener> make_system_device_opener();

struct DeviceSize {
  std::uint64_t bytes = 0;
  int error = 0;  // errno when the size could not be told; bytes is then 0
};
DeviceSize device_size(const std::filesystem::path& device);

// Whether `destination`, or the nearest folder above it that exists, lies on the drive `device`
// (on one of its partitions, too). False when that cannot be told, and for disk images.
bool lies_on_device(const std::filesystem::path& destination, const std::filesystem::path& device);

// Tells which volumes are mounted and what is known about them.
std::unique_ptr<DiskUtility> make_system_disk_utility();

// The node from which the disk or volume with this identifier (a drive row's) is read.
std::filesystem::path raw_node(TextView identifier);

// Null where the system keeps no permissions for each program.
std::unique_ptr<PrivacyReset> make_system_privacy_reset();

// What a person can do when a drive may not be read, beyond what the permission alert says on every
// system. May be empty.
Text permission_help();

// The folder of the running executable.
std::filesystem::path executable_folder();

}  // namespace norvo
