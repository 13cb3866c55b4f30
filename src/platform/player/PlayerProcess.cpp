#include "platform/player/PlayerProcess.h"

#include <signal.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/decoder/DescriptorMessage.h"
#include "util/ChildProcess.h"
#include "util/DescriptorPair.h"

namespace norvo {
namespace {

std::string variable(const char* name) {
  // Nothing here changes variables.
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
  return value == nullptr ? std::string() : value;
}

// Nothing of this process's surroundings but the way to the sound server. Its usual place is told,
// as a player may not look into the folder to find it.
std::vector<std::string> environment() {
  std::vector<std::string> variables{"LC_ALL=C.UTF-8"};
  std::string server = variable("PULSE_SERVER");
  const std::string folder = variable("XDG_RUNTIME_DIR");
  if (server.empty() && !folder.empty()) server = "unix:" + folder + "/pulse/native";
  if (!server.empty()) variables.push_back("PULSE_SERVER=" + server);
  return variables;
}

}  // namespace

PlayerProcess::PlayerProcess(const std::filesystem::path& player, PictureSize box) : box_(box) {
  DescriptorPair sockets = make_socket_pair();
  if (!sockets) return;
  const StartedChild child = start_child({.executable = player,
                                          .arguments = {},
                                          .input = ChildTask::Input::descriptor,
                                          .input_descriptor = sockets.second.get(),
                                          .environment = environment()});
  pid_ = child.pid;
  if (pid_ > 0) socket_ = std::move(sockets.first);
}

PlayerProcess::~PlayerProcess() {
  if (pid_ <= 0) return;
  ::kill(pid_, SIGKILL);
  wait_for_child(pid_);
}

bool PlayerProcess::send(const MovieCommand& command, int file) {
  const MovieMessage message = encode(command);
  if (file >= 0) return send_with_descriptor(socket_.get(), message, file);
  const ssize_t sent = ::send(socket_.get(), message.data(), message.size(), MSG_DONTWAIT);
  return sent == static_cast<ssize_t>(message.size());
}

PlayerProcess::Progress PlayerProcess::receive() {
  if (complete_) {
    complete_ = false;
    report_.reset();
    received_ = 0;
  }
  while (true) {
    std::byte* const place =
        report_ ? reinterpret_cast<std::byte*>(pixels_.data()) : message_.data();
    const std::size_t wanted = report_ ? pixels_.size() * sizeof pixels_[0] : message_.size();
    if (received_ == wanted) {
      complete_ = true;
      return Progress::reported;
    }
    const ssize_t got = recv(socket_.get(), place + received_, wanted - received_, MSG_DONTWAIT);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return Progress::waiting;
    if (got <= 0) return Progress::failed;
    received_ += static_cast<std::size_t>(got);
    if (!report_ && received_ == message_.size() && !take_in()) return Progress::failed;
  }
}

// The size is checked before room is made for the pixels.
bool PlayerProcess::take_in() {
  report_ = decode_report(message_);
  if (!report_ || report_->size.width > box_.width || report_->size.height > box_.height) {
    return false;
  }
  pixels_.assign(std::size_t{report_->size.width} * report_->size.height, 0);
  received_ = 0;
  return true;
}

std::optional<Picture> PlayerProcess::take_frame() {
  if (pixels_.empty()) return std::nullopt;
  // A movie is opaque, whatever the player says.
  for (std::uint32_t& pixel : pixels_) pixel |= 0xFF000000U;
  return Picture{.size = report_->size, .pixels = std::exchange(pixels_, {})};
}

}  // namespace norvo
