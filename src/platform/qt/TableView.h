// A table of whole rows, at most one of them selected, that the keyboard can work. Main thread.
#pragma once

#include <QTableView>
#include <memory>
#include <optional>

#include "platform/qt/SourceTableModel.h"

namespace norvo {

class TableView : public QTableView {
 public:
  // `stretched` is the column that takes the room that is left; the others are `widths` wide, in
  // characters. The model belongs to the view.
  TableView(std::unique_ptr<SourceTableModel> model, int stretched, const std::vector<int>& widths,
            QWidget* parent = nullptr);

  SourceTableModel& source_model() const { return *model_; }

  void reload(bool scroll_to_last);
  std::optional<std::size_t> selected_row() const;

  // Selects `row` and scrolls to it; nothing for a row that does not exist.
  void show_selected(std::size_t row);

 protected:
  // Space ticks the row's box, in whichever column the cursor stands.
  void keyPressEvent(QKeyEvent* event) override;
  // A list without boxes has no cursor while none of its rows is selected: an arrow key then
  // selects the first row, even if that is the only one.
  void focusInEvent(QFocusEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  // Marks the row of the cursor while the list has the keyboard.
  void paintEvent(QPaintEvent* event) override;

 private:
  bool has_boxes() const;

  SourceTableModel* model_;
};

}  // namespace norvo
