// The preview beside the file window: the movie that the selected file is, playing, or its picture,
// or the icon of its type. Everything is decoded in other processes. Main thread.
#pragma once

#include <QLabel>
#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/player/MoviePlayer.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/MovieView.h"
#include "platform/qt/ThumbnailSource.h"
#include "wizard/ResultViews.h"
#include "wizard/ScopedPosts.h"

namespace norvo {

class PreviewBox : public QObject, public PreviewPane {
 public:
  struct Setting {
    MainThread& main_thread;       // by which the player's events come; outlives this
    MainWindow& window;            // whose preview box is used; outlives this
    ThumbnailSource& pictures;     // asked by nobody else; outlives this
    std::filesystem::path player;  // the program norvo-player
    std::function<void()> shown;   // called whenever a preview is there
  };
  explicit PreviewBox(Setting setting);

  void clear() override;
  void CreateFile_QuickLook_Preview(const std::filesystem::path& path) override;

 private:
  void take(const MovieEvent& event);
  void begin_movie(std::chrono::milliseconds duration);
  void show_still();
  void show_picture(const QString& id, const QImage& picture);
  void finish();
  QPixmap icon() const;

  Setting setting_;
  QLabel& view_;
  MovieView* movie_view_;
  std::filesystem::path path_;
  std::uint64_t request_ = 0;
  std::uint64_t movie_ = 0;
  bool preparing_ = false;
  ScopedPosts posts_;
  MoviePlayer player_;  // ends first: it calls back
};

}  // namespace norvo
