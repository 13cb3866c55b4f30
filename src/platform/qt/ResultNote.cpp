#include "platform/qt/ResultNote.h"

#include <QAbstractItemModel>
#include <utility>

namespace norvo {

ResultNote::ResultNote(QAbstractItemView& view, const QString& icon, Texts texts)
    : EmptyNote(view, icon, texts.none_yet.title, texts.none_yet.advice), texts_(std::move(texts)) {
  describe_rows(
      QStringLiteral("Return opens a file. Delete takes the selected files out of this list only, "
                     "and Alt with the left or the right arrow key moves them in it."));
  connect(view.model(), &QAbstractItemModel::rowsInserted, this, [this] {
    has_shown_items_ = true;
    show_text();
  });
}

void ResultNote::follow_search(bool running) {
  if (running && !running_) has_shown_items_ = false;
  running_ = running;
  show_text();
}

void ResultNote::show_text() {
  const Text& before_any = running_ ? texts_.none_yet : texts_.none_found;
  const Text& text = has_shown_items_ ? texts_.taken_out : before_any;
  set_texts(text.title, text.advice);
}

}  // namespace norvo
