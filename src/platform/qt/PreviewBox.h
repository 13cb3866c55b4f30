// The preview beside the file window, as FilePreview decides it: a movie, playing, or a picture, or
// an icon. Everything is decoded in other processes. Main thread.
#pragma once

#include <QImage>
#include <QLabel>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/player/MoviePlayer.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/MovieView.h"
#include "platform/qt/ThumbnailSource.h"
#include "results/FilePreview.h"
#include "wizard/ScopedPosts.h"

namespace norvo {

class PreviewBox : public QObject, private PreviewSurface {
 public:
  struct Setting {
    MainThread& main_thread;       // by which the player's events come; outlives this
    MainWindow& window;            // whose preview box is used; outlives this
    ThumbnailSource& pictures;     // asked by nobody else; outlives this
    std::filesystem::path player;  // the program norvo-player
    std::function<void()> shown;   // called whenever a preview is there
  };
  explicit PreviewBox(Setting setting);

  PreviewPane& pane() { return preview_; }

 private:
  bool is_shown() const override;
  void open_movie(const std::filesystem::path& path) override;
  void closemovie_Win() override;
  void show_view(View view) override;
  void make_thumbnail(const std::filesystem::path& path) override;
  void show_thumbnail() override;
  void show_icon(const std::filesystem::path& file_Name) override;
  void clear_image() override;

  void take(const MovieEvent& event);
  void take_thumbnail(const QString& id, const QImage& picture);
  double ratio() const { return setting_.window.devicePixelRatioF(); }

  Setting setting_;
  QLabel& view_;
  std::unique_ptr<MovieView> movie_view_;  // goes before the window it is in: its acts need this
  FilePreview preview_;
  QPixmap movie_icon_;  // until the movie's first frame, and for sounds
  QImage thumbnail_;
  std::uint64_t request_ = 0;  // the thumbnail that is being made
  std::uint64_t movie_ = 0;    // 0 when none is open
  ScopedPosts posts_;
  MoviePlayer player_;  // ends first: it calls back
};

}  // namespace norvo
