#include "platform/qt/ExactSlider.h"

#include <cmath>

namespace norvo {
namespace {

constexpr int steps = 1'000'000'000;

}  // namespace

ExactSlider::ExactSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
  QSlider::setRange(0, steps);
  setSingleStep(steps / 1000);
  setPageStep(steps / 20);
  // The only signal that tells an act of the person from a value that was set.
  connect(this, &QSlider::actionTriggered, this, &ExactSlider::take_position);
}

void ExactSlider::show_value() {
  const QSignalBlocker quiet(this);
  QSlider::setValue(static_cast<int>(std::lround(share().value_or(0) * steps)));
}

void ExactSlider::take_position() {
  take_share(static_cast<double>(sliderPosition()) / steps);
  if (moved_) moved_();
}

}  // namespace norvo
