#include "platform/qt/PictureImage.h"

#include <algorithm>

namespace norvo {

QImage image_of(const Picture& picture) {
  const auto width = static_cast<int>(picture.size.width);
  const auto height = static_cast<int>(picture.size.height);
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int row = 0; row < height; ++row) {
    const auto first = static_cast<std::ptrdiff_t>(row) * width;
    std::copy_n(picture.pixels.begin() + first, width,
                reinterpret_cast<std::uint32_t*>(image.scanLine(row)));
  }
  return image;
}

}  // namespace norvo
