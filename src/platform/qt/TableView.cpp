#include "platform/qt/TableView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/qt/Theme.h"

namespace norvo {
namespace {

// Draws no frame around a single cell: the row is what is selected. Blanks at the ends of a text
// are not drawn, so that numbers stand below their heading.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus;
    option->textElideMode = Qt::ElideMiddle;
    option->text = option->text.trimmed();
  }
};

}  // namespace

TableView::TableView(std::unique_ptr<SourceTableModel> model, int stretched,
                     const std::vector<int>& widths, QWidget* parent)
    : QTableView(parent), model_(model.release()) {
  model_->setParent(this);
  setModel(model_);
  setItemDelegate(new RowDelegate(this));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * unit);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setMinimumSectionSize(5 * unit);
  QFont bold = font();
  bold.setWeight(QFont::DemiBold);
  for (int column = 0; column < static_cast<int>(widths.size()); ++column) {
    const int characters = widths[static_cast<std::size_t>(column)];
    const QString heading = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const int room = std::max(characters * fontMetrics().averageCharWidth(),
                              QFontMetrics(bold).horizontalAdvance(heading));
    horizontalHeader()->resizeSection(column, room + 4 * unit);
  }
  horizontalHeader()->setSectionResizeMode(stretched, QHeaderView::Stretch);
}

void TableView::reload(bool scroll_to_last) {
  model_->reload();
  if (scroll_to_last) scrollToBottom();
}

void TableView::show_selected(std::size_t row) {
  const QModelIndex index = model_->index(static_cast<int>(row), 0);
  if (!index.isValid()) return;
  setCurrentIndex(index);
  scrollTo(index);
}

std::optional<std::size_t> TableView::selected_row() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  if (rows.isEmpty()) return std::nullopt;
  return static_cast<std::size_t>(rows.first().row());
}

void TableView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && currentIndex().isValid()) {
    for (int column = 0; column < model_->columnCount(); ++column) {
      const QModelIndex box = currentIndex().siblingAtColumn(column);
      if (!(model_->flags(box) & Qt::ItemIsUserCheckable)) continue;
      const bool on = model_->data(box, Qt::CheckStateRole).toInt() == Qt::Checked;
      model_->setData(box, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
      return;
    }
  }
  QTableView::keyPressEvent(event);
}

bool TableView::has_boxes() const {
  for (int column = 0; column < model_->columnCount(); ++column) {
    if (model_->flags(model_->index(0, column)) & Qt::ItemIsUserCheckable) return true;
  }
  return false;
}

void TableView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  if (!has_boxes() && !selectionModel()->hasSelection()) selectionModel()->clearCurrentIndex();
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  // The mark spans whole rows.
  viewport()->update();
}

void TableView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (!hasFocus() || !currentIndex().isValid()) return;
  const int last = model_->columnCount() - 1;
  const QRectF row = visualRect(currentIndex().siblingAtColumn(0)) |
                     visualRect(currentIndex().siblingAtColumn(last));
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Theme::current().accent, 2));
  painter.drawRoundedRect(row.adjusted(2, 1, -2, -1), unit / 2.0, unit / 2.0);
}

}  // namespace norvo
