#include "results/MyImageObject.h"

namespace norvo {

MyImageObject MyImageObject::initWithImage_Path(const std::filesystem::path& path,
                                                TextView image_Name, TextView image_UID) {
  return {.path = path, .image_Name = Text(image_Name), .image_UID = Text(image_UID)};
}

MyImageObject MyImageObject::initWithImage_data(std::span<const std::byte> imageData,
                                                TextView image_Name, TextView image_UID) {
  return {.imageData = std::make_shared<std::vector<std::byte>>(imageData.begin(), imageData.end()),
          .image_Name = Text(image_Name),
          .image_UID = Text(image_UID)};
}

MyImageObject MyImageObject::initWithImage(const IconImage& image, TextView image_Name,
                                           TextView image_UID, std::uint64_t File_Start_Sec,
                                           std::uint64_t File_End_Sec) {
  return {.image = image,
          .image_Name = Text(image_Name),
          .image_UID = Text(image_UID),
          .File_Start_Sector = File_Start_Sec,
          .File_End_Sector = File_End_Sec};
}

Representation representation_type(std::int32_t Recovery_MODE, const std::filesystem::path& path) {
  if (Recovery_MODE != 0) return Representation::image;
  const bool has_picture_file = !path.empty() && path.filename() != no_preview_name;
  return has_picture_file ? Representation::file_path : Representation::data_buffer;
}

}  // namespace norvo
