// A player that does what the first word of each file says. It stands in for the real one in tests
// and is part of no product.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "platform/decoder/DescriptorMessage.h"
#include "platform/player/MovieProtocol.h"

namespace {

using norvo::MovieReport;

void send(const void* bytes, std::size_t size) {
  if (write(STDIN_FILENO, bytes, size) < 0) std::_Exit(9);
}

void say(MovieReport::Kind kind, norvo::PictureSize size = {}, std::int64_t milliseconds = 0) {
  const auto message =
      encode(MovieReport{.kind = kind, .size = size, .milliseconds = milliseconds});
  send(message.data(), message.size());
}

// Both at once: nothing comes between them, however busy the machine is.
void say_opened_and_ended() {
  std::vector<std::byte> both;
  for (const auto kind : {MovieReport::Kind::opened, MovieReport::Kind::ended}) {
    const auto message = encode(MovieReport{.kind = kind, .size = {}});
    both.insert(both.end(), message.begin(), message.end());
  }
  send(both.data(), both.size());
}

// Makes the file's time so many seconds: what a test can see of commands while it takes no report.
void mark(int movie, std::int64_t commands) {
  const timespec time{.tv_sec = commands, .tv_nsec = 0};
  const std::array<timespec, 2> times{time, time};
  if (futimens(movie, times.data()) != 0) std::_Exit(9);
}

// What it says once the movie is open.
void go_on(const std::string& word, norvo::PictureSize box) {
  if (word == "late-crash") raise(SIGSEGV);
  if (word == "large") say(MovieReport::Kind::frame, {.width = box.width + 1, .height = 1});
  if (word == "opened-twice") say(MovieReport::Kind::opened);
  if (word == "frame") {
    say(MovieReport::Kind::frame, {.width = 2, .height = 1});
    send(std::array<std::uint32_t, 2>{}.data(), 8);
  }
  for (std::int64_t i = 0; word == "flood"; ++i) say(MovieReport::Kind::position, {}, i);
}

}  // namespace

int main() {
  norvo::MovieMessage message{};
  norvo::UniqueFd file;
  norvo::UniqueFd movie;
  std::int64_t commands = 0;  // after the one that opened the movie
  while (norvo::receive_message(STDIN_FILENO, message, file)) {
    const auto command = norvo::decode_command(message);
    if (!command) return 3;
    if (command->kind != norvo::MovieCommand::Kind::open) {
      // Tells which commands arrive.
      say(MovieReport::Kind::position, {},
          static_cast<std::int64_t>(command->kind) * 1000 + command->milliseconds);
      mark(movie.get(), ++commands);
      continue;
    }
    movie = std::move(file);
    std::string word(16, '\0');
    const ssize_t got = pread(movie.get(), word.data(), word.size(), 0);
    word.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    if (word == "crash") raise(SIGSEGV);
    if (word == "exit") return 0;
    if (word == "hang") pause();
    if (word == "garbage") return write(STDIN_FILENO, std::string(100, 'x').data(), 100) < 0;
    if (word == "not-opened") say(MovieReport::Kind::position);
    if (word == "end") {
      say_opened_and_ended();
      continue;
    }
    say(MovieReport::Kind::opened, {}, 1500);
    go_on(word, command->box);
  }
  return 0;
}
