// norvo-recover: the search without a window.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <span>

#include "engine/Device.h"
#include "storage/DiskUtility.h"

namespace norvo {

// What the program gets from its surroundings.
struct NorvoRecoverSetting {
  DeviceOpener& opener;
  DiskUtility& disk_utility;
  std::filesystem::path shipped_signatures;
  std::ostream& out;
  std::ostream& err;
  bool err_is_terminal = false;
  // Called with the flag that a stop request sets to 1, and with null when it is gone.
  void (*publish_stop_flag)(std::atomic<std::int32_t>* stop_now) = nullptr;
};

// Runs the program with the arguments after its name and returns its exit status, one of
// ExitStatus.h. Main thread.
int norvo_recover(std::span<const char* const> arguments, const NorvoRecoverSetting& setting);

}  // namespace norvo
