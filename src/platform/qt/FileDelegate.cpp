#include "platform/qt/FileDelegate.h"

#include <QPainter>

#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TypeIcons.h"

namespace norvo {
QSize FileDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                             const QModelIndex& /*index*/) const {
  return view_.gridSize();
}

void FileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const Theme theme = Theme::current();
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QRectF row = QRectF(option.rect).adjusted(2, 1, -2, -1);
  const bool selected = option.state & QStyle::State_Selected;
  const bool cursor = option.state & QStyle::State_HasFocus;
  if (selected || (option.state & QStyle::State_MouseOver)) {
    painter->setPen(selected ? QPen(theme.accent, 1) : QPen(Qt::NoPen));
    painter->setBrush(selected ? theme.accent_tint : theme.hover);
    painter->drawRoundedRect(row.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
  }
  if (cursor && !selected) {
    painter->setPen(QPen(theme.text, 1, Qt::DotLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(row.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
  }
  const IconImage& image = view_.result_model().item(index.row()).image;
  const auto icon_size = static_cast<int>(image.points);
  const QPointF icon(row.left() + unit, row.center().y() - icon_size / 2.0);
  painter->drawPixmap(icon, type_icon(to_qt(displayable(image.file_type)), icon_size,
                                      painter->device()->devicePixelRatioF()));
  const QRectF name(icon.x() + icon_size + unit, row.top(),
                    row.right() - icon.x() - icon_size - 2.0 * unit, row.height());
  painter->setPen(theme.text);
  painter->setFont(option.font);
  painter->drawText(name, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle,
                                                  static_cast<int>(name.width())));
  painter->restore();
}

}  // namespace norvo
