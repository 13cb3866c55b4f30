#include "platform/decoder/DecoderProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <cerrno>
#include <string>
#include <utility>

#include "platform/decoder/DescriptorMessage.h"
#include "util/ChildProcess.h"
#include "util/DescriptorPair.h"

namespace norvo {

DecoderProcess::DecoderProcess(const std::filesystem::path& decoder, std::uint64_t memory_limit,
                               DecoderRank rank)
    : rank_(rank) {
  DescriptorPair sockets = make_socket_pair();
  if (!sockets) return;
  fcntl(sockets.first.get(), F_SETFL, O_NONBLOCK);
  std::vector<std::string> arguments{std::to_string(memory_limit)};
  if (rank == DecoderRank::background) arguments.emplace_back("background");
  // Nothing of this process's surroundings reaches the decoder.
  const StartedChild child = start_child({.executable = decoder,
                                          .arguments = std::move(arguments),
                                          .input = ChildTask::Input::descriptor,
                                          .input_descriptor = sockets.second.get(),
                                          .environment = {{"LC_ALL=C.UTF-8"}}});
  pid_ = child.pid;
  if (pid_ > 0) socket_ = std::move(sockets.first);
}

DecoderProcess::DecoderProcess(DecoderProcess&& other) noexcept
    : rank_(other.rank_),
      pid_(std::exchange(other.pid_, -1)),
      socket_(std::move(other.socket_)),
      request_(std::move(other.request_)),
      message_(other.message_),
      answer_(other.answer_),
      pixels_(std::move(other.pixels_)),
      received_(other.received_) {
}

DecoderProcess::~DecoderProcess() {
  kill();
  static_cast<void>(has_ended());
}

bool DecoderProcess::send(const DecoderRequest& request, int file) {
  request_ = request;
  answer_.reset();
  pixels_.clear();
  received_ = 0;
  const DecoderMessage message = encode(request);
  return send_with_descriptor(socket_.get(), message, file);
}

DecoderProcess::Progress DecoderProcess::receive() {
  while (true) {
    std::byte* const place =
        answer_ ? reinterpret_cast<std::byte*>(pixels_.data()) : message_.data();
    const std::size_t wanted = answer_ ? picture_bytes(*answer_) : message_.size();
    if (received_ == wanted) {
      return is_premultiplied(pixels_) ? Progress::answered : Progress::bad_answer;
    }
    const ssize_t got = recv(socket_.get(), place + received_, wanted - received_, MSG_DONTWAIT);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return Progress::waiting;
    if (got <= 0) return Progress::ended;
    if (take_in(static_cast<std::size_t>(got)) == Progress::bad_answer) return Progress::bad_answer;
  }
}

// The size is checked before room is made for the pixels.
DecoderProcess::Progress DecoderProcess::take_in(std::size_t bytes) {
  received_ += bytes;
  if (answer_ || received_ < message_.size()) return Progress::waiting;
  answer_ = decode_answer(message_);
  if (!answer_ || !answers(*answer_, request_)) return Progress::bad_answer;
  pixels_.resize(picture_bytes(*answer_) / sizeof(std::uint32_t));
  received_ = 0;
  return Progress::waiting;
}

std::optional<Picture> DecoderProcess::take_picture() {
  if (pixels_.empty()) return std::nullopt;
  return Picture{.size = answer_->size, .pixels = std::exchange(pixels_, {})};
}

void DecoderProcess::kill() {
  static_cast<void>(socket_.close());
  if (pid_ > 0) ::kill(pid_, SIGKILL);
}

bool DecoderProcess::has_ended() {
  if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) != 0) pid_ = -1;
  return pid_ < 0;
}

}  // namespace norvo
