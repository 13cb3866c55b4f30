// Any bytes as a packet for the device opener, as its answer, and as the path of a device.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/Require.h"
#include "platform/linux/OpenerGuard.h"
#include "platform/linux/OpenerProtocol.h"

namespace {

using norvo::fuzz::require;

void check_request(std::string_view packet) {
  const std::optional<std::string> path = norvo::decode_request(packet);
  if (!path) return;
  require(!path->empty() && path->size() <= norvo::longest_device_path, "a path has its limits");
  require(norvo::encode_request(*path) == packet, "there is one way to write a request");
}

void check_answer(std::string_view packet) {
  const std::optional<int> error = norvo::decode_answer(packet);
  if (!error) return;
  require(*error >= 0, "an errno is not negative");
  require(norvo::encode_answer(*error) == packet, "there is one way to write an answer");
}

void check_path(std::string_view text) {
  const std::optional<std::string> request = norvo::encode_request(text);
  require(!request || norvo::decode_request(*request) == text, "a request brings its path");
  if (!norvo::is_device_path(text)) return;
  require(request.has_value(), "every device can be asked for");
  const std::filesystem::path path(text);
  require(path.lexically_normal() == path, "a device path is canonical");
  require(path.is_absolute() && path.has_filename(), "a device path is whole");
  require(text.starts_with("/dev/"), "a device lies below /dev");
  require(std::string(text).c_str() == text, "a device path has no zero byte");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  check_request(bytes);
  check_answer(bytes);
  check_path(bytes);
  return 0;
}
