// A radio button as a large tile: icon, title, one line. Main thread.
#pragma once

#include <QRadioButton>

namespace norvo {

class ModeTile : public QRadioButton {
 public:
  // `icon` names a picture of icons/. The tile excludes no other one by itself.
  ModeTile(const QString& title, const QString& line, const QString& icon,
           QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& place) const override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QFont title_font() const;

  QString line_;
  QString icon_;
};

}  // namespace norvo
