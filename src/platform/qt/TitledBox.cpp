#include "platform/qt/TitledBox.h"

#include <QPainter>

#include "platform/qt/Labels.h"
#include "platform/qt/Theme.h"

namespace norvo {

TitledBox::TitledBox(const QString& title, Kind kind, QWidget* parent)
    : QWidget(parent), kind_(kind), title_(new ElidedLabel(this)) {
  auto* column = new QVBoxLayout(this);
  const int margin = kind == Kind::card ? 2 * unit : 0;
  column->setContentsMargins(margin, kind == Kind::card ? 12 : 0, margin, margin);
  column->setSpacing(unit);
  scale_font(*title_, 1.0, QFont::DemiBold);
  column->addWidget(title_);
  content_ = new QVBoxLayout;
  content_->setSpacing(unit);
  column->addLayout(content_, 1);
  set_title(title);
}

void TitledBox::set_title(const QString& title) {
  title_->setText(title);
  title_->setHidden(title.isEmpty());
  setAccessibleName(title);
}

QString TitledBox::title() const {
  return title_->text();
}

void TitledBox::paintEvent(QPaintEvent* /*event*/) {
  if (kind_ == Kind::flat) return;
  const Theme theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(theme.border);
  painter.setBrush(theme.surface);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), unit, unit);
}

}  // namespace norvo
