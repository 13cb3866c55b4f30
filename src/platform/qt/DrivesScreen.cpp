#include "platform/qt/DrivesScreen.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/EmptyNote.h"
#include "platform/qt/Labels.h"
#include "platform/qt/ModeTile.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Theme.h"
#include "platform/qt/TitledBox.h"
#include "storage/DriveList.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

// The one local file of a drop, or an empty text.
QString dropped_file(const QMimeData& data) {
  if (data.urls().size() != 1) return {};
  const QString file = data.urls().first().toLocalFile();
  return QFileInfo(file).isFile() ? file : QString();
}

std::vector<TableColumn> table_columns() {
  std::vector<TableColumn> columns;
  columns.reserve(drive_columns.size());
  for (const DriveColumn& column : drive_columns) {
    columns.push_back({utf8_from_text(column.identifier), to_qt(column.heading),
                       column.is_number ? TableColumn::Kind::number : TableColumn::Kind::text});
  }
  // The terminal's word for it is for those who type it.
  columns.front().heading = u"Disk"_s;
  return columns;
}

}  // namespace

DrivesScreen::DrivesScreen(ControlTable& controls, TableSource drives,
                           std::function<void(const std::filesystem::path&)> image_chosen)
    : image_chosen_(std::move(image_chosen)) {
  table_ = controls.add(
      Control::idTableView,
      new TableView(std::make_unique<SourceTableModel>(std::move(drives), table_columns(),
                                                       SourceTableModel::Reload::anew),
                    1, {12, 20, 18, 11, 10, 14}),
      u"Drives"_s);
  table_->setAcceptDrops(true);
  table_->viewport()->setAcceptDrops(true);
  table_->viewport()->installEventFilter(this);
  table_->setMinimumHeight(15 * unit);
  auto* const note =
      new EmptyNote(*table_, u"card"_s, u"No drive found yet"_s,
                    u"Connect the memory card or drive and press Refresh, or open a disk image. "
                    u"You can also drop a disk image here."_s);
  note->wait_for_reset();

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(unit);
  column->addWidget(table_, 1);
  column->addWidget(make_refresh_box(controls));
  column->addSpacing(unit);
  column->addWidget(make_mode_box(controls));
}

QWidget* DrivesScreen::make_refresh_box(ControlTable& controls) {
  TitledBox* const box =
      controls.add(Control::refresh_Box, new TitledBox({}, TitledBox::Kind::flat), u"Drive list"_s);
  auto* const label = controls.add(
      Control::refresh_label,
      new QuietLabel(u"Not in the list? Connect it and press Refresh, or open a disk image."_s),
      u"About the drive list"_s);
  auto* const image =
      controls.add(Control::open_image_btn, new QPushButton(u"&Open Disk Image…"_s),
                   u"Open disk image"_s, u"Searches a file that holds a copy of a card or drive"_s);
  auto* const refresh = controls.add(Control::refresh_btn, new QPushButton(u"&Refresh"_s),
                                     u"Refresh"_s, u"Looks for connected drives again"_s);
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(label, 1);
  row->addWidget(refresh);
  row->addWidget(image);
  box->content().addLayout(row);
  return box;
}

QWidget* DrivesScreen::make_mode_box(ControlTable& controls) {
  TitledBox* const box = controls.add(
      Control::rec_mode_Box, new TitledBox(u"What are you looking for?"_s, TitledBox::Kind::flat),
      u"What are you looking for?"_s);
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  const auto add_tile = [&controls, row](Control control, const QString& title, const QString& line,
                                         const QString& icon, const QString& name) {
    row->addWidget(
        controls.add(control, new ModeTile(title, line, icon), name, name + u": "_s + line));
  };
  add_tile(Control::rec_mode_Photo, u"&Photos"_s, u"Pictures you took"_s, u"photo"_s,
           u"Search for photos"_s);
  add_tile(Control::rec_mode_Video, u"&Videos"_s, u"Clips and films"_s, u"video"_s,
           u"Search for videos"_s);
  add_tile(Control::rec_mode_RawFile, u"Ra&w files"_s, u"Camera originals"_s, u"raw"_s,
           u"Search for raw files"_s);
  add_tile(Control::rec_mode_Audio, u"A&udio"_s, u"Music and recordings"_s, u"audio"_s,
           u"Search for audio files"_s);
  box->content().addLayout(row);
  return box;
}

void DrivesScreen::choose_image() {
  QFileDialog dialog(window(), u"Open Disk Image"_s);
  dialog.setObjectName(u"image_chooser"_s);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters(
      {u"Disk images (*.img *.dd *.raw *.bin *.dmg *.iso)"_s, u"All files (*)"_s});
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  image_chosen_(to_path(dialog.selectedFiles().first()));
}

bool DrivesScreen::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
    return QWidget::eventFilter(watched, event);
  }
  // The other two drag events are kinds of a drop event.
  auto* const drop = static_cast<QDropEvent*>(event);
  const QString file = dropped_file(*drop->mimeData());
  drop->setAccepted(!file.isEmpty());
  if (file.isEmpty()) return true;
  drop->setDropAction(Qt::CopyAction);
  if (type == QEvent::Drop) image_chosen_(to_path(file));
  return true;
}

}  // namespace norvo
