#include "platform/player/MoviePlayer.h"

#include <poll.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/decoder/HelperInput.h"
#include "platform/decoder/WakePipe.h"
#include "platform/player/PlayerProcess.h"

namespace norvo {
namespace {

std::uint32_t allowed_side(std::uint32_t side) {
  return std::clamp<std::uint32_t>(side, 2, longest_frame_side);
}

MovieEvent event_of(const MovieReport& report) {
  MovieEvent event;
  event.milliseconds = report.milliseconds;
  switch (report.kind) {
    case MovieReport::Kind::opened:
      event.kind = MovieEvent::Kind::opened;
      break;
    case MovieReport::Kind::position:
      event.kind = MovieEvent::Kind::position;
      break;
    case MovieReport::Kind::frame:
      event.kind = MovieEvent::Kind::frame;
      break;
    case MovieReport::Kind::ended:
      event.kind = MovieEvent::Kind::ended;
      break;
    case MovieReport::Kind::no_movie:
      event.kind = MovieEvent::Kind::no_movie;
      break;
  }
  return event;
}

}  // namespace

class MoviePlayer::Core {
 public:
  Core(MoviePlayerSettings settings, Callback callback)
      : settings_(std::move(settings)),
        callback_(std::move(callback)),
        thread_([this] { run(); }) {}
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;
  ~Core() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    wake_.wake();
    thread_.join();
  }

  std::uint64_t open(std::filesystem::path path, PictureSize box) {
    const std::lock_guard lock(mutex_);
    commands_.clear();
    wanted_ = Movie{.path = std::move(path),
                    .box = {.width = allowed_side(box.width), .height = allowed_side(box.height)}};
    ++number_;
    wake_.wake();
    return number_;
  }

  void close() {
    const std::lock_guard lock(mutex_);
    commands_.clear();
    wanted_.reset();
    ++number_;
    wake_.wake();
  }

  void command(const MovieCommand& command) {
    const std::lock_guard lock(mutex_);
    commands_.push_back(command);
    wake_.wake();
  }

  void taken() {
    const std::lock_guard lock(mutex_);
    if (untaken_ > 0) --untaken_;
    wake_.wake();
  }

 private:
  using Clock = std::chrono::steady_clock;

  struct Movie {
    std::filesystem::path path;
    PictureSize box;
  };

  void run() {
    block_broken_pipe_signal();
    while (follow_callers()) {
      wait();
      if (process_ && listening_) look_at_process();
    }
  }

  // Does what was asked for since the last time; false when it is time to end.
  bool follow_callers() {
    std::deque<MovieCommand> commands;
    std::optional<Movie> movie;
    bool changed = false;
    bool listening = false;
    {
      const std::lock_guard lock(mutex_);
      if (ending_) return false;
      commands.swap(commands_);
      changed = std::exchange(current_, number_) != number_;
      if (changed) movie = wanted_;
      listening = untaken_ == 0;
    }
    if (changed) process_.reset();
    if (movie) start(*movie);
    if (!std::exchange(listening_, listening) && listening) listen_again();
    for (const MovieCommand& command : commands) {
      if (process_) follow(command);
    }
    return true;
  }

  // How long the caller took is not held against the process.
  void listen_again() {
    if (!process_ || !opened_) return;
    expect_report();
    if (std::exchange(frame_untaken_, false)) {
      process_->send({.kind = MovieCommand::Kind::frame_taken, .box = {}, .milliseconds = 0}, -1);
    }
  }

  void follow(const MovieCommand& command) {
    process_->send(command, -1);
    if (command.kind == MovieCommand::Kind::play) playing_ = true;
    if (command.kind == MovieCommand::Kind::pause) playing_ = false;
    if (opened_) expect_report();
  }

  void expect_report() { deadline_ = Clock::now() + settings_.silence_limit; }

  // Before it is open, and while it plays: a movie that stands still has nothing to say.
  bool must_report() const { return !opened_ || playing_; }

  void start(const Movie& movie) {
    const UniqueFd file = open_regular_file(movie.path);
    if (!file) return report(MovieEvent::Kind::no_movie);
    process_.emplace(settings_.player, movie.box);
    opened_ = false;
    playing_ = true;
    frame_untaken_ = false;
    deadline_ = Clock::now() + settings_.opening_limit;
    const MovieCommand open{.kind = MovieCommand::Kind::open, .box = movie.box, .milliseconds = 0};
    if (!process_->is_running() || !process_->send(open, file.get())) fail();
  }

  void wait() {
    std::array<pollfd, 2> watched{{{.fd = wake_.descriptor(), .events = POLLIN, .revents = 0},
                                   {.fd = -1, .events = POLLIN, .revents = 0}}};
    int milliseconds = -1;
    if (process_ && listening_) {
      watched[1].fd = process_->descriptor();
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
      if (must_report())
        milliseconds = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    }
    poll(watched.data(), watched.size(), milliseconds);
    wake_.clear();
  }

  void look_at_process() {
    switch (process_->receive()) {
      case PlayerProcess::Progress::waiting:
        if (must_report() && Clock::now() >= deadline_) fail();
        break;
      case PlayerProcess::Progress::failed:
        fail();
        break;
      case PlayerProcess::Progress::reported:
        pass_on();
        break;
    }
  }

  void pass_on() {
    MovieEvent event = event_of(process_->report());
    const bool is_answer =
        event.kind == MovieEvent::Kind::opened || event.kind == MovieEvent::Kind::no_movie;
    // The answer to `open` comes first, and once.
    if (is_answer == opened_) return fail();
    event.frame = process_->take_frame();
    frame_untaken_ = event.frame.has_value();
    opened_ = true;
    if (event.kind == MovieEvent::Kind::ended) playing_ = false;
    if (event.kind == MovieEvent::Kind::no_movie) process_.reset();
    hand_over(std::move(event));
  }

  void fail() {
    process_.reset();
    report(MovieEvent::Kind::error);
  }

  void report(MovieEvent::Kind kind) {
    MovieEvent event;
    event.kind = kind;
    hand_over(std::move(event));
  }

  void hand_over(MovieEvent event) {
    event.movie = current_;
    {
      const std::lock_guard lock(mutex_);
      if (ending_ || current_ != number_) return;
      ++untaken_;
    }
    listening_ = false;
    callback_(event);
  }

  const MoviePlayerSettings settings_;
  const Callback callback_;
  WakePipe wake_;

  std::mutex mutex_;  // guards these
  std::optional<Movie> wanted_;
  std::deque<MovieCommand> commands_;
  std::uint64_t number_ = 0;
  std::uint64_t untaken_ = 0;
  bool ending_ = false;

  // The thread's own.
  std::uint64_t current_ = 0;
  std::optional<PlayerProcess> process_;
  bool listening_ = true;  // all events were taken: the process is read from
  bool opened_ = false;
  bool playing_ = false;
  bool frame_untaken_ = false;  // the last event, of this process, was a frame
  Clock::time_point deadline_;  // for its next report, where it owes one

  std::thread thread_;
};

MoviePlayer::MoviePlayer(MoviePlayerSettings settings, Callback callback)
    : core_(std::make_unique<Core>(std::move(settings), std::move(callback))) {
}

MoviePlayer::~MoviePlayer() = default;

std::uint64_t MoviePlayer::open(std::filesystem::path path, PictureSize box) {
  return core_->open(std::move(path), box);
}

void MoviePlayer::play() {
  core_->command({.kind = MovieCommand::Kind::play, .box = {}, .milliseconds = 0});
}

void MoviePlayer::pause() {
  core_->command({.kind = MovieCommand::Kind::pause, .box = {}, .milliseconds = 0});
}

void MoviePlayer::seek(std::chrono::milliseconds position) {
  core_->command({.kind = MovieCommand::Kind::seek,
                  .box = {},
                  .milliseconds = std::max<std::int64_t>(0, position.count())});
}

void MoviePlayer::close() {
  core_->close();
}

void MoviePlayer::taken() {
  core_->taken();
}

}  // namespace norvo
