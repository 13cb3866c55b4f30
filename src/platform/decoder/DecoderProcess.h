// The caller's end of one decoder process. Nothing here waits; one thread at a time.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "platform/decoder/Background.h"
#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/PixelReceiver.h"
#include "util/UniqueFd.h"

namespace norvo {

class DecoderProcess {
 public:
  // Starts `decoder` (an absolute path); false from is_running() when that fails.
  DecoderProcess(const std::filesystem::path& decoder, std::uint64_t memory_limit,
                 DecoderRank rank);
  ~DecoderProcess();
  DecoderProcess(DecoderProcess&& other) noexcept;
  DecoderProcess& operator=(DecoderProcess&&) = delete;

  bool is_running() const { return pid_ > 0; }

  DecoderRank rank() const { return rank_; }

  // As norvo::processor_time().
  std::optional<std::chrono::nanoseconds> processor_time() const {
    return norvo::processor_time(pid_);
  }

  // The descriptor to poll for answers.
  int descriptor() const { return socket_.get(); }

  // Sends a request with the file's descriptor, which stays the caller's. False when the process
  // does not take it, which means that it has ended.
  bool send(const DecoderRequest& request, int file);

  enum class Progress {
    waiting,     // not all of the answer is there
    answered,    // answer() and take_picture() have it
    bad_answer,  // this is no answer to the request: the process must be ended
    ended,
  };
  Progress receive();

  const DecoderAnswer& answer() const { return *answer_; }
  // nullopt when the answer has none.
  std::optional<Picture> take_picture();

  // Ends the process at once. The system may take a moment over it: has_ended() says when it is
  // gone, and leaves nothing of it.
  void kill();
  bool has_ended();

 private:
  std::optional<std::size_t> take_in(std::span<const std::byte> message);

  DecoderRank rank_;
  pid_t pid_ = -1;
  UniqueFd socket_;
  DecoderRequest request_;
  PixelReceiver receiver_{decoder_message_bytes};
  std::optional<DecoderAnswer> answer_;
};

}  // namespace norvo
