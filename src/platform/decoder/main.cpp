// norvo-decoder MEMORY [background]: decodes pictures for the process at the other end of standard
// input, within MEMORY bytes, and in the background only while nobody else wants the processor.
// Statuses: 1 wrong use, 2 a right could not be given up, 3 the other end is no pool.
#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <string_view>

#include "platform/decoder/Background.h"
#include "platform/decoder/Sandbox.h"
#include "platform/decoder/Service.h"
#include "platform/decoder/formats/DecodePicture.h"

namespace {

// Far more than a pool lets one process use; for the case that nobody watches any more.
constexpr std::uint64_t cpu_seconds = 1800;

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t memory = 0;
  const std::string_view text = argc >= 2 ? argv[1] : "";
  const std::string_view rank = argc == 3 ? argv[2] : "";
  if (std::from_chars(text.data(), text.data() + text.size(), memory).ec != std::errc()) return 1;
  if (argc > 3 || (argc == 3 && rank != "background")) return 1;
  norvo::take_rank(argc == 3 ? norvo::DecoderRank::background : norvo::DecoderRank::usual);
  norvo::close_other_descriptors();
  // Nobody reads what a library might print.
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) return 2;
  norvo::load_decoders(memory / 2);
  if (!norvo::give_up_rights({.memory = memory, .cpu_seconds = cpu_seconds})) return 2;
  return norvo::serve_requests(STDIN_FILENO, norvo::decode_picture) ? 0 : 3;
}
