#include "IconFile.h"

#include <QBuffer>
#include <algorithm>
#include <array>
#include <cstdint>

namespace {

struct PngEntry {
  const char* type;
  int pixels;
};

// Plain displays from 128 points on, and all sizes for high-resolution ones.
constexpr std::array<PngEntry, 8> png_entries{{{"ic07", 128},
                                               {"ic08", 256},
                                               {"ic09", 512},
                                               {"ic10", 1024},
                                               {"ic11", 32},
                                               {"ic12", 64},
                                               {"ic13", 256},
                                               {"ic14", 512}}};

struct PlaneEntry {
  const char* colours;
  const char* mask;
  int pixels;
};

constexpr std::array<PlaneEntry, 2> plane_entries{{{"is32", "s8mk", 16}, {"il32", "l8mk", 32}}};

QByteArray big_endian(std::uint32_t number) {
  QByteArray bytes;
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(number >> shift & 0xFFU);
  return bytes;
}

// The length counts the type and itself.
QByteArray entry(const char* type, const QByteArray& content) {
  return QByteArray(type, 4) + big_endian(static_cast<std::uint32_t>(content.size() + 8)) + content;
}

QByteArray png(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes;
}

// One component of each pixel, row by row.
QByteArray plane(const QImage& image, int (*component)(QRgb)) {
  QByteArray bytes;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      bytes += static_cast<char>(component(image.pixel(x, y)));
    }
  }
  return bytes;
}

}  // namespace

QByteArray run_lengths(const QByteArray& plane) {
  constexpr qsizetype longest_run = 130;
  constexpr qsizetype longest_copy = 128;
  QByteArray code;
  QByteArray copied;
  const auto write_copied = [&code, &copied] {
    if (!copied.isEmpty()) code += static_cast<char>(copied.size() - 1) + copied;
    copied.clear();
  };
  for (qsizetype i = 0; i < plane.size();) {
    qsizetype run = 1;
    while (run < longest_run && i + run < plane.size() && plane[i + run] == plane[i]) ++run;
    if (run >= 3) {
      write_copied();
      code += static_cast<char>(run + 125);
      code += plane[i];
      i += run;
    } else {
      copied += plane[i++];
      if (copied.size() == longest_copy) write_copied();
    }
  }
  write_copied();
  return code;
}

QByteArray icon_file(const DrawIcon& draw) {
  QByteArray entries;
  for (const PlaneEntry& sizes : plane_entries) {
    const QImage image = draw(sizes.pixels).convertToFormat(QImage::Format_ARGB32);
    entries +=
        entry(sizes.colours, run_lengths(plane(image, qRed)) + run_lengths(plane(image, qGreen)) +
                                 run_lengths(plane(image, qBlue)));
    entries += entry(sizes.mask, plane(image, qAlpha));
  }
  for (const PngEntry& size : png_entries) {
    entries += entry(size.type, png(draw(size.pixels)));
  }
  return entry("icns", entries);
}
