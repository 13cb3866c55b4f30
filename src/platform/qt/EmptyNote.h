// What stands in a list that shows nothing yet: a picture, a line, and what to do. Main thread.
#pragma once

#include <QAbstractItemView>
#include <QWidget>

namespace norvo {

class EmptyNote : public QWidget {
 public:
  // Lies over the middle of `view` while its model has no rows, and lets the pointer through. The
  // view must have its model already; the note belongs to it.
  EmptyNote(QAbstractItemView& view, const QString& icon, const QString& title,
            const QString& advice);

  // What a screen reader hears of the list when it has rows; at first nothing.
  void describe_rows(const QString& description);

  // Says nothing until the model is reset: nobody has looked yet whether there is anything.
  void wait_for_reset();

 protected:
  void set_texts(const QString& title, const QString& advice);

  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow();

  QAbstractItemView& view_;
  QString icon_;
  QString title_;
  QString advice_;
  QString about_rows_;
};

}  // namespace norvo
