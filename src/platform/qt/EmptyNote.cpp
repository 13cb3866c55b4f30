#include "platform/qt/EmptyNote.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QPainter>

#include "platform/qt/Icons.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int text_flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

int height_of(const QString& text, const QFontMetrics& metrics, int width) {
  return metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), text_flags, text).height();
}

// The least width that takes no more lines: the last one is then no single word.
int balanced_width(const QString& text, const QFontMetrics& metrics, int width) {
  const int height = height_of(text, metrics, width);
  int least = width;
  while (least > unit && height_of(text, metrics, least - unit) == height) least -= unit;
  return least;
}

}  // namespace

EmptyNote::EmptyNote(QAbstractItemView& view, const QString& icon, const QString& title,
                     const QString& advice)
    : QWidget(view.viewport()), view_(view), icon_(icon), title_(title), advice_(advice) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  view.viewport()->installEventFilter(this);
  const QAbstractItemModel* const model = view.model();
  connect(model, &QAbstractItemModel::modelReset, this, &EmptyNote::follow);
  connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyNote::follow);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyNote::follow);
  follow();
}

void EmptyNote::wait_for_reset() {
  hide();
  view_.setAccessibleDescription({});
}

void EmptyNote::describe_rows(const QString& description) {
  about_rows_ = description;
  follow();
}

void EmptyNote::set_texts(const QString& title, const QString& advice) {
  title_ = title;
  advice_ = advice;
  update();
  follow();
}

void EmptyNote::follow() {
  const bool empty = view_.model()->rowCount() == 0;
  setVisible(empty);
  view_.setAccessibleDescription(empty ? title_ + u' ' + advice_ : about_rows_);
}

bool EmptyNote::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(view_.viewport()->rect());
  return QWidget::eventFilter(watched, event);
}

void EmptyNote::paintEvent(QPaintEvent* /*event*/) {
  const Theme theme = Theme::current();
  QPainter painter(this);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.15);
  large.setWeight(QFont::DemiBold);
  constexpr int icon_size = 6 * unit;
  const int title_height = QFontMetrics(large).height();
  const int room = std::min(width() - 4 * unit, 56 * unit);
  const int text_width = std::max(balanced_width(advice_, fontMetrics(), room),
                                  balanced_width(title_, QFontMetrics(large), room));
  QRect text((width() - text_width) / 2, 0, text_width, height());
  const int advice_height = height_of(advice_, fontMetrics(), text_width);
  const int text_height = title_height + unit / 2 + advice_height;
  const bool icon_fits = height() > text_height + icon_size + 4 * unit;
  int top = (height() - text_height - (icon_fits ? icon_size + unit : 0)) / 2;
  if (icon_fits) {
    draw_icon(painter, icon_, QRectF((width() - icon_size) / 2.0, top, icon_size, icon_size),
              theme.strong_border);
    top += icon_size + unit;
  }
  text.setTop(top);
  painter.setFont(large);
  painter.setPen(theme.text);
  painter.drawText(text, text_flags, title_);
  text.setTop(top + title_height + unit / 2);
  painter.setFont(font());
  painter.setPen(theme.quiet_text);
  painter.drawText(text, text_flags, advice_);
}

}  // namespace norvo
