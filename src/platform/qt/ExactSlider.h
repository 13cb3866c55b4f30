// A slider over a range of floating-point numbers; screen readers know it by these numbers, too.
// Main thread.
#pragma once

#include <QSlider>
#include <functional>

#include "platform/qt/ExactValue.h"

namespace norvo {

class ExactSlider : public QSlider, public ExactValue {
 public:
  explicit ExactSlider(QWidget* parent = nullptr);

  // The exact number, not the handle's step.
  using ExactValue::maximum;
  using ExactValue::minimum;
  using ExactValue::set_range;
  using ExactValue::value;

  // Called after the person has moved the handle, by pointer, wheel, key or screen reader.
  void on_moved(std::function<void()> moved) { moved_ = std::move(moved); }

  // Moves the handle for the person. A value outside moves to the nearer end; what is no number is
  // ignored.
  void move_to(double value);

 protected:
  void show_value() override;

  // The wheel moves the handle only while the slider has the keyboard: a page is scrolled over it.
  void wheelEvent(QWheelEvent* event) override;

 private:
  void take_position();

  std::function<void()> moved_;
};

}  // namespace norvo
