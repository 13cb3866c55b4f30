// The window's end of one player process, which is ended with this object. Nothing here waits,
// except for the end of a killed process; one thread, which blocks SIGPIPE.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>

#include "platform/decoder/PixelReceiver.h"
#include "platform/player/MovieProtocol.h"
#include "util/UniqueFd.h"

namespace norvo {

class PlayerProcess {
 public:
  // Starts `player` (an absolute path); is_running() says whether that worked. Frames beyond `box`
  // are refused.
  PlayerProcess(const std::filesystem::path& player, PictureSize box);
  ~PlayerProcess();
  PlayerProcess(const PlayerProcess&) = delete;
  PlayerProcess& operator=(const PlayerProcess&) = delete;

  bool is_running() const { return pid_ > 0; }
  int descriptor() const { return socket_.get(); }

  // With `file` unless that is -1; it stays the caller's. False when the process does not take it.
  bool send(const MovieCommand& command, int file);

  enum class Progress {
    waiting,
    reported,  // report() and take_frame() have it; receive() goes on with the next one
    failed,    // it ended or broke the protocol
  };
  Progress receive();

  const MovieReport& report() const { return *report_; }
  std::optional<Picture> take_frame();

 private:
  std::optional<std::size_t> take_in(std::span<const std::byte> message);

  pid_t pid_ = -1;
  UniqueFd socket_;
  PictureSize box_;
  PixelReceiver receiver_{movie_message_bytes};
  std::optional<MovieReport> report_;
  bool complete_ = false;
};

}  // namespace norvo
