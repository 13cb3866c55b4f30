#include "platform/qt/TypeIcons.h"

#include <QColor>
#include <QFont>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <algorithm>
#include <array>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

struct Family {
  TypeFamily family;
  const char16_t* extensions;  // between blanks
};

constexpr std::array<Family, 5> families{{
    {TypeFamily::photo,
     u" jpg jpeg jpe jfif png gif bmp tif tiff heic heif webp avif psd jp2 ico pcx tga "},
    {TypeFamily::raw,
     u" cr2 cr3 crw nef nrw arw srf sr2 dng orf raf rw2 raw pef ptx srw x3f mrw erf kdc dcr dcs "
     u"mos mef iiq 3fr fff mdc rwl bay "},
    {TypeFamily::video,
     u" mp4 mov m4v avi mkv mpg mpeg mts m2ts mxf wmv asf 3gp 3g2 flv f4v vob webm rm swf mod "
     u"tod "},
    {TypeFamily::audio,
     u" mp3 wav m4a aac aif aiff flac ogg wma mid midi amr au caf ape ra rmi m4p "},
    {TypeFamily::document, u" pdf doc docx xls xlsx ppt pptx txt rtf htm html xml odt csv "},
}};

// A hue for each family; how light it is follows the theme.
QColor family_color(TypeFamily family, const Theme& theme) {
  static const QHash<TypeFamily, int> hues{{TypeFamily::photo, 184},
                                           {TypeFamily::video, 262},
                                           {TypeFamily::raw, 32},
                                           {TypeFamily::audio, 336},
                                           {TypeFamily::document, 216}};
  const auto hue = hues.constFind(family);
  if (hue == hues.constEnd()) return theme.quiet_text;
  return theme.dark ? QColor::fromHsl(*hue, 140, 165) : QColor::fromHsl(*hue, 130, 85);
}

void draw_sheet(QPainter& painter, double size, const QColor& color, const Theme& theme) {
  const QRectF sheet(size * 0.14, size * 0.03, size * 0.72, size * 0.94);
  const double fold = size * 0.22;
  QPainterPath outline(sheet.topLeft());
  outline.lineTo(sheet.right() - fold, sheet.top());
  outline.lineTo(sheet.right(), sheet.top() + fold);
  outline.lineTo(sheet.bottomRight());
  outline.lineTo(sheet.bottomLeft());
  outline.closeSubpath();
  painter.setPen(QPen(color, size / 20, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(mixed(theme.surface, color, 0.12));
  painter.drawPath(outline);
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(QPolygonF{{sheet.right() - fold, sheet.top()},
                                 {sheet.right() - fold, sheet.top() + fold},
                                 {sheet.right(), sheet.top() + fold}});
}

// The extension on a band; at the smallest sizes as far as it can be read.
void draw_extension(QPainter& painter, double size, const QString& extension, const QColor& color,
                    const Theme& theme) {
  if (extension.isEmpty()) return;
  const QRectF band(0, size * 0.46, size, size * 0.38);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(band, size * 0.06, size * 0.06);
  QFont font = painter.font();
  font.setWeight(QFont::Bold);
  const QString text = extension.left(4).toUpper();
  for (int pixels = std::max(1, static_cast<int>(size * 0.34)); pixels > 0; --pixels) {
    font.setPixelSize(pixels);
    if (QFontMetricsF(font).horizontalAdvance(text) <= band.width() * 0.9) break;
  }
  painter.setFont(font);
  painter.setPen(contrast(color, theme.surface) > contrast(color, theme.text) ? theme.surface
                                                                              : theme.text);
  painter.drawText(band, Qt::AlignCenter, text);
}

}  // namespace

TypeFamily family_of(const QString& extension) {
  const QString wanted = u' ' + extension.toLower() + u' ';
  if (extension.isEmpty() || extension.contains(u' ')) return TypeFamily::generic;
  for (const Family& family : families) {
    if (QStringView(family.extensions).contains(wanted)) return family.family;
  }
  return TypeFamily::generic;
}

QPixmap type_icon(const QString& extension, int size, double ratio) {
  const Theme theme = Theme::current();
  const QString key = u"type %1 %2 %3 %4 %5"_s.arg(extension.toLower())
                          .arg(size)
                          .arg(ratio)
                          .arg(theme.surface.name(), theme.text.name());
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(QSizeF(size * ratio, size * ratio).toSize());
  pixmap.fill(Qt::transparent);
  const TypeFamily family = family_of(extension);
  const QColor color = family_color(family, theme);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  const double pixels = pixmap.width();
  draw_sheet(painter, pixels, color, theme);
  draw_extension(painter, pixels, extension, color, theme);
  painter.end();
  pixmap.setDevicePixelRatio(ratio);
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace norvo
