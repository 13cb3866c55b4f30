#include "platform/decoder/formats/QtPicture.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "platform/decoder/formats/ByteReader.h"
#include "platform/decoder/formats/Orientation.h"
#include "platform/decoder/formats/RowScaler.h"
#include "platform/decoder/formats/TgaFile.h"

namespace norvo {
namespace {

// The toolkit's name of a format, and whether its decoder notices when data is missing.
struct QtFormat {
  PictureFormat format;
  const char* name;
  bool notices_damage;
};

constexpr auto qt_formats = std::to_array<QtFormat>({
    {PictureFormat::bmp, "bmp", false},
    {PictureFormat::gif, "gif", false},
    {PictureFormat::icns, "icns", true},
    {PictureFormat::ico, "ico", false},
    {PictureFormat::mng, "mng", true},
    {PictureFormat::pbm, "ppm", false},
    {PictureFormat::png, "png", true},
    {PictureFormat::tga, "tga", false},
    {PictureFormat::tiff, "tiff", true},
    {PictureFormat::webp, "webp", true},
    {PictureFormat::xbm, "xbm", false},
    {PictureFormat::xpm, "xpm", false},
});

const QtFormat& qt_format(PictureFormat format) {
  return *std::find_if(qt_formats.begin(), qt_formats.end(),
                       [format](const QtFormat& entry) { return entry.format == format; });
}

// One decoding of the file from its beginning.
struct Reading {
  Reading(Bytes file, const char* format)
      : bytes(QByteArray::fromRawData(
            reinterpret_cast<const char*>(file.data()),
            static_cast<qsizetype>(std::min<std::size_t>(
                file.size(), static_cast<std::size_t>(std::numeric_limits<int>::max()))))),
        buffer(&bytes) {
    buffer.open(QIODevice::ReadOnly);
    reader.setDevice(&buffer);
    // Nothing but the named decoder may look at the file.
    reader.setAutoDetectImageFormat(false);
    reader.setFormat(format);
    reader.setAutoTransform(false);
  }

  QByteArray bytes;
  QBuffer buffer;
  QImageReader reader;
};

// Of the pictures in an icon, the largest one.
void jump_to_largest(QImageReader& reader) {
  constexpr int most_pictures = 32;
  const int count = std::min(reader.imageCount(), most_pictures);
  int largest = 0;
  int width = 0;
  for (int i = 0; i < count; ++i) {
    if (reader.jumpToImage(i) && reader.size().width() > width) {
      width = reader.size().width();
      largest = i;
    }
  }
  if (count > 1) reader.jumpToImage(largest);
}

Orientation orientation_of(QImageIOHandler::Transformations transformation) {
  // The toolkit's numbers are sums of mirroring, flipping and turning.
  constexpr std::array<Orientation, 8> orientations{
      Orientation::upright,     Orientation::mirrored,     Orientation::upside_down_mirrored,
      Orientation::turned_half, Orientation::turned_right, Orientation::transversed,
      Orientation::transposed,  Orientation::turned_left};
  return orientations[static_cast<std::size_t>(transformation.toInt()) & 7U];
}

struct Read {
  QImage image;  // null when nothing is known to have come from the file
  Orientation orientation = Orientation::upright;
  bool complete = false;
  bool cleared = false;  // what was not decoded holds the filling
};

// Decodes into a picture that is filled first: decoders leave what they could not decode as they
// found it.
Read read_over(Bytes recovered, PictureFormat format, int filling) {
  Bytes file = recovered;
  std::vector<std::uint8_t> ended;
  if (format == PictureFormat::tga) file = ended = with_tga_footer(recovered);
  // An icon that is longer than it says is refused as a whole.
  if (format == PictureFormat::icns) file = part_of(file, 0, number_at(file, 4, 4).value_or(0));
  Reading reading(file, qt_format(format).name);
  QImageReader& reader = reading.reader;
  if (format == PictureFormat::ico || format == PictureFormat::icns) jump_to_largest(reader);
  QImage image;
  const QSize size = reader.size();
  const QImage::Format pixels = reader.imageFormat();
  if (!size.isEmpty() && pixels != QImage::Format_Invalid) {
    const auto bytes = std::int64_t{size.width()} * size.height() * 4;
    if (bytes > std::int64_t{QImageReader::allocationLimit()} << 20) return {};
    image = QImage(size, pixels);
    if (image.isNull()) return {};
    std::memset(image.bits(), filling, static_cast<std::size_t>(image.sizeInBytes()));
  }
  const uchar* const place = image.isNull() ? nullptr : image.constBits();
  Read read;
  read.complete = reader.read(&image);
  read.cleared = place != nullptr && !image.isNull() && image.constBits() == place;
  if (read.complete || read.cleared) read.image = std::move(image);
  // Known after decoding only.
  read.orientation = orientation_of(reader.transformation());
  return read;
}

// Row by row, so that a large picture is not held twice.
Picture shrunk(const QImage& image, Orientation orientation, PictureSize box) {
  const PictureSize size{.width = static_cast<std::uint32_t>(image.width()),
                         .height = static_cast<std::uint32_t>(image.height())};
  RowScaler scaler(size, fitted(size, stored_box(box, orientation)));
  constexpr int rows_at_once = 16;
  for (int y = 0; y < image.height(); y += rows_at_once) {
    const int rows = std::min(rows_at_once, image.height() - y);
    const QImage strip =
        image.copy(0, y, image.width(), rows).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (strip.isNull()) break;
    for (int row = 0; row < rows; ++row) {
      const auto* const pixels = reinterpret_cast<const std::uint32_t*>(strip.constScanLine(row));
      scaler.add(std::span(pixels, size.width));
    }
  }
  return upright(scaler.finish(), orientation);
}

// Rows that are the same over two different fillings were decoded.
std::uint32_t decoded_rows(const QImage& one, const QImage& other) {
  const bool comparable = one.size() == other.size() && one.format() == other.format();
  if (!comparable) return 0;
  const auto used =
      static_cast<std::size_t>(one.width()) * static_cast<std::size_t>(one.depth()) / 8;
  std::uint32_t rows = 0;
  for (int y = 0; y < one.height(); ++y) {
    if (std::memcmp(one.constScanLine(y), other.constScanLine(y), used) == 0) ++rows;
  }
  return rows;
}

Decoded of_rows(std::optional<Picture> picture, std::uint32_t rows, std::uint32_t height) {
  if (rows == 0) return {};
  return rows == height ? whole(std::move(picture)) : partly(std::move(picture), rows, height);
}

// An 8 by 8 picture that every decoder with an encoder beside it reads once.
QByteArray tiny_picture(const char* format) {
  QImage image(8, 8, QImage::Format_RGB32);
  image.fill(Qt::gray);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

}  // namespace

void load_qt_decoders(std::uint64_t bytes_per_picture) {
  QImageReader::setAllocationLimit(static_cast<int>(bytes_per_picture >> 20U));
  for (const QtFormat& format : qt_formats) {
    const QByteArray bytes = tiny_picture(format.name);
    // Asking an icon's decoder loads it, whether it can write or not.
    const Bytes file(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                     static_cast<std::size_t>(bytes.size()));
    Reading reading(file, format.name);
    if (reading.reader.canRead()) {
      shrunk(reading.reader.read(), Orientation::upright, {.width = 4, .height = 4});
    }
  }
}

Decoded decode_with_qt(Bytes file, PictureFormat format, PictureSize box, DecoderPurpose purpose) {
  constexpr int transparent = 0;
  const Read read = read_over(file, format, transparent);
  if (read.image.isNull()) return {};
  std::optional<Picture> picture;
  if (purpose == DecoderPurpose::picture) picture = shrunk(read.image, read.orientation, box);
  const bool notices = qt_format(format).notices_damage;
  if (read.complete && notices) return whole(std::move(picture));
  if (format == PictureFormat::gif) {
    return gif_picture_is_complete(file) ? whole(std::move(picture)) : partly(std::move(picture));
  }
  if (format == PictureFormat::tga) {
    return of_rows(std::move(picture), tga_rows(file),
                   static_cast<std::uint32_t>(read.image.height()));
  }
  if (purpose == DecoderPurpose::picture) return not_judged(std::move(picture));
  if (!read.cleared) return read.complete ? whole({}) : Decoded{};
  constexpr int other_filling = 0x55;
  const Read again = read_over(file, format, other_filling);
  const std::uint32_t rows = decoded_rows(read.image, again.image);
  const auto height = static_cast<std::uint32_t>(read.image.height());
  if (rows == height && !read.complete) return partly({}, rows, height);
  return of_rows({}, rows, height);
}

}  // namespace norvo
