// One item of the gallery or of the file window: a recovered file as the person sees it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "util/Text.h"

namespace norvo {

// The icon of a file type, which the window draws.
struct IconImage {
  Text file_type;            // an extension
  std::uint32_t points = 0;  // width and height

  bool operator==(const IconImage&) const = default;
};

// Encoded image bytes that never change, so that copies of an item share them; null without any.
using ImageData = std::shared_ptr<const std::vector<std::byte>>;

struct MyImageObject {
  ImageData imageData = {};  // of an item that is shown from data
  std::filesystem::path path = {};
  IconImage image = {};  // of an item that is shown as an icon
  Text image_Name;
  Text image_UID;  // unique within a search
  // Where the file lies on the device; 0 for photos.
  std::uint64_t File_Start_Sector = 0;
  std::uint64_t File_End_Sector = 0;

  static MyImageObject initWithImage_Path(const std::filesystem::path& path, TextView image_Name,
                                          TextView image_UID);

  // Copies the bytes.
  static MyImageObject initWithImage_data(std::span<const std::byte> imageData, TextView image_Name,
                                          TextView image_UID);

  static MyImageObject initWithImage(const IconImage& image, TextView image_Name,
                                     TextView image_UID, std::uint64_t File_Start_Sec,
                                     std::uint64_t File_End_Sec);

  void setPath(const std::filesystem::path& new_path) { path = new_path; }

  // Items with the same bytes in different places differ.
  bool operator==(const MyImageObject&) const = default;
};

// The name of the picture that stands for files that cannot be shown.
inline constexpr const char* no_preview_name = "NoPreview.png";

// What a view shows of an item.
enum class Representation { file_path, data_buffer, image };

// Photos are shown from their files, but for those that have no file or the path of the
// placeholder; the results of all other searches (Recovery_MODE 1 to 3) as icons.
Representation representation_type(std::int32_t Recovery_MODE, const std::filesystem::path& path);

}  // namespace norvo
