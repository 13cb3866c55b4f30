#include "decoder/PictureFiles.h"

#include <algorithm>
#include <cstdlib>

namespace norvo::test {
namespace {

// As in make_pictures.py.
constexpr std::array<std::array<int, 3>, 4> fields{
    {{220, 30, 30}, {30, 200, 40}, {40, 60, 220}, {230, 220, 40}}};

std::array<int, 3> grey(const std::array<int, 3>& colour) {
  const int brightness = (299 * colour[0] + 587 * colour[1] + 114 * colour[2]) / 1000;
  return {brightness, brightness, brightness};
}

}  // namespace

std::filesystem::path picture_folder() {
  return NORVO_DECODER_PICTURES;
}

std::vector<std::filesystem::path> all_pictures() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(picture_folder())) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::array<int, 3> colour_at(const Picture& picture, std::uint32_t x16, std::uint32_t y16) {
  const std::size_t x = picture.size.width * x16 / 16;
  const std::size_t y = picture.size.height * y16 / 16;
  const std::uint32_t pixel = picture.pixels.at(y * picture.size.width + x);
  if (pixel >> 24U == 0) return {-1, -1, -1};
  return {static_cast<int>(pixel >> 16U & 0xFFU), static_cast<int>(pixel >> 8U & 0xFFU),
          static_cast<int>(pixel & 0xFFU)};
}

int distance_from_fields(const Picture& picture, bool in_grey) {
  int distance = 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto expected = in_grey ? grey(fields[i]) : fields[i];
    const auto x16 = static_cast<std::uint32_t>(i % 2 == 0 ? 4 : 12);
    const auto y16 = static_cast<std::uint32_t>(i / 2 == 0 ? 4 : 12);
    const auto colour = colour_at(picture, x16, y16);
    for (std::size_t c = 0; c < 3; ++c) {
      distance = std::max(distance, std::abs(colour[c] - expected[c]));
    }
  }
  return distance;
}

}  // namespace norvo::test
