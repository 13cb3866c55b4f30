// What the wizard or the command line has settled when a search starts. The engine reads it at the
// start of each pass; it does not change while a search runs.
#pragma once

#include <cstdint>
#include <filesystem>

#include "util/Text.h"

namespace norvo {

struct ScanRequest {
  // Search type: 0 photo, 1 video, 2 raw file, 3 audio.
  std::int32_t Recovery_MODE = 0;

  // The raw node of the selected drive ("/dev/r" and its identifier on macOS), or a disk image.
  std::filesystem::path device_path;

  // The drive's number of 512-byte sectors.
  std::uint64_t sectors_val = 0;

  // The two choices of the settings page. The range is the whole drive when only the first is on,
  // the typed one when only the second is on, and empty otherwise.
  bool entire_disk = true;
  bool sector_range = false;
  Text start_slider_val = u"0";  // decimal text
  Text end_slider_val = u"0";    // decimal text, exclusive

  // Whether a Thorough pass follows the General pass.
  bool thorough = true;

  // The folder under which the results folder is made; made itself when it is missing.
  std::filesystem::path destination;

  // The edition's results folder, for example "Norvo Spruce Results".
  Text Rec_Folder_Name;
};

}  // namespace norvo
