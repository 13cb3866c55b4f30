// One movie in a player process: does what the window's commands say, and reports. The thread of
// the application object.
#pragma once

#include <QAudioOutput>
#include <QFile>
#include <QMediaPlayer>
#include <QObject>
#include <QSocketNotifier>
#include <QVideoFrame>
#include <QVideoSink>
#include <memory>

#include "platform/player/MovieProtocol.h"
#include "util/UniqueFd.h"

namespace norvo {

class MovieSession : public QObject {
 public:
  // Quits the application when the other end of `socket` closes or breaks the protocol. `has_sound`
  // says whether there is a device for it.
  MovieSession(int socket, bool has_sound);

 private:
  void take_command();
  void open(UniqueFd file, PictureSize box);
  void follow(const MovieCommand& command);
  void status_changed(QMediaPlayer::MediaStatus status);
  void report_opened();
  void show(const QVideoFrame& frame);
  void say(const MovieReport& report);
  void say_at(MovieReport::Kind kind, std::int64_t milliseconds);
  void write_all(const void* bytes, std::size_t size);

  int socket_;
  bool has_sound_;
  QSocketNotifier notifier_;
  UniqueFd file_;
  QFile device_;
  // Without a device there must be none.
  std::unique_ptr<QAudioOutput> sound_;
  QVideoSink sink_;
  QMediaPlayer player_;
  PictureSize box_;
  std::uint64_t frames_ = 0;
  bool opened_ = false;
  bool failed_ = false;
  bool frame_on_its_way_ = false;
};

}  // namespace norvo
