// What stands in the empty list of a search's results. Main thread.
#pragma once

#include <QString>

#include "platform/qt/EmptyNote.h"

namespace norvo {

class ResultNote : public EmptyNote {
 public:
  struct Text {
    QString title;
    QString advice;
  };
  struct Texts {
    Text none_yet;    // while a search runs
    Text none_found;  // when it has ended
    Text taken_out;   // in either case, when the list has shown something
  };

  // As EmptyNote.
  ResultNote(QAbstractItemView& view, const QString& icon, Texts texts);

  // A search begins, or has ended.
  void follow_search(bool running);

 private:
  void show_text();

  Texts texts_;
  bool running_ = true;
  bool has_shown_items_ = false;
};

}  // namespace norvo
