#include "platform/qt/FoundFilesScreen.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/FileDelegate.h"
#include "platform/qt/PreviewPicture.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TitledBox.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;
using Kind = TableColumn::Kind;

constexpr int preview_edge = 200;

std::vector<TableColumn> found_columns() {
  return {{"FileTypes", u"Type"_s},
          {"NoOfFile", u"Files"_s, Kind::number},
          {"FileName", u"Latest file"_s},
          {"FilePath", u"Saved as"_s}};
}

ResultNote::Texts file_note_texts() {
  return {.none_yet = {u"No files yet"_s,
                       u"What the search finds appears here at once. Select a file to see it."_s},
          .none_found = {u"No files were found"_s,
                         u"Go back to try more file types, the thorough search, the entire disk, "
                         u"or another type of search."_s},
          .taken_out = {u"No files in the list"_s,
                        u"Those that were shown here are still in the destination folder."_s}};
}

}  // namespace

FoundFilesScreen::FoundFilesScreen(ControlTable& controls, TableSource found_files,
                                   const Gallery& gallery) {
  table_ = controls.add(
      Control::idSigTableView,
      new TableView(std::make_unique<SourceTableModel>(std::move(found_files), found_columns(),
                                                       SourceTableModel::Reload::in_place),
                    3, {9, 8, 22, 20}),
      u"Found files by type"_s);
  view_ =
      controls.add(Control::imageBrowser_2,
                   new ResultView(std::make_unique<ResultModel>(gallery), ResultView::Items::small),
                   u"Found files"_s);
  auto* const delegate = new FileDelegate(*view_);
  delegate->setParent(view_);
  view_->setItemDelegate(delegate);
  note_ = new ResultNote(*view_, u"document"_s, file_note_texts());

  auto* lists = new QSplitter(Qt::Vertical);
  lists->addWidget(table_);
  lists->addWidget(view_);
  lists->setChildrenCollapsible(false);
  lists->setHandleWidth(12);
  lists->setSizes({200, 260});
  auto* side = new QVBoxLayout;
  side->setSpacing(12);
  side->addWidget(make_preview(controls));
  side->addStretch(1);
  side->addWidget(controls.add(Control::open_folder_Sig, new QPushButton(u"Open &Folder"_s),
                               u"Open folder"_s,
                               u"Shows the recovered files in the file browser"_s));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2 * unit);
  row->addWidget(lists, 1);
  row->addLayout(side);
}

QWidget* FoundFilesScreen::make_preview(ControlTable& controls) {
  TitledBox* const box =
      controls.add(Control::QuickLook_View_Box, new TitledBox(u"Preview"_s), u"Preview"_s);
  auto* const picture =
      controls.add(Control::QuickLook_View, new PreviewPicture, u"Preview picture"_s);
  picture->setTextFormat(Qt::PlainText);
  picture->setFixedSize(preview_edge, preview_edge);
  picture->setAlignment(Qt::AlignCenter);
  QWidget* const movie_view = controls.add(Control::mMovieView, new QWidget, u"Preview player"_s);
  movie_view->setFixedSize(preview_edge, preview_edge);
  box->content().addWidget(picture);
  box->content().addWidget(movie_view);
  box->setFixedWidth(preview_edge + 4 * unit);
  return box;
}

}  // namespace norvo
