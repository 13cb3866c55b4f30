#include "platform/qt/GalleryScreen.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "platform/qt/ExactSlider.h"
#include "platform/qt/Labels.h"
#include "platform/qt/PhotoBadge.h"
#include "platform/qt/PhotoDelegate.h"
#include "platform/qt/Theme.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

ResultNote::Texts photo_note_texts() {
  return {.none_yet = {u"No photos yet"_s, u"What the search finds appears here at once."_s},
          .none_found = {u"No photos were found"_s,
                         u"Go back to try the thorough search, the entire disk, or another type "
                         u"of search."_s},
          .taken_out = {u"No photos in the list"_s,
                        u"Those that were shown here are still in the destination folder."_s}};
}

}  // namespace

GalleryScreen::GalleryScreen(ControlTable& controls, const Gallery& gallery,
                             ThumbnailSource& thumbnails, std::function<void(TextView)> mark_failed)
    : pictures_(thumbnails, std::move(mark_failed)) {
  view_ =
      controls.add(Control::imageBrowser,
                   new ResultView(std::make_unique<ResultModel>(gallery), ResultView::Items::tiles),
                   u"Found photos"_s);
  auto* const delegate = new PhotoDelegate(*view_, pictures_);
  delegate->setParent(view_);
  view_->setItemDelegate(delegate);
  ResultModel& model = view_->result_model();
  model.on_removed([this](const QString& image_UID) { pictures_.forget(image_UID); });
  model.on_emptied([this] { pictures_.forget_all(); });
  model.describe_by(
      [this](const QString& image_UID) { return badge_sentence(pictures_.judgement(image_UID)); });
  pictures_.on_arrival([&model](const QString& image_UID) { model.tell_change(image_UID); });
  note_ = new ResultNote(*view_, u"photo"_s, photo_note_texts());

  auto* const folder = controls.add(Control::open_folder, new QPushButton(u"Open &Folder"_s),
                                    u"Open folder"_s, u"Shows the recovered photos as files"_s);
  auto* const label = controls.add(Control::zoom_label, new QLabel(u"Si&ze"_s), u"Size"_s);
  auto* const zoom = controls.add(Control::zoom_slider, new ExactSlider, u"Size of the pictures"_s);
  zoom->setFixedWidth(20 * unit);
  label->setBuddy(zoom);
  auto* row = new QHBoxLayout;
  row->setSpacing(unit);
  row->addWidget(folder);
  row->addStretch(1);
  row->addWidget(label);
  row->addWidget(zoom);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(unit);
  column->addLayout(row);
  column->addWidget(view_, 1);
}

}  // namespace norvo
