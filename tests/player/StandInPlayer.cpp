// A player that does what the first word of each file says. It stands in for the real one in tests
// and is part of no product.
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/decoder/DescriptorMessage.h"
#include "platform/player/MovieProtocol.h"

namespace {

using norvo::MovieReport;

void say(MovieReport::Kind kind, norvo::PictureSize size = {}, std::int64_t milliseconds = 0) {
  const auto message =
      encode(MovieReport{.kind = kind, .size = size, .milliseconds = milliseconds});
  if (write(STDIN_FILENO, message.data(), message.size()) < 0) std::_Exit(9);
}

}  // namespace

int main() {
  norvo::MovieMessage message{};
  norvo::UniqueFd file;
  while (norvo::receive_message(STDIN_FILENO, message, file)) {
    const auto command = norvo::decode_command(message);
    if (!command) return 3;
    if (command->kind != norvo::MovieCommand::Kind::open) {
      // Tells which commands arrive.
      say(MovieReport::Kind::position, {},
          static_cast<std::int64_t>(command->kind) * 1000 + command->milliseconds);
      continue;
    }
    std::string word(16, '\0');
    const ssize_t got = pread(file.get(), word.data(), word.size(), 0);
    word.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    if (word == "crash") raise(SIGSEGV);
    if (word == "exit") return 0;
    if (word == "hang") pause();
    if (word == "garbage") return write(STDIN_FILENO, std::string(100, 'x').data(), 100) < 0;
    say(MovieReport::Kind::opened, {}, 1500);
    if (word == "late-crash") raise(SIGSEGV);
    if (word == "large") {
      say(MovieReport::Kind::frame, {.width = command->box.width + 1, .height = 1});
    }
  }
  return 0;
}
