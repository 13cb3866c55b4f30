#include "platform/player/MovieSession.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QImage>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/decoder/DescriptorMessage.h"

namespace norvo {
namespace {

// A still picture opens as a movie of one frame.
constexpr std::int64_t shortest_silent_movie = 200;

// False when only its second frame can tell: not every container says how long it is.
bool is_certainly_movie(const QMediaPlayer& player) {
  return player.hasAudio() || (player.hasVideo() && player.duration() >= shortest_silent_movie);
}

}  // namespace

MovieSession::MovieSession(int socket, bool has_sound)
    : socket_(socket), has_sound_(has_sound), notifier_(socket, QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, [this] { take_command(); });
  player_.setVideoSink(&sink_);
  connect(&sink_, &QVideoSink::videoFrameChanged, this,
          [this](const QVideoFrame& frame) { show(frame); });
  connect(&player_, &QMediaPlayer::mediaStatusChanged, this,
          [this](QMediaPlayer::MediaStatus status) { status_changed(status); });
  connect(&player_, &QMediaPlayer::errorOccurred, this, [this] {
    failed_ = true;
    if (!opened_) say_at(MovieReport::Kind::no_movie, 0);
  });
  connect(&player_, &QMediaPlayer::positionChanged, this, [this](qint64 position) {
    if (opened_) say_at(MovieReport::Kind::position, position);
  });
}

void MovieSession::take_command() {
  MovieMessage message{};
  UniqueFd file;
  const bool received = receive_message(socket_, message, file);
  const auto command = received ? decode_command(message) : std::nullopt;
  if (!command) {
    QCoreApplication::quit();
  } else if (command->kind == MovieCommand::Kind::open) {
    open(std::move(file), command->box);
  } else {
    follow(*command);
  }
}

void MovieSession::open(UniqueFd file, PictureSize box) {
  if (file_ || !file) return QCoreApplication::quit();
  file_ = std::move(file);
  box_ = box;
  if (has_sound_) {
    sound_ = std::make_unique<QAudioOutput>();
    player_.setAudioOutput(sound_.get());
  }
  if (!device_.open(file_.get(), QIODevice::ReadOnly)) {
    return say_at(MovieReport::Kind::no_movie, 0);
  }
  player_.setSourceDevice(&device_);
  player_.play();
}

void MovieSession::follow(const MovieCommand& command) {
  switch (command.kind) {
    case MovieCommand::Kind::play:
      player_.play();
      break;
    case MovieCommand::Kind::pause:
      player_.pause();
      break;
    case MovieCommand::Kind::seek:
      player_.setPosition(command.milliseconds);
      break;
    case MovieCommand::Kind::frame_taken:
      frame_on_its_way_ = false;
      break;
    case MovieCommand::Kind::open:
      break;
  }
}

void MovieSession::status_changed(QMediaPlayer::MediaStatus status) {
  const bool loaded = status == QMediaPlayer::LoadedMedia || status == QMediaPlayer::BufferedMedia;
  // A file that is no movie reports its error and then that it is loaded.
  if (loaded && !failed_ && is_certainly_movie(player_)) report_opened();
  if (status == QMediaPlayer::EndOfMedia) {
    say_at(opened_ ? MovieReport::Kind::ended : MovieReport::Kind::no_movie, 0);
  }
}

void MovieSession::report_opened() {
  if (std::exchange(opened_, true)) return;
  say_at(MovieReport::Kind::opened, player_.duration());
}

// One frame at a time: those that the window has no time for are not sent.
void MovieSession::show(const QVideoFrame& frame) {
  if (failed_ || !frame.isValid()) return;
  if (++frames_ == 2) report_opened();
  if (!opened_ || frame_on_its_way_) return;
  const QSize most(static_cast<int>(box_.width), static_cast<int>(box_.height));
  QImage image = frame.toImage();
  if (image.isNull()) return;
  if (image.width() > most.width() || image.height() > most.height()) {
    image = image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }
  image = image.convertToFormat(QImage::Format_RGB32);
  if (image.isNull()) return;
  frame_on_its_way_ = true;
  say({.kind = MovieReport::Kind::frame,
       .size = {.width = static_cast<std::uint32_t>(image.width()),
                .height = static_cast<std::uint32_t>(image.height())},
       .milliseconds = 0});
  // Rows of four bytes a pixel have no gaps.
  write_all(image.constBits(), static_cast<std::size_t>(image.sizeInBytes()));
}

void MovieSession::say(const MovieReport& report) {
  const MovieMessage message = encode(report);
  write_all(message.data(), message.size());
}

void MovieSession::say_at(MovieReport::Kind kind, std::int64_t milliseconds) {
  say({.kind = kind, .size = {}, .milliseconds = std::max<std::int64_t>(0, milliseconds)});
}

void MovieSession::write_all(const void* bytes, std::size_t size) {
  const auto* next = static_cast<const std::byte*>(bytes);
  while (size > 0) {
    const ssize_t written = write(socket_, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return QCoreApplication::quit();
    next += written;
    size -= static_cast<std::size_t>(written);
  }
}

}  // namespace norvo
