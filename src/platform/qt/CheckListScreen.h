// The choice of file types of a search. Main thread.
#pragma once

#include <QWidget>

#include "platform/qt/ControlTable.h"
#include "platform/qt/TableSource.h"
#include "platform/qt/TableView.h"

namespace norvo {

class CheckListScreen : public QWidget {
 public:
  CheckListScreen(ControlTable& controls, TableSource types);

  TableView& table() const { return *table_; }

 private:
  TableView* table_;
};

}  // namespace norvo
