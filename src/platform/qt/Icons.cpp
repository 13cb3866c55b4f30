#include "platform/qt/Icons.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

QIcon program_icon() {
  return QIcon(u":/norvo/icons/norvo-recovery.svg"_s);
}

QPixmap icon_pixmap(const QString& name, int size, const QColor& color, double ratio) {
  QFile file(u":/norvo/icons/"_s + name + u".svg"_s);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray drawing = file.readAll();
  drawing.replace("currentColor", color.name().toLatin1());
  QPixmap pixmap(QSizeF(size * ratio, size * ratio).toSize());
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(drawing).render(&painter);
  painter.end();
  pixmap.setDevicePixelRatio(ratio);
  return pixmap;
}

void draw_icon(QPainter& painter, const QString& name, const QRectF& place, const QColor& color) {
  QFile file(u":/norvo/icons/"_s + name + u".svg"_s);
  if (!file.open(QIODevice::ReadOnly)) return;
  QByteArray drawing = file.readAll();
  drawing.replace("currentColor", color.name().toLatin1());
  QSvgRenderer(drawing).render(&painter, place);
}

QPixmap no_preview_picture() {
  static const QPixmap picture(u":/norvo/pictures/NoPreview.png"_s);
  return picture;
}

}  // namespace norvo
