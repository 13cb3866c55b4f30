// The found files of the other searches: a count for each type, the files, and a preview. Main
// thread.
#pragma once

#include <QWidget>

#include "platform/qt/ControlTable.h"
#include "platform/qt/ResultNote.h"
#include "platform/qt/ResultView.h"
#include "platform/qt/TableSource.h"
#include "platform/qt/TableView.h"
#include "results/Gallery.h"

namespace norvo {

class FoundFilesScreen : public QWidget {
 public:
  // `gallery` outlives the screen.
  FoundFilesScreen(ControlTable& controls, TableSource found_files, const Gallery& gallery);

  TableView& table() const { return *table_; }
  ResultView& view() const { return *view_; }

  // A search begins, or has ended.
  void follow_search(bool running) { note_->follow_search(running); }

 private:
  QWidget* make_preview(ControlTable& controls);

  TableView* table_;
  ResultView* view_;
  ResultNote* note_;  // belongs to the view
};

}  // namespace norvo
