// The picture of a movie with a button that plays and pauses it and a bar for its position. Main
// thread.
#pragma once

#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <QWidget>
#include <chrono>
#include <functional>

namespace norvo {

class MovieView : public QWidget {
 public:
  // What the person wants; the view shows what follows from it when it is told.
  struct Acts {
    std::function<void()> play;
    std::function<void()> pause;
    std::function<void(std::chrono::milliseconds position)> seek;
  };
  explicit MovieView(Acts acts, QWidget* parent = nullptr);

  // No movie: no picture, and nothing that could be pressed or moved. So it is at first, too.
  void clear();

  // A movie plays from its beginning. `stand_in` is shown until a frame comes, and for sounds.
  void begin(std::chrono::milliseconds duration, const QPixmap& stand_in);
  void show_position(std::chrono::milliseconds position);
  void show_frame(const QImage& frame);
  void end_reached();

  bool isPlaying() const { return playing_; }

  // Nothing unless it is playing.
  void stopPlayingMovie();

 protected:
  // What is not on the page is not heard either. A minimized window plays on.
  void hideEvent(QHideEvent* event) override;

 private:
  void toggle();
  void set_playing(bool playing);
  void draw_button();
  // The picture on the button has the colour of the text.
  void changeEvent(QEvent* event) override;

  Acts acts_;
  QLabel* picture_;
  QToolButton* button_ = nullptr;
  QSlider* bar_;
  bool playing_ = false;
};

}  // namespace norvo
