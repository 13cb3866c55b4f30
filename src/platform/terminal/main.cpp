#include <unistd.h>

#include <iostream>

#include "platform/System.h"
#include "platform/terminal/NorvoRecover.h"
#include "platform/terminal/StopSignals.h"
#include "util/ChildProcess.h"
#include "util/StandardStreams.h"

int main(int argc, char** argv) {
  if (!norvo::complete_standard_streams()) return 1;
  norvo::keep_ended_children();
  norvo::install_stop_signals();
  const auto opener = norvo::make_system_device_opener();
  const auto disk_utility = norvo::make_system_disk_utility();
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  return norvo::norvo_recover(
      arguments.subspan(arguments.empty() ? 0 : 1),
      {.opener = *opener,
       .disk_utility = *disk_utility,
       .shipped_signatures = norvo::executable_folder() / "../share/norvo-recovery/signatures",
       .out = std::cout,
       .err = std::cerr,
       .err_is_terminal = isatty(STDERR_FILENO) == 1,
       .publish_stop_flag = norvo::publish_stop_flag});
}
