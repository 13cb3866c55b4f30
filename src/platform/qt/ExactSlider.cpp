#include "platform/qt/ExactSlider.h"

#include <QAccessibleWidget>
#include <QWheelEvent>
#include <cmath>

namespace norvo {
namespace {

constexpr int steps = 1'000'000'000;
constexpr int key_step = steps / 1000;

class AccessibleSlider final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleSlider(ExactSlider& slider)
      : QAccessibleWidget(&slider, QAccessible::Slider), slider_(slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return slider_.value(); }
  void setCurrentValue(const QVariant& value) override { slider_.move_to(value.toDouble()); }
  QVariant maximumValue() const override { return slider_.maximum(); }
  QVariant minimumValue() const override { return slider_.minimum(); }
  QVariant minimumStepSize() const override {
    return (slider_.maximum() - slider_.minimum()) * key_step / steps;
  }

 private:
  ExactSlider& slider_;
};

QAccessibleInterface* make_accessible(const QString& /*class_name*/, QObject* object) {
  auto* const slider = dynamic_cast<ExactSlider*>(object);
  return slider == nullptr ? nullptr : new AccessibleSlider(*slider);
}

}  // namespace

ExactSlider::ExactSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
  QSlider::setRange(0, steps);
  setSingleStep(key_step);
  setPageStep(steps / 20);
  setFocusPolicy(Qt::StrongFocus);
  // Again and again the same one, which is kept once.
  QAccessible::installFactory(make_accessible);
  // The only signal that tells an act of the person from a value that was set.
  connect(this, &QSlider::actionTriggered, this, &ExactSlider::take_position);
}

void ExactSlider::show_value() {
  const QSignalBlocker quiet(this);
  QSlider::setValue(static_cast<int>(std::lround(share().value_or(0) * steps)));
}

void ExactSlider::move_to(double value) {
  if (std::isnan(value)) return;
  set_value(value);
  if (moved_) moved_();
}

void ExactSlider::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) return QSlider::wheelEvent(event);
  event->ignore();
}

void ExactSlider::take_position() {
  take_share(static_cast<double>(sliderPosition()) / steps);
  if (moved_) moved_();
}

}  // namespace norvo
