// A slider over a range of floating-point numbers. Main thread.
#pragma once

#include <QSlider>
#include <functional>

#include "platform/qt/ExactValue.h"

namespace norvo {

class ExactSlider : public QSlider, public ExactValue {
 public:
  explicit ExactSlider(QWidget* parent = nullptr);

  // The exact number, not the handle's step.
  using ExactValue::set_range;
  using ExactValue::value;

  // Called after the person has moved the handle, by pointer, wheel or key.
  void on_moved(std::function<void()> moved) { moved_ = std::move(moved); }

 protected:
  void show_value() override;

 private:
  void take_position();

  std::function<void()> moved_;
};

}  // namespace norvo
