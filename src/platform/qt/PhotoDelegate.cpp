#include "platform/qt/PhotoDelegate.h"

#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/qt/Icons.h"
#include "platform/qt/PhotoBadge.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr double corner = 4;
constexpr std::int32_t photo_search = 0;  // as Recovery_MODE

// Pictures are made in a few sizes, so that zooming does not ask for each one again.
int made_size(int wanted) {
  for (const int size : {128, 256}) {
    if (wanted <= size) return size;
  }
  return 512;
}

void draw_stand_in(QPainter& painter, const QRectF& place, const Theme& theme) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(theme.surface, theme.text, 0.07));
  painter.drawRoundedRect(place, corner, corner);
  const double size = std::min(place.width(), place.height()) * 0.3;
  draw_icon(painter, u"photo"_s,
            QRectF(place.center().x() - size / 2, place.center().y() - size / 2, size, size),
            mixed(theme.surface, theme.text, 0.35));
}

// Draws the picture as large as `place` allows, and returns where.
QRectF draw_picture(QPainter& painter, const QRectF& place, const QPixmap& picture,
                    const Theme& theme) {
  const QSizeF natural = QSizeF(picture.size()) / picture.devicePixelRatio();
  QSizeF size = natural.scaled(place.size(), Qt::KeepAspectRatio);
  QRectF frame(QPointF(), size);
  frame.moveCenter(place.center());
  frame = QRectF(frame.toAlignedRect());
  painter.save();
  QPainterPath rounded;
  rounded.addRoundedRect(frame, corner, corner);
  QColor shadow = theme.text;
  shadow.setAlphaF(theme.dark ? 0.0F : 0.10F);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shadow);
  painter.drawRoundedRect(frame.adjusted(-1, 0, 1, 2), corner + 1, corner + 1);
  painter.setClipPath(rounded, Qt::IntersectClip);
  painter.drawPixmap(frame, picture, QRectF(picture.rect()));
  painter.restore();
  QColor edge = theme.text;
  edge.setAlphaF(0.22F);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
  return frame;
}

}  // namespace

PhotoDelegate::PhotoDelegate(const ResultView& view, ThumbnailCache& pictures)
    : view_(view), pictures_(pictures) {
}

QSize PhotoDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                              const QModelIndex& /*index*/) const {
  return view_.gridSize();
}

QPixmap PhotoDelegate::picture_of(const QModelIndex& index, double ratio) const {
  const MyImageObject& item = view_.result_model().item(index.row());
  const QString image_UID = index.data(ResultModel::uid_role).toString();
  if (representation_type(photo_search, item.path) == Representation::data_buffer) {
    return pictures_.picture(item.imageData, image_UID);
  }
  if (pictures_.failed(image_UID)) return no_preview_picture();
  const int pixels = made_size(static_cast<int>(std::ceil(view_.picture_size() * ratio)));
  return pictures_.picture(item.path, image_UID, pixels);
}

void PhotoDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const Theme theme = Theme::current();
  painter->save();
  painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  const int size = view_.picture_size();
  QRectF tile(0, 0, size + 2.0 * unit, option.rect.height() - unit / 2.0);
  tile.moveCenter(QRectF(option.rect).center());
  const bool selected = option.state & QStyle::State_Selected;
  const bool cursor = option.state & QStyle::State_HasFocus;
  if (selected || (option.state & QStyle::State_MouseOver)) {
    painter->setPen(selected ? QPen(theme.accent, 2) : QPen(Qt::NoPen));
    painter->setBrush(selected ? theme.accent_tint : theme.hover);
    painter->drawRoundedRect(tile.adjusted(1, 1, -1, -1), unit - 2, unit - 2);
  }
  if (cursor && !selected) {
    painter->setPen(QPen(theme.text, 1, Qt::DotLine));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(tile.adjusted(1, 1, -1, -1), unit - 2, unit - 2);
  }
  const QRectF place(tile.left() + unit, tile.top() + unit, size, size);
  const QPixmap picture = picture_of(index, painter->device()->devicePixelRatioF());
  if (picture.isNull()) {
    draw_stand_in(*painter, place, theme);
  } else {
    const QRectF frame = draw_picture(*painter, place, picture, theme);
    draw_badge(*painter, frame, pictures_.judgement(index.data(ResultModel::uid_role).toString()),
               option.font, theme);
  }
  const QRectF name(tile.left() + 6, place.bottom() + 4, tile.width() - 12,
                    option.fontMetrics.height());
  painter->setPen(theme.text);
  painter->setFont(option.font);
  painter->drawText(name, Qt::AlignCenter | Qt::TextSingleLine,
                    option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle,
                                                  static_cast<int>(name.width())));
  painter->restore();
}

bool PhotoDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                              const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (!index.isValid()) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const QString sentence =
      badge_sentence(pictures_.judgement(index.data(ResultModel::uid_role).toString()));
  const QString name = index.data().toString();
  QToolTip::showText(event->globalPos(), sentence.isEmpty() ? name : name + u'\n' + sentence, view);
  return true;
}

}  // namespace norvo
