// One item of the gallery or of the file window: a recovered file as the person sees it.
#pragma once

#include <cstdint>
#include <filesystem>

#include "util/Text.h"

namespace norvo {

struct MyImageObject {
  std::filesystem::path path;
  Text image_Name;
  Text image_UID;  // unique within a search
  // Where the file lies on the device; 0 for photos.
  std::uint64_t File_Start_Sector = 0;
  std::uint64_t File_End_Sector = 0;

  bool operator==(const MyImageObject&) const = default;
};

}  // namespace norvo
