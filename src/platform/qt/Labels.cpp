#include "platform/qt/Labels.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int comfortable_width = 60 * unit;

QColor text_color(const QWidget& widget) {
  const Theme theme = Theme::current();
  return widget.isEnabled() ? theme.text : theme.quiet_text;
}

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QString ElidedLabel::whole() const {
  return shown(text().trimmed());
}

QString ElidedLabel::elided() const {
  return fontMetrics().elidedText(whole(), Qt::ElideMiddle, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 6, fontMetrics().height()};
}

QSize ElidedLabel::sizeHint() const {
  return {fontMetrics().horizontalAdvance(whole()) + 2, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(text_color(*this));
  const int side = static_cast<int>(alignment() & Qt::AlignHorizontal_Mask);
  painter.drawText(contentsRect(), side | Qt::AlignVCenter | Qt::TextSingleLine, elided());
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    setToolTip(elided() == whole() ? QString() : whole().toHtmlEscaped());
  }
  return QLabel::event(event);
}

QuietLabel::QuietLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void QuietLabel::reserve_lines(int lines) {
  lines_ = lines;
}

// As high as an ElidedLabel, for one line: texts beside each other then stand on one line.
int QuietLabel::height_of_lines() const {
  return (lines_ - 1) * fontMetrics().lineSpacing() + fontMetrics().height();
}

int QuietLabel::flags() const {
  return static_cast<int>(alignment()) | (wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine);
}

bool QuietLabel::hasHeightForWidth() const {
  return wordWrap();
}

int QuietLabel::heightForWidth(int width) const {
  if (text().trimmed().isEmpty()) return 0;
  if (!wordWrap()) return height_of_lines();
  const QRect room(0, 0, width, QWIDGETSIZE_MAX);
  const int needed = fontMetrics().boundingRect(room, flags(), text().trimmed()).height();
  return std::max(needed, height_of_lines());
}

QSize QuietLabel::minimumSizeHint() const {
  const QSize whole = sizeHint();
  const int width = wordWrap() ? std::min(10 * unit, whole.width()) : whole.width();
  return {width, std::min(whole.height(), height_of_lines())};
}

QSize QuietLabel::sizeHint() const {
  const int whole = fontMetrics().horizontalAdvance(text().trimmed()) + 2;
  const int width = wordWrap() ? std::min(whole, comfortable_width) : whole;
  return {width, heightForWidth(width)};
}

void QuietLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(Theme::current().quiet_text);
  painter.drawText(contentsRect(), flags(), text().trimmed());
}

}  // namespace norvo
