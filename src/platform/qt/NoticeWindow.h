// A small window with a title, a text and at most one button of its own. Main thread.
#pragma once

#include <QDialog>
#include <QEventLoop>
#include <QVBoxLayout>

namespace norvo {

class QuietLabel;

class NoticeWindow : public QDialog {
 public:
  struct Look {
    QString object_name;
    QString icon;
    QString title;
    QString text;
    // The button that ends a modal run; none with an empty name.
    QString button_name;
    QString button_caption;
  };
  NoticeWindow(const Look& look, QWidget* parent);

  // How wide the texts are; what is put into more() keeps to it.
  static constexpr int text_width = 368;

  void set_text(const QString& text);

  // Room for more, below the text.
  QVBoxLayout& more() { return *more_; }

  // Shows the window modally until its button is pressed (closed_by_button; the window stays up)
  // or it is closed otherwise (0).
  int run();

  // Closing the window ends a run; without a run it has no effect.
  void reject() override;

 private:
  void end_run(int code);

  QuietLabel* text_;
  QVBoxLayout* more_;
  QEventLoop* loop_ = nullptr;
};

}  // namespace norvo
