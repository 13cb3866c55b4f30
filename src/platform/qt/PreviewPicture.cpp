#include "platform/qt/PreviewPicture.h"

#include <QPainter>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {

void PreviewPicture::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!pixmap(Qt::ReturnByValue).isNull() || !text().isEmpty()) return;
  const Theme theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(theme.surface, theme.text, 0.05));
  painter.drawRoundedRect(rect(), unit / 2.0, unit / 2.0);
  painter.setPen(theme.quiet_text);
  painter.drawText(rect().adjusted(2 * unit, 0, -2 * unit, 0), Qt::AlignCenter | Qt::TextWordWrap,
                   QStringLiteral("Select a file to see it here"));
}

}  // namespace norvo
