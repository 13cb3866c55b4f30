#include "platform/decoder/DecoderProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>

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
      receiver_(std::move(other.receiver_)),
      answer_(other.answer_) {
}

DecoderProcess::~DecoderProcess() {
  kill();
  static_cast<void>(has_ended());
}

bool DecoderProcess::send(const DecoderRequest& request, int file) {
  request_ = request;
  answer_.reset();
  receiver_.start_anew();
  const DecoderMessage message = encode(request);
  return send_with_descriptor(socket_.get(), message, file);
}

DecoderProcess::Progress DecoderProcess::receive() {
  const auto take = [this](std::span<const std::byte> message) { return take_in(message); };
  switch (receiver_.receive(socket_.get(), take)) {
    case PixelReceiver::Progress::waiting:
      return Progress::waiting;
    case PixelReceiver::Progress::complete:
      return is_premultiplied(receiver_.pixels()) ? Progress::answered : Progress::bad_answer;
    case PixelReceiver::Progress::refused:
      return Progress::bad_answer;
    case PixelReceiver::Progress::ended:
      break;
  }
  return Progress::ended;
}

std::optional<std::size_t> DecoderProcess::take_in(std::span<const std::byte> message) {
  answer_ = decode_answer(message);
  if (!answer_ || !answers(*answer_, request_)) return std::nullopt;
  return picture_bytes(*answer_) / sizeof(std::uint32_t);
}

std::optional<Picture> DecoderProcess::take_picture() {
  if (receiver_.pixels().empty()) return std::nullopt;
  return Picture{.size = answer_->size, .pixels = std::exchange(receiver_.pixels(), {})};
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
