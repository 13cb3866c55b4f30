// A decoder with the rules of the real one that takes all memory it gets over a file that begins
// with "hungry", and keeps it. It stands in for a library that a file has led astray.
#include <unistd.h>

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/decoder/Sandbox.h"
#include "platform/decoder/Service.h"

namespace {

using norvo::Decoded;
using norvo::DecoderRequest;
using norvo::FileBytes;

std::vector<std::vector<std::byte>> taken;

Decoded decode(const FileBytes& file, const DecoderRequest& request) {
  constexpr std::string_view hungry = "hungry";
  constexpr std::size_t bite = std::size_t{1} << 20U;
  const auto bytes = file.bytes();
  const bool eats =
      bytes.size() >= hungry.size() && std::memcmp(bytes.data(), hungry.data(), hungry.size()) == 0;
  while (eats) taken.emplace_back(bite, std::byte{1});
  const std::size_t pixels = std::size_t{request.box.width} * request.box.height;
  return norvo::whole(norvo::Picture{.size = request.box,
                                     .pixels = std::vector<std::uint32_t>(pixels, 0xFF000000U)});
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t memory = 0;
  const std::string_view text = argc >= 2 ? argv[1] : "";
  if (std::from_chars(text.data(), text.data() + text.size(), memory).ec != std::errc()) return 1;
  norvo::close_other_descriptors();
  if (!norvo::give_up_rights({.memory = memory, .cpu_seconds = 60})) return 2;
  return norvo::serve_requests(STDIN_FILENO, decode) ? 0 : 3;
}
