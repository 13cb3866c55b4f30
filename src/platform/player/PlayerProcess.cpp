#include "platform/player/PlayerProcess.h"

#include <signal.h>
#include <sys/socket.h>

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
  if (std::exchange(complete_, false)) {
    report_.reset();
    receiver_.start_anew();
  }
  const auto take = [this](std::span<const std::byte> message) { return take_in(message); };
  switch (receiver_.receive(socket_.get(), take)) {
    case PixelReceiver::Progress::waiting:
      return Progress::waiting;
    case PixelReceiver::Progress::complete:
      complete_ = true;
      return Progress::reported;
    case PixelReceiver::Progress::refused:
    case PixelReceiver::Progress::ended:
      break;
  }
  return Progress::failed;
}

std::optional<std::size_t> PlayerProcess::take_in(std::span<const std::byte> message) {
  report_ = decode_report(message);
  if (!report_ || report_->size.width > box_.width || report_->size.height > box_.height) {
    return std::nullopt;
  }
  return std::size_t{report_->size.width} * report_->size.height;
}

std::optional<Picture> PlayerProcess::take_frame() {
  if (receiver_.pixels().empty()) return std::nullopt;
  // A movie is opaque, whatever the player says.
  for (std::uint32_t& pixel : receiver_.pixels()) pixel |= 0xFF000000U;
  return Picture{.size = report_->size, .pixels = std::exchange(receiver_.pixels(), {})};
}

}  // namespace norvo
