#include "platform/qt/PreviewBox.h"

#include <QVBoxLayout>
#include <utility>

#include "platform/qt/PictureImage.h"
#include "platform/qt/QtText.h"
#include "platform/qt/TypeIcons.h"
#include "results/Paths.h"

namespace norvo {
namespace {

constexpr int preview_points = 200;
constexpr int bar_points = 40;
constexpr int icon_points = 96;

}  // namespace

PreviewBox::PreviewBox(Setting setting)
    : setting_(std::move(setting)),
      view_(*qobject_cast<QLabel*>(&setting_.window.widget(Control::QuickLook_View))),
      posts_(setting_.main_thread),
      player_({.player = setting_.player},
              [this](const MovieEvent& event) { posts_.post([this, event] { take(event); }); }) {
  movie_view_ = new MovieView(
      {.play = [this] { player_.play(); },
       .pause = [this] { player_.pause(); },
       .seek = [this](std::chrono::milliseconds position) { player_.seek(position); }});
  auto* layout = new QVBoxLayout(&setting_.window.widget(Control::mMovieView));
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(movie_view_);
  connect(&setting_.pictures, &ThumbnailSource::done, this, &PreviewBox::show_picture);
}

void PreviewBox::clear() {
  player_.close();
  movie_ = 0;
  setting_.pictures.cancel_all();
  path_.clear();
  view_.clear();
  preparing_ = false;
}

void PreviewBox::CreateFile_QuickLook_Preview(const std::filesystem::path& path) {
  if (path.empty()) return;
  path_ = path;
  preparing_ = true;
  const double ratio = setting_.window.devicePixelRatioF();
  const auto points = [ratio](int size) { return static_cast<std::uint32_t>(size * ratio); };
  movie_ = player_.open(path, {points(preview_points), points(preview_points - bar_points)});
}

void PreviewBox::take(const MovieEvent& event) {
  if (event.movie != movie_ || path_.empty()) return;
  const std::chrono::milliseconds time(event.milliseconds);
  switch (event.kind) {
    case MovieEvent::Kind::opened:
      return begin_movie(time);
    case MovieEvent::Kind::position:
      return movie_view_->show_position(time);
    case MovieEvent::Kind::frame:
      if (event.frame) movie_view_->show_frame(image_of(*event.frame));
      return;
    case MovieEvent::Kind::ended:
      return movie_view_->end_reached();
    case MovieEvent::Kind::no_movie:
    case MovieEvent::Kind::error:
      movie_ = 0;
      return show_still();
  }
}

void PreviewBox::begin_movie(std::chrono::milliseconds duration) {
  movie_view_->begin(duration, icon());
  setting_.window.set_hidden(Control::QuickLook_View, true);
  setting_.window.set_hidden(Control::mMovieView, false);
  finish();
}

void PreviewBox::show_still() {
  setting_.window.set_hidden(Control::QuickLook_View, false);
  setting_.window.set_hidden(Control::mMovieView, true);
  const double ratio = setting_.window.devicePixelRatioF();
  setting_.pictures.request(path_, QString::number(++request_),
                            static_cast<int>(preview_points * ratio));
}

void PreviewBox::show_picture(const QString& id, const QImage& picture) {
  if (id != QString::number(request_) || path_.empty()) return;
  QPixmap pixmap = picture.isNull() ? icon() : QPixmap::fromImage(picture);
  pixmap.setDevicePixelRatio(setting_.window.devicePixelRatioF());
  view_.setPixmap(pixmap);
  finish();
}

QPixmap PreviewBox::icon() const {
  return type_icon(to_qt(extension_of(path_)), icon_points, setting_.window.devicePixelRatioF());
}

void PreviewBox::finish() {
  if (std::exchange(preparing_, false)) setting_.shown();
}

}  // namespace norvo
