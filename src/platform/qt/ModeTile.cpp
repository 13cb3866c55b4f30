#include "platform/qt/ModeTile.h"

#include <QPainter>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int tile_margin = 2 * unit;
constexpr int tile_icon_size = 4 * unit;
constexpr int tile_gap = 12;

}  // namespace

ModeTile::ModeTile(const QString& title, const QString& line, const QString& icon, QWidget* parent)
    : QRadioButton(title, parent), line_(line), icon_(icon) {
  setAutoExclusive(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setCursor(Qt::PointingHandCursor);
}

QFont ModeTile::title_font() const {
  QFont bold = font();
  bold.setPointSizeF(bold.pointSizeF() * 1.1);
  bold.setWeight(QFont::DemiBold);
  return bold;
}

QSize ModeTile::minimumSizeHint() const {
  const int text = QFontMetrics(title_font()).height() + 2 * fontMetrics().lineSpacing() + 4;
  return {19 * unit, 2 * 12 + std::max(tile_icon_size, text)};
}

QSize ModeTile::sizeHint() const {
  return minimumSizeHint() + QSize(6 * unit, 0);
}

bool ModeTile::hitButton(const QPoint& place) const {
  return rect().contains(place);
}

void ModeTile::enterEvent(QEnterEvent* event) {
  update();
  QRadioButton::enterEvent(event);
}

void ModeTile::leaveEvent(QEvent* event) {
  update();
  QRadioButton::leaveEvent(event);
}

void ModeTile::paintEvent(QPaintEvent* /*event*/) {
  const Theme theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double edge = isChecked() || hasFocus() ? 2 : 1;
  const QRectF frame = QRectF(rect()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
  const QColor line_color = isChecked() ? theme.accent : theme.strong_border;
  painter.setPen(QPen(hasFocus() && !isChecked() ? theme.text : line_color, edge));
  painter.setBrush(isChecked() ? theme.accent_tint : underMouse() ? theme.hover : theme.surface);
  painter.drawRoundedRect(frame, unit, unit);
  if (hasFocus()) {
    painter.setPen(QPen(theme.text, 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(frame.adjusted(4, 4, -4, -4), unit - 4, unit - 4);
  }
  const QRectF icon(tile_margin, (height() - tile_icon_size) / 2.0, tile_icon_size, tile_icon_size);
  draw_icon(painter, icon_, icon, isChecked() ? theme.accent : theme.quiet_text);

  const int left = tile_margin + tile_icon_size + tile_gap;
  const QFontMetrics title_metrics(title_font());
  QRect text(left, 0, width() - left - 12, height());
  const int line_height =
      fontMetrics().boundingRect(text, Qt::TextWordWrap | Qt::AlignLeft, line_).height();
  text.setTop((height() - title_metrics.height() - line_height - 2) / 2);
  painter.setPen(theme.text);
  painter.setFont(title_font());
  painter.drawText(text, Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic,
                   title_metrics.elidedText(QRadioButton::text(), Qt::ElideRight, text.width(),
                                            Qt::TextShowMnemonic));
  text.setTop(text.top() + title_metrics.height() + 2);
  painter.setFont(font());
  painter.setPen(theme.quiet_text);
  painter.drawText(text, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, line_);
}

}  // namespace norvo
