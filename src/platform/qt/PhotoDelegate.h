// Paints a recovered photo as a tile: its picture, or a quiet stand-in, and its name. Main thread.
#pragma once

#include <QHelpEvent>
#include <QStyledItemDelegate>

#include "platform/qt/ResultView.h"
#include "platform/qt/ThumbnailCache.h"

namespace norvo {

class PhotoDelegate : public QStyledItemDelegate {
 public:
  // Both outlive the delegate.
  PhotoDelegate(const ResultView& view, ThumbnailCache& pictures);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  // Tells of an item what its picture does not show.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  QPixmap picture_of(const QModelIndex& index, double ratio) const;

  const ResultView& view_;
  ThumbnailCache& pictures_;
};

}  // namespace norvo
