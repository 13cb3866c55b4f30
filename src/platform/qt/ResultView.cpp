#include "platform/qt/ResultView.h"

#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/Theme.h"

namespace norvo {
namespace {

constexpr int redraw_milliseconds = 100;
constexpr double usual_zoom = 0.55;
constexpr int smallest_tile = 72;
constexpr int largest_tile = 256;
constexpr int small_item_characters = 26;

}  // namespace

ResultView::ResultView(std::unique_ptr<ResultModel> model, Items items, QWidget* parent)
    : QListView(parent),
      model_(model.release()),
      items_(items),
      redraw_([this] { refresh(); }, redraw_milliseconds) {
  model_->setParent(this);
  setModel(model_);
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFlow(QListView::LeftToRight);
  setWrapping(true);
  setResizeMode(QListView::Adjust);
  setDragEnabled(true);
  setAcceptDrops(true);
  viewport()->setAcceptDrops(true);
  setDropIndicatorShown(false);
  setMouseTracking(true);
  set_value(usual_zoom);
  connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
    if (acts_.double_clicked) acts_.double_clicked(static_cast<std::size_t>(index.row()));
  });
}

void ResultView::reload(bool scroll_to_last) {
  scroll_wanted_ = scroll_wanted_ || scroll_to_last;
  redraw_.wish();
}

void ResultView::refresh() {
  // What the list does to the selection is no act of the person.
  refreshing_ = true;
  model_->refresh();
  refreshing_ = false;
  if (std::exchange(scroll_wanted_, false)) scrollToBottom();
}

int ResultView::picture_size() const {
  return smallest_tile +
         static_cast<int>(std::lround((largest_tile - smallest_tile) * share().value_or(0)));
}

void ResultView::show_value() {
  fit_grid();
}

void ResultView::fit_grid() {
  // As if the scroll bar were always there: else it would change the columns, and they would make
  // it come and go again.
  const int bar = verticalScrollBar()->sizeHint().width();
  const int room = std::max(1, maximumViewportSize().width() - bar - 1);
  const int text = fontMetrics().height();
  const bool tiles = items_ == Items::tiles;
  const int wanted = tiles ? picture_size() + 2 * unit + unit / 2
                           : small_item_characters * fontMetrics().averageCharWidth() + 4 * unit;
  const int columns = std::max(1, room / wanted);
  const int height = tiles ? picture_size() + text + 3 * unit : std::max(20, text) + unit;
  const QSize grid(std::max(wanted, room / columns), height);
  if (grid != gridSize()) setGridSize(grid);
}

void ResultView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  fit_grid();
}

std::vector<std::size_t> ResultView::selected_indexes() const {
  std::vector<std::size_t> indexes;
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
    indexes.push_back(static_cast<std::size_t>(index.row()));
  }
  std::ranges::sort(indexes);
  return indexes;
}

std::optional<std::size_t> ResultView::selected_index() const {
  const auto indexes = selected_indexes();
  if (indexes.empty()) return std::nullopt;
  return indexes.front();
}

void ResultView::selectionChanged(const QItemSelection& selected, const QItemSelection& gone) {
  QListView::selectionChanged(selected, gone);
  if (!refreshing_ && acts_.selection_changed) acts_.selection_changed();
}

void ResultView::keyPressEvent(QKeyEvent* event) {
  const bool removes = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
  if (removes) {
    redraw_.flush();
    const auto indexes = selected_indexes();
    if (!indexes.empty() && acts_.removed) acts_.removed(indexes);
    return;
  }
  const bool moves = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
  // Arrow keys count as keys of the number pad on some systems.
  if (moves && (event->modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier) {
    return move_selected(event->key() == Qt::Key_Right);
  }
  const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (opens && currentIndex().isValid()) {
    if (acts_.double_clicked) acts_.double_clicked(static_cast<std::size_t>(currentIndex().row()));
    return;
  }
  QListView::keyPressEvent(event);
}

void ResultView::move_selected(bool forward) {
  redraw_.flush();
  const auto indexes = selected_indexes();
  if (indexes.empty() || !acts_.moved) return;
  const std::size_t beyond = forward ? indexes.back() + 1 : indexes.front();
  const std::size_t end = forward ? static_cast<std::size_t>(model_->rowCount()) : 0;
  if (beyond == end) return;
  acts_.moved(indexes, forward ? beyond + 1 : beyond - 1);
  redraw_.flush();
  if (currentIndex().isValid()) scrollTo(currentIndex());
}

void ResultView::dataChanged(const QModelIndex& first, const QModelIndex& last,
                             const QList<int>& roles) {
  // A list lays all items out anew for each change, but a picture or a description moves none.
  if (!roles.isEmpty() && !roles.contains(Qt::DisplayRole)) {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    return QAbstractItemView::dataChanged(first, last, roles);
  }
  QListView::dataChanged(first, last, roles);
}

void ResultView::startDrag(Qt::DropActions /*actions*/) {
  QDrag drag(this);
  drag.setMimeData(model_->mimeData({}));
  drag.exec(Qt::MoveAction);
}

std::size_t ResultView::destination_at(const QPoint& place) const {
  const QModelIndex hit = indexAt(place);
  if (!hit.isValid()) return static_cast<std::size_t>(model_->rowCount());
  const bool behind = place.x() > visualRect(hit).center().x();
  return static_cast<std::size_t>(hit.row()) + (behind ? 1U : 0U);
}

void ResultView::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(model_->is_own(*event->mimeData()));
}

void ResultView::dragMoveEvent(QDragMoveEvent* event) {
  event->setAccepted(model_->is_own(*event->mimeData()));
  if (!event->isAccepted()) return;
  drop_mark_ = destination_at(event->position().toPoint());
  viewport()->update();
}

void ResultView::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
  drop_mark_.reset();
  viewport()->update();
}

void ResultView::dropEvent(QDropEvent* event) {
  drop_mark_.reset();
  viewport()->update();
  if (!model_->is_own(*event->mimeData())) {
    event->ignore();
    return;
  }
  // Not a move in the toolkit's sense: it would take the items out of the model.
  event->setDropAction(Qt::CopyAction);
  event->accept();
  const std::size_t destination = destination_at(event->position().toPoint());
  const auto indexes = selected_indexes();
  if (!indexes.empty() && acts_.moved) acts_.moved(indexes, destination);
}

void ResultView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (!drop_mark_ || model_->rowCount() == 0) return;
  const int last = model_->rowCount() - 1;
  const bool at_end = *drop_mark_ > static_cast<std::size_t>(last);
  const QRect item = visualRect(model_->index(at_end ? last : static_cast<int>(*drop_mark_)));
  QPainter painter(viewport());
  painter.fillRect(QRect(at_end ? item.right() - 1 : item.left(), item.top(), 2, item.height()),
                   Theme::current().accent);
}

}  // namespace norvo
