// A view of recovered files: tiles with pictures, or small icons with names. Main thread.
#pragma once

#include <QListView>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/qt/Coalescer.h"
#include "platform/qt/ExactValue.h"
#include "platform/qt/ResultModel.h"

namespace norvo {

// What the person does; indexes ascend. Each function may be empty.
struct ResultActs {
  std::function<void(std::size_t index)> double_clicked;
  std::function<void()> selection_changed;
  std::function<void(const std::vector<std::size_t>& indexes)> removed;
  std::function<void(const std::vector<std::size_t>& indexes, std::size_t destination)> moved;
};

class ResultView : public QListView, public ExactValue {
 public:
  // Tiles follow the zoom, which is the view's exact value from 0 to 1; small items do not. The
  // model belongs to the view.
  enum class Items { tiles, small };
  ResultView(std::unique_ptr<ResultModel> model, Items items, QWidget* parent = nullptr);

  void on_acts(ResultActs acts) { acts_ = std::move(acts); }

  ResultModel& result_model() const { return *model_; }

  // The list is read anew soon; a burst of calls is one redraw.
  void reload(bool scroll_to_last);

  // The first selected item.
  std::optional<std::size_t> selected_index() const;

  // The edge of a tile's picture.
  int picture_size() const;

 protected:
  void show_value() override;
  // Delete and Backspace remove the selected items, Alt with the left or the right arrow moves them
  // by one place, Return opens the current one.
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  // Dragging moves items within this view and offers nothing to any other place.
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& gone) override;
  void dataChanged(const QModelIndex& first, const QModelIndex& last,
                   const QList<int>& roles) override;

 private:
  void refresh();
  void fit_grid();
  std::vector<std::size_t> selected_indexes() const;
  // Tells that the person moves the selected items over the one before or behind them.
  void move_selected(bool forward);
  // The item before which a drop at `place` puts what is dragged.
  std::size_t destination_at(const QPoint& place) const;

  ResultModel* model_;
  Items items_;
  ResultActs acts_;
  Coalescer redraw_;
  bool scroll_wanted_ = false;
  bool refreshing_ = false;
  std::optional<std::size_t> drop_mark_;
};

}  // namespace norvo
