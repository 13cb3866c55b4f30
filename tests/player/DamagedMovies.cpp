// Makes movies and sounds with an encoder, damages each in many ways, plays all by norvo-player,
// and counts what became of them. The same seed makes the same damage.
//
//   damaged_movies PLAYER [VARIANTS [SEED]]
//
// Ends with 1 when a file had no answer, or when the good movie does not open after all of them.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>

#include "player/MovieClient.h"
#include "support/Damage.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace norvo;
using Kind = MovieEvent::Kind;

constexpr auto picture_source = "-f lavfi -i testsrc=size=160x120:rate=10:duration=1";
constexpr auto sound_source = "-f lavfi -i sine=frequency=440:duration=1";

struct Sample {
  const char* name;
  const char* options;
  bool has_picture = true;
};

constexpr Sample samples[] = {
    {"a.avi", "-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16le"},
    {"a.mp4", "-c:v mpeg4 -c:a aac"},
    {"a.mov", "-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16le"},
    {"a.mkv", "-c:v mpeg4 -c:a flac"},
    {"a.mpg", "-c:v mpeg2video -r 25 -c:a mp2"},
    {"a.wav", "-c:a pcm_s16le", false},
    {"a.flac", "-c:a flac", false},
};

bool encode(const Sample& sample, const fs::path& file) {
  const std::string picture = sample.has_picture ? std::string(picture_source) + " " : "";
  const std::string command = "ffmpeg -v error " + picture + sound_source + " " + sample.options +
                              " -y " + file.native() + " </dev/null";
  return std::system(command.c_str()) == 0;
}

struct Count {
  std::size_t files = 0;
  std::size_t played_to_the_end = 0;
  std::size_t opened = 0;
  std::size_t no_movie = 0;
  std::size_t died_or_hung = 0;
  std::size_t without_answer = 0;

  void add(const Count& part) {
    files += part.files;
    played_to_the_end += part.played_to_the_end;
    opened += part.opened;
    no_movie += part.no_movie;
    died_or_hung += part.died_or_hung;
    without_answer += part.without_answer;
  }
};

void print(const char* what, const Count& count) {
  std::printf(
      "%-6s %5zu files; opened %zu, of them played to the end within the time %zu; "
      "no movie %zu; died or hung %zu; without an answer %zu\n",
      what, count.files, count.opened, count.played_to_the_end, count.no_movie, count.died_or_hung,
      count.without_answer);
}

void play(test::MovieClient& client, const fs::path& file, Count& count) {
  using std::chrono::seconds;
  const std::uint64_t movie = client.player.open(file, {.width = 100, .height = 100});
  const auto first =
      client.first_of(movie, {Kind::opened, Kind::no_movie, Kind::error}, seconds(30));
  ++count.files;
  if (!first) {
    ++count.without_answer;
  } else if (*first == Kind::no_movie) {
    ++count.no_movie;
  } else if (*first == Kind::error) {
    ++count.died_or_hung;
  } else {
    ++count.opened;
    const auto last = client.first_of(movie, {Kind::ended, Kind::error}, seconds(2));
    if (last == Kind::ended) ++count.played_to_the_end;
    if (last == Kind::error) ++count.died_or_hung;
  }
  client.player.close();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 4) return 2;
  const std::uint64_t variants = test::number_or(argc > 2 ? argv[2] : nullptr, 50);
  test::Damage damage(test::number_or(argc > 3 ? argv[3] : nullptr, 1));
  const test::TemporaryFolder folder;
  test::MovieClient client({.player = fs::absolute(argv[1])});
  Count total;
  for (const Sample& sample : samples) {
    const fs::path good = folder.path() / sample.name;
    if (!encode(sample, good)) return 2;
    const std::string content = test::read_file(good);
    const fs::path broken = folder.path() / ("broken" + good.extension().native());
    Count count;
    for (std::uint64_t i = 0; i < variants; ++i) {
      test::write_file(broken, damage.damaged(content));
      play(client, broken, count);
    }
    print(sample.name, count);
    total.add(count);
  }
  print("all", total);
  Count good;
  play(client, folder.path() / samples[0].name, good);
  std::printf("crashes in the caller: none, as this line shows\n");
  return total.without_answer == 0 && good.opened == 1 && good.died_or_hung == 0 ? 0 : 1;
}
