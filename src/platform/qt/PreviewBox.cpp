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

std::uint32_t pixels(int points, double ratio) {
  return static_cast<std::uint32_t>(points * ratio);
}

QPixmap icon_of(const std::filesystem::path& file, double ratio) {
  return type_icon(to_qt(extension_of(file)), icon_points, ratio);
}

}  // namespace

PreviewBox::PreviewBox(Setting setting)
    : setting_(std::move(setting)),
      view_(*qobject_cast<QLabel*>(&setting_.window.widget(Control::QuickLook_View))),
      preview_(*this, setting_.shown),
      posts_(setting_.main_thread),
      player_({.player = setting_.player}, [this](const MovieEvent& event) {
        posts_.post([this, event] {
          take(event);
          player_.taken();
        });
      }) {
  movie_view_ = std::make_unique<MovieView>(MovieView::Acts{
      .play = [this] { player_.play(); },
      .pause = [this] { player_.pause(); },
      .seek = [this](std::chrono::milliseconds position) { player_.seek(position); }});
  auto* layout = new QVBoxLayout(&setting_.window.widget(Control::mMovieView));
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(movie_view_.get());
  connect(&setting_.pictures, &ThumbnailSource::done, this, &PreviewBox::take_thumbnail);
  connect(&setting_.pictures, &ThumbnailSource::postponed, this,
          [this](const QString& id) { take_thumbnail(id, {}); });
}

bool PreviewBox::is_shown() const {
  return !setting_.window.widget(Control::QuickLook_View_Box).isHidden();
}

void PreviewBox::open_movie(const std::filesystem::path& path) {
  movie_icon_ = icon_of(path, ratio());
  movie_ = player_.open(path, {.width = pixels(preview_points, ratio()),
                               .height = pixels(preview_points - bar_points, ratio())});
}

void PreviewBox::closemovie_Win() {
  player_.close();
  movie_ = 0;
  movie_view_->clear();
}

void PreviewBox::show_view(View view) {
  const bool movie = view == View::movie;
  setting_.window.set_hidden(Control::QuickLook_View, movie);
  setting_.window.set_hidden(Control::mMovieView, !movie);
}

void PreviewBox::make_thumbnail(const std::filesystem::path& path) {
  setting_.pictures.request(path, QString::number(++request_),
                            static_cast<int>(pixels(preview_points, ratio())));
}

void PreviewBox::show_thumbnail() {
  QPixmap pixmap = QPixmap::fromImage(thumbnail_);
  pixmap.setDevicePixelRatio(ratio());
  view_.setPixmap(pixmap);
}

void PreviewBox::show_icon(const std::filesystem::path& file_Name) {
  view_.setPixmap(icon_of(file_Name, ratio()));
}

void PreviewBox::clear_image() {
  setting_.pictures.cancel_all();
  thumbnail_ = {};
  view_.clear();
}

void PreviewBox::take(const MovieEvent& event) {
  if (event.movie != movie_) return;
  const std::chrono::milliseconds time(event.milliseconds);
  switch (event.kind) {
    case MovieEvent::Kind::opened:
      movie_view_->begin(time, movie_icon_);
      return preview_.movie_opened();
    case MovieEvent::Kind::position:
      return movie_view_->show_position(time);
    case MovieEvent::Kind::frame:
      if (event.frame) movie_view_->show_frame(image_of(*event.frame));
      return;
    case MovieEvent::Kind::ended:
      return movie_view_->end_reached();
    case MovieEvent::Kind::no_movie:
    case MovieEvent::Kind::error:
      closemovie_Win();
      return preview_.movie_failed();
  }
}

void PreviewBox::take_thumbnail(const QString& id, const QImage& picture) {
  if (id != QString::number(request_)) return;
  thumbnail_ = picture;
  preview_.thumbnail_made(!picture.isNull());
}

}  // namespace norvo
