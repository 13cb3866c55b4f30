// A path that is shown whole: on several lines where one does not hold it. Only one that is longer
// than any that people have is shortened, in its middle. Main thread.
#pragma once

#include <QLabel>
#include <QTextLayout>

namespace norvo {

// The text that is set is the path, fit to be shown.
class PathLabel : public QLabel {
 public:
  // `width` device-independent pixels wide, whatever the path.
  explicit PathLabel(int width);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  // Breaks the path into lines of the label's width; returns how many there are.
  int lay_out(QTextLayout& layout) const;
  int break_lines(QTextLayout& layout, const QString& path) const;

  int width_;
};

}  // namespace norvo
