// Draws an icon at every size that macOS wants: make_icns DRAWING.svg ICON.icns
//
// A tool of the build.
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

#include "IconFile.h"

namespace {

// The ground of the drawing takes 60 of its 64 units, and on macOS it shall take 824 of 1024.
constexpr double part_of_picture = 824.0 / 1024.0 * 64.0 / 60.0;

QImage draw(QSvgRenderer& drawing, int size) {
  QImage image(size, size, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  const double side = size * part_of_picture;
  const double margin = (size - side) / 2;
  drawing.render(&painter, QRectF(margin, margin, side, side));
  return image;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 3) {
    std::fputs("Usage: make_icns DRAWING.svg ICON.icns\n", stderr);
    return 2;
  }
  QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
  if (!drawing.isValid()) {
    std::fprintf(stderr, "%s is no drawing.\n", argv[1]);
    return 1;
  }
  const QByteArray icon = icon_file([&drawing](int size) { return draw(drawing, size); });
  QFile file(QString::fromLocal8Bit(argv[2]));
  if (!file.open(QIODevice::WriteOnly) || file.write(icon) != icon.size() || !file.flush()) {
    std::fprintf(stderr, "%s cannot be written.\n", argv[2]);
    return 1;
  }
  return 0;
}
