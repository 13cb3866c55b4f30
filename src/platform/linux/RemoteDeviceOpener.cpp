#include "platform/linux/RemoteDeviceOpener.h"

#include <sys/stat.h>

#include <optional>
#include <utility>

#include "platform/linux/LinuxDevice.h"
#include "platform/linux/OpenerProtocol.h"
#include "platform/linux/PacketSocket.h"

namespace norvo {
namespace {

bool is_block_device(const UniqueFd& fd) {
  struct stat status {};
  return fstat(fd.get(), &status) == 0 && S_ISBLK(status.st_mode);
}

OpenedDevice failed(int error) {
  return {.device = nullptr, .error = error};
}

OpenedDevice device_of(Packet answer) {
  const std::optional<int> error = decode_answer(answer.bytes);
  if (!error) return failed(EIO);
  if (*error != 0) return failed(*error);
  if (!answer.fd) return failed(EIO);
  if (!is_block_device(answer.fd)) return failed(ENOTBLK);
  return {.device = make_linux_device(std::move(answer.fd))};
}

}  // namespace

OpenedDevice RemoteDeviceOpener::open(const std::filesystem::path& path) {
  const std::optional<std::string> request = encode_request(path.native());
  if (!request) return failed(path.empty() ? ENOENT : ENAMETOOLONG);
  const std::lock_guard lock(one_request_);
  if (!send_packet(socket_.get(), *request)) return failed(EIO);
  Packet answer = receive_packet(socket_.get(), answer_size);
  if (answer.ended) return failed(EIO);
  return device_of(std::move(answer));
}

}  // namespace norvo
