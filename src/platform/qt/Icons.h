// The window's pictures: drawn as outlines, tinted with a colour of the theme. Main thread.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

namespace norvo {

QIcon program_icon();

// Draws the picture "icons/`name`.svg" into `place`, all in `color`.
void draw_icon(QPainter& painter, const QString& name, const QRectF& place, const QColor& color);

// The same as a pixmap of `size` device-independent pixels for a screen of `ratio`.
QPixmap icon_pixmap(const QString& name, int size, const QColor& color, double ratio);

// The picture that stands for a photo that cannot be shown.
QPixmap no_preview_picture();

}  // namespace norvo
