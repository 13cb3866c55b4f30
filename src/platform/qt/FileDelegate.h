// Paints a recovered file as the icon of its type and its name. Main thread.
#pragma once

#include <QStyledItemDelegate>

#include "platform/qt/ResultView.h"

namespace norvo {

class FileDelegate : public QStyledItemDelegate {
 public:
  // `view` outlives the delegate.
  explicit FileDelegate(const ResultView& view) : view_(view) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const ResultView& view_;
};

}  // namespace norvo
