// Labels that keep their text exactly as it was set and show it more calmly. Main thread.
#pragma once

#include <QLabel>

namespace norvo {

// One line without the blanks at both ends, shortened in the middle where it does not fit (the
// whole text is the tool tip then); what would steer the display is replaced.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QString whole() const;
  QString elided() const;
};

// Several lines without the line breaks at both ends, in the colour of quiet text.
class QuietLabel : public QLabel {
 public:
  explicit QuietLabel(const QString& text = {}, QWidget* parent = nullptr);

  // Keeps room for this many lines, so that what lies around does not move with the text. An empty
  // text takes none.
  void reserve_lines(int lines);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;
  bool hasHeightForWidth() const override;
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int flags() const;
  int height_of_lines() const;
  int lines_ = 1;
};

}  // namespace norvo
