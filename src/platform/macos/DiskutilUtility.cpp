#include "platform/macos/DiskutilUtility.h"

#include "platform/macos/DiskutilReport.h"
#include "util/RunProgram.h"

namespace norvo {

std::optional<DiskReport> DiskutilUtility::info(const std::filesystem::path& path) {
  const ProgramResult result =
      run_program(diskutil_, {"info", "-plist", path.native()},
                  {.time = patience_, .output_bytes = diskutil_output_limit});
  return read_diskutil_report(result.output);
}

}  // namespace norvo
