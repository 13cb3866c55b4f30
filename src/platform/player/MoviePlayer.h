// A movie of an untrusted file, played in a process with few rights; the caller never waits.
//
// A window connects it like this:
//
//   MoviePlayer player({.player = executable_folder() / "norvo-player"},
//                      [this](const MovieEvent& event) { post_to_main_thread(event); });
//   player.open(file, {400, 300});  // `opened` or `no_movie` follows, then frames: it plays
//   player.taken();                 // whenever an event was shown
//   player.pause();
//   player.close();
//
// Sound is played by that process itself, where there is a device for it. A file that crashes it or
// makes it silent is an `error`. However much it reports, there is never more than one event of it
// that nobody has taken: until then it is not listened to.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "platform/decoder/Picture.h"

namespace norvo {

struct MoviePlayerSettings {
  std::filesystem::path player;                     // absolute path of norvo-player
  std::chrono::milliseconds opening_limit{10'000};  // until `opened` or `no_movie`
  std::chrono::milliseconds silence_limit{30'000};  // between two events of a movie that plays
};

struct MovieEvent {
  enum class Kind : std::uint8_t {
    opened,    // `milliseconds` is the duration, 0 when it is not known
    position,  // `milliseconds` from the beginning
    frame,     // `frame` is there; opaque, within the box
    ended,     // the end was played; seek and play go on
    no_movie,  // the file is no movie, or no regular file that can be opened
    error,     // the player cannot be started, died, broke the protocol, or hung: said nothing
               // within a limit; one that was paused or has ended may be silent for ever
  };

  Kind kind = Kind::opened;
  std::uint64_t movie = 0;  // what open() returned
  std::int64_t milliseconds = 0;
  std::optional<Picture> frame;
};

class MoviePlayer {
 public:
  // Called on the player's own thread, one call at a time. It may call the player, but not destroy
  // it, and must not throw.
  using Callback = std::function<void(const MovieEvent&)>;

  MoviePlayer(MoviePlayerSettings settings, Callback callback);

  // Ends the process and waits for a running callback. No call comes after it.
  ~MoviePlayer();
  MoviePlayer(const MoviePlayer&) = delete;
  MoviePlayer& operator=(const MoviePlayer&) = delete;

  // All from any thread, at once.

  // Ends what plays and plays the file at `path` from its beginning, its frames within `box` pixels
  // (sides go to 2 to 2048). A number that its events carry, so that those of the movie before can
  // be told apart; none of those is made after this, but one may be on its way.
  std::uint64_t open(std::filesystem::path path, PictureSize box);

  // Nothing without a movie.
  void play();
  void pause();
  void seek(std::chrono::milliseconds position);

  // Ends what plays; no event follows.
  void close();

  // An event was dealt with, be it of a movie that is no more: to be called once for each. A player
  // sends a new frame only after this.
  void taken();

 private:
  class Core;
  std::unique_ptr<Core> core_;
};

}  // namespace norvo
