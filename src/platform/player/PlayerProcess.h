// The window's end of one player process, which is ended with this object. Nothing here waits,
// except for the end of a killed process; one thread, which blocks SIGPIPE.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

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
  bool take_in();

  pid_t pid_ = -1;
  UniqueFd socket_;
  PictureSize box_;
  MovieMessage message_{};
  std::optional<MovieReport> report_;
  std::vector<std::uint32_t> pixels_;
  std::size_t received_ = 0;  // bytes of the message, then of the pixels
  bool complete_ = false;
};

}  // namespace norvo
