// A decoder that does what the first word of each file says, good or evil. It stands in for the
// real one in the pool's tests and is part of no product.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/decoder/DecoderProtocol.h"
#include "platform/decoder/DescriptorMessage.h"
#include "util/UniqueFd.h"

namespace {

using norvo::DecoderAnswer;
using norvo::DecoderMessage;
using norvo::DecoderRequest;

void say(const void* bytes, std::size_t size) {
  if (write(STDIN_FILENO, bytes, size) != static_cast<ssize_t>(size)) std::_Exit(9);
}

void answer(const DecoderAnswer& what, std::uint32_t pixel) {
  const DecoderMessage message = encode(what);
  say(message.data(), message.size());
  const std::vector<std::uint32_t> pixels(norvo::picture_bytes(what) / sizeof pixel, pixel);
  say(pixels.data(), pixels.size() * sizeof pixel);
}

void sleep_for(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// Until another file has taken the place of this one.
void wait_for_replacement(int file) {
  struct stat status {};
  while (fstat(file, &status) == 0 && status.st_nlink > 0) sleep_for(1);
}

// A full answer to `request`; false for a word that is none of these.
bool behave_well(const std::string& word, const DecoderRequest& request, int file, int number) {
  DecoderAnswer good{.serial = request.serial,
                     .size = request.box,
                     .verdict = {.completeness = norvo::Completeness::whole, .percent = {}}};
  const bool wants_verdict = request.purpose == norvo::DecoderPurpose::verdict;
  const bool later = word.starts_with("later");
  const bool good_at_first = word == "good" || word == "trailing" || word.ends_with("s-after");
  if (!later && !good_at_first && word != "slow" && word != "held") return false;
  if (wants_verdict) good.size = {};
  if (later && !wants_verdict) good.verdict.completeness = norvo::Completeness::not_known;
  if (word == "slow") sleep_for(number);
  if (word == "held" || (word == "later-held" && wants_verdict)) wait_for_replacement(file);
  if (word == "later-dies" && wants_verdict) raise(SIGKILL);
  answer(good, 0xFF000000U | static_cast<std::uint32_t>(number));
  if (word == "trailing") say("left over", 9);
  if (word == "ends-after") std::_Exit(0);
  if (word == "hangs-after") sleep_for(3'600'000);
  return true;
}

void behave_badly(const std::string& word, const DecoderRequest& request) {
  DecoderAnswer bad{.serial = request.serial,
                    .size = request.box,
                    .verdict = {.completeness = norvo::Completeness::whole, .percent = {}}};
  if (word == "crash") raise(SIGSEGV);
  if (word == "abort") std::abort();
  if (word == "exit") std::_Exit(0);
  if (word == "hang" || word == "hang-in-background") sleep_for(3'600'000);
  for (std::atomic<unsigned> steps = 0; word == "compute";) ++steps;
  if (word == "stop") raise(SIGSTOP);
  if (word == "garbage") say(std::string(4096, 'x').data(), 4096);
  if (word == "half") {
    say(encode(bad).data(), norvo::decoder_message_bytes);
    std::_Exit(0);
  }
  if (word == "stall") {
    say(encode(bad).data(), norvo::decoder_message_bytes);
    sleep_for(3'600'000);
  }
  if (word == "large") bad.size.width += 1;
  if (word == "serial") bad.serial += 1;
  answer(bad, word == "colours" ? 0x00FFFFFFU : 0xFF000000U);
}

}  // namespace

int main(int argc, char** /*argv*/) {
  const bool in_background = argc == 3;
  DecoderMessage message{};
  while (const norvo::UniqueFd file = norvo::receive_with_descriptor(STDIN_FILENO, message)) {
    const auto request = norvo::decode_request(message);
    if (!request) return 3;
    std::string content(4096, '\0');
    const ssize_t got = pread(file.get(), content.data(), content.size(), 0);
    content.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    std::istringstream words(content);
    std::string word;
    int number = 0;
    words >> word >> number;
    if (word == "hang-in-background" && !in_background) word = "good";
    if (!behave_well(word, *request, file.get(), number)) behave_badly(word, *request);
  }
  return 0;
}
