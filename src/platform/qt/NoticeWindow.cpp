#include "platform/qt/NoticeWindow.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <utility>

#include "platform/qt/Icons.h"
#include "platform/qt/Labels.h"
#include "platform/qt/Theme.h"
#include "wizard/Notices.h"

namespace norvo {
namespace {

// Drawn in the colours of the moment, which may change while the window is there.
class MessageIcon : public QWidget {
 public:
  explicit MessageIcon(QString name) : name_(std::move(name)) {
    setFixedSize(message_icon_size, message_icon_size);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    draw_icon(painter, name_, rect(), Theme::current().accent);
  }

 private:
  QString name_;
};

}  // namespace

NoticeWindow::NoticeWindow(const Look& look, QWidget* parent) : QDialog(parent) {
  setObjectName(look.object_name);
  setWindowTitle(look.title);
  auto* icon = new MessageIcon(look.icon);
  icon->setObjectName(QStringLiteral("icon"));
  auto* title = new QLabel(look.title);
  title->setTextFormat(Qt::PlainText);
  title->setWordWrap(true);
  scale_font(*title, 1.3, QFont::DemiBold);
  text_ = new QuietLabel;
  text_->setFixedWidth(text_width);
  set_text(look.text);
  more_ = new QVBoxLayout;
  more_->setSpacing(unit);

  auto* texts = new QVBoxLayout;
  texts->setSpacing(unit);
  texts->addWidget(title);
  texts->addWidget(text_);
  texts->addLayout(more_);
  texts->addStretch(1);
  auto* row = new QHBoxLayout;
  row->setSpacing(2 * unit);
  row->addWidget(icon, 0, Qt::AlignTop);
  row->addLayout(texts, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 2 * unit);
  column->setSpacing(2 * unit);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addLayout(row);
  if (look.button_name.isEmpty()) return;
  auto* button = new QPushButton(look.button_caption);
  button->setObjectName(look.button_name);
  button->setProperty("look", QStringLiteral("primary"));
  button->setDefault(true);
  connect(button, &QPushButton::clicked, this, [this] { end_run(closed_by_button); });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(button);
  column->addLayout(buttons);
  // Return presses it, wherever the focus stands.
  button->setFocus();
}

void NoticeWindow::set_text(const QString& text) {
  text_->setText(text);
  text_->setFixedHeight(text_->heightForWidth(text_width));
}

int NoticeWindow::run() {
  QEventLoop loop;
  loop_ = &loop;
  setWindowModality(Qt::ApplicationModal);
  show();
  const int code = loop.exec();
  loop_ = nullptr;
  if (code == closed_by_button) return code;
  // Closed, or the program ends.
  hide();
  return 0;
}

void NoticeWindow::end_run(int code) {
  if (loop_ != nullptr) loop_->exit(code);
}

void NoticeWindow::reject() {
  end_run(0);
}

}  // namespace norvo
