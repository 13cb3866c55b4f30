#include "platform/qt/PathLabel.h"

#include <QPainter>
#include <QTextOption>

#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int most_lines = 8;

}  // namespace

PathLabel::PathLabel(int width) : width_(width) {
  setTextFormat(Qt::PlainText);
  setFixedWidth(width);
}

QSize PathLabel::sizeHint() const {
  QTextLayout layout;
  return {width_, lay_out(layout) * fontMetrics().lineSpacing()};
}

int PathLabel::lay_out(QTextLayout& layout) const {
  int lines = break_lines(layout, text());
  // How many characters fit depends on which they are, so more are taken out until the rest does.
  for (int room = most_lines * width_; lines > most_lines && room > 0; room -= width_ / 4) {
    lines = break_lines(layout, fontMetrics().elidedText(text(), Qt::ElideMiddle, room));
  }
  return lines;
}

int PathLabel::break_lines(QTextLayout& layout, const QString& path) const {
  QTextOption option;
  // Behind a slash or a blank; within a name only where that alone is too long.
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setText(path);
  layout.setFont(font());
  layout.setTextOption(option);
  layout.beginLayout();
  int lines = 0;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width_);
    line.setPosition(QPointF(0, lines * fontMetrics().lineSpacing()));
    ++lines;
  }
  layout.endLayout();
  return lines;
}

void PathLabel::paintEvent(QPaintEvent* /*event*/) {
  QTextLayout layout;
  lay_out(layout);
  QPainter painter(this);
  painter.setPen(Theme::current().text);
  layout.draw(&painter, QPointF());
}

}  // namespace norvo
