// Gives the whole application the window's look and keeps it when the system's palette changes,
// from light to dark for example.
#pragma once

#include <QObject>

class QApplication;

namespace norvo {

class Look : public QObject {
 public:
  // Belongs to `application` and lives as long. Main thread, before the first window.
  static void install(QApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit Look(QApplication& application);
  void follow_palette();

  QApplication& application_;
};

}  // namespace norvo
