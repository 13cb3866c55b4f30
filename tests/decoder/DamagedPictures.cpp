// Takes good pictures, damages each in many ways, sends all through a pool, and counts what became
// of them. The same seed makes the same damage.
//
//   damaged_pictures DECODER FOLDER [VARIANTS [SEED]]
//
// Ends with 1 when a file had no result, or too many, or one that says nothing about the file, or
// when the decoder broke the protocol.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

#include "decoder/PoolClient.h"
#include "support/Damage.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace norvo;

struct Count {
  std::size_t files = 0;
  std::size_t ended = 0;
  std::map<DecoderFailure, std::size_t> failures;
  std::map<Completeness, std::size_t> verdicts;
};

void count(Count& count, const test::PoolClient& client) {
  for (const DecoderResult& result : client.results()) {
    if (!result.is_last) continue;
    ++count.ended;
    ++count.failures[result.failure];
    ++count.verdicts[result.verdict.completeness];
  }
}

void print(const char* what, Count& count) {
  std::printf("%-6s %6zu files, %6zu ended; died %zu, time-outs %zu, bad answers %zu; ", what,
              count.files, count.ended, count.failures[DecoderFailure::died],
              count.failures[DecoderFailure::time_limit],
              count.failures[DecoderFailure::bad_answer]);
  std::printf("whole %zu, partly %zu, embedded only %zu, nothing %zu\n",
              count.verdicts[Completeness::whole], count.verdicts[Completeness::partly],
              count.verdicts[Completeness::embedded_only], count.verdicts[Completeness::nothing]);
}

void add(Count& total, const Count& part) {
  total.files += part.files;
  total.ended += part.ended;
  for (const auto& [failure, number] : part.failures) total.failures[failure] += number;
  for (const auto& [verdict, number] : part.verdicts) total.verdicts[verdict] += number;
}

// All variants of one good picture.
Count run(const fs::path& decoder, const fs::path& good, std::size_t variants,
          test::Damage& damage) {
  const test::TemporaryFolder folder;
  const std::string content = test::read_file(good);
  test::PoolClient client;
  DecoderPoolSettings settings;
  settings.decoder = fs::absolute(decoder);
  settings.time_limit = std::chrono::seconds(5);
  Count counted;
  {
    DecoderPool pool(settings, client.callback());
    for (std::size_t i = 0; i < variants; ++i) {
      const fs::path path = folder.path() / (std::to_string(i) + good.extension().native());
      test::write_file(path, damage.damaged(content));
      pool.request({.id = i, .path = path, .box = {.width = 100, .height = 100}});
    }
    counted.files = variants;
    static_cast<void>(client.wait_for(variants, std::chrono::seconds(600)));
  }
  count(counted, client);
  return counted;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || argc > 5) return 2;
  const std::uint64_t variants = test::number_or(argc > 3 ? argv[3] : nullptr, 300);
  const std::uint64_t seed = test::number_or(argc > 4 ? argv[4] : nullptr, 1);
  std::map<std::string, Count> by_format;
  Count total;
  // In a fixed order, so that the seed decides everything.
  std::map<std::string, fs::path> pictures;
  for (const auto& entry : fs::directory_iterator(argv[2])) {
    pictures.emplace(entry.path().filename().native(), entry.path());
  }
  test::Damage damage(seed);
  for (const auto& [name, path] : pictures) {
    const Count counted = run(argv[1], path, variants, damage);
    add(by_format[path.extension().native().substr(1)], counted);
    add(total, counted);
  }
  for (auto& [format, counted] : by_format) print(format.c_str(), counted);
  print("all", total);
  std::printf("crashes in the caller: none, as this line shows\n");
  // Our own decoder answers by the rules, or ends.
  const bool looked_at = total.failures[DecoderFailure::file] == 0 &&
                         total.failures[DecoderFailure::no_decoder] == 0 &&
                         total.failures[DecoderFailure::bad_answer] == 0;
  return total.files > 0 && total.ended == total.files && looked_at ? 0 : 1;
}
