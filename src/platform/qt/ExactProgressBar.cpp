#include "platform/qt/ExactProgressBar.h"

#include <QPainter>
#include <cmath>

#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int thousandths = 1000;
constexpr int sweep_milliseconds = 1600;

}  // namespace

ExactProgressBar::ExactProgressBar(QWidget* parent) : QProgressBar(parent) {
  setTextVisible(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  QProgressBar::setRange(0, thousandths);
  sweep_.setStartValue(0.0);
  sweep_.setEndValue(1.0);
  sweep_.setDuration(sweep_milliseconds);
  sweep_.setLoopCount(-1);
  connect(&sweep_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

QSize ExactProgressBar::sizeHint() const {
  return {25 * unit, unit};
}

QSize ExactProgressBar::minimumSizeHint() const {
  return {8 * unit, unit};
}

void ExactProgressBar::show_value() {
  const auto known = share();
  // Screen readers read the base class.
  QProgressBar::setRange(0, known ? thousandths : 0);
  QProgressBar::setValue(static_cast<int>(std::lround(known.value_or(0) * thousandths)));
  follow();
  update();
}

void ExactProgressBar::follow() {
  const bool sweeps = isVisible() && !share();
  if (sweeps == (sweep_.state() == QAbstractAnimation::Running)) return;
  sweeps ? sweep_.start() : sweep_.stop();
}

void ExactProgressBar::showEvent(QShowEvent* event) {
  QProgressBar::showEvent(event);
  follow();
}

void ExactProgressBar::hideEvent(QHideEvent* event) {
  QProgressBar::hideEvent(event);
  follow();
}

void ExactProgressBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double radius = height() / 2.0;
  painter.setBrush(mixed(theme.surface, theme.text, theme.dark ? 0.2 : 0.12));
  painter.drawRoundedRect(rect(), radius, radius);
  QRectF bar(rect());
  if (const auto known = share()) {
    if (*known <= 0) return;
    bar.setWidth(std::max(static_cast<double>(height()), width() * *known));
  } else {
    const double place = sweep_.currentValue().toDouble();
    const double there_and_back = 1 - std::abs(2 * place - 1);
    bar.setWidth(width() * 0.25);
    bar.moveLeft(width() * 0.75 * there_and_back);
  }
  painter.setBrush(theme.accent);
  painter.drawRoundedRect(bar, radius, radius);
}

}  // namespace norvo
