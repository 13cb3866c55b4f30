// A progress bar over a range of floating-point numbers, moving to and fro while it has no value.
// Main thread.
#pragma once

#include <QProgressBar>
#include <QVariantAnimation>

#include "platform/qt/ExactValue.h"

namespace norvo {

class ExactProgressBar : public QProgressBar, public ExactValue {
 public:
  explicit ExactProgressBar(QWidget* parent = nullptr);

  using ExactValue::value;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void show_value() override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void follow();

  QVariantAnimation sweep_;
};

}  // namespace norvo
