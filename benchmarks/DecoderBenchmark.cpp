// Thumbnails through the decoder pool against the toolkit's reader in this process, in turns.
//
//   decoder_benchmark DECODER ROUNDS PICTURE...
//
// Prints, for each picture, the medians over the rounds of the pictures per second both ways and of
// their ratio.
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

#include "platform/decoder/DecoderPool.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int side = 100;
constexpr int pictures_per_round = 20;

double seconds_since(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

double in_process(const std::string& path) {
  const auto begin = Clock::now();
  for (int i = 0; i < pictures_per_round; ++i) {
    QImageReader reader(QString::fromStdString(path));
    reader.setAutoTransform(true);
    reader.setScaledSize(reader.size().scaled(side, side, Qt::KeepAspectRatio));
    if (reader.read().isNull()) std::exit(1);
  }
  return pictures_per_round / seconds_since(begin);
}

class Client {
 public:
  explicit Client(norvo::DecoderPoolSettings settings)
      : pool_(std::move(settings), [this](const norvo::DecoderResult& result) {
          const std::lock_guard lock(mutex_);
          if (!result.picture) std::exit(1);
          ++done_;
          changed_.notify_all();
        }) {}

  double pictures_per_second(const std::string& path) {
    const auto begin = Clock::now();
    for (int i = 0; i < pictures_per_round; ++i) {
      pool_.request({.id = static_cast<std::uint64_t>(i),
                     .path = path,
                     .box = {.width = side, .height = side},
                     .wants_verdict = false});
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return done_ == pictures_per_round; });
    done_ = 0;
    return pictures_per_round / seconds_since(begin);
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int done_ = 0;
  norvo::DecoderPool pool_;
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 3 ? std::atoi(argv[2]) : 0;
  if (rounds < 1) return 2;
  norvo::DecoderPoolSettings settings;
  settings.decoder = argv[1];
  settings.files_per_process = 1'000'000;
  Client client(settings);
  for (int picture = 3; picture < argc; ++picture) {
    const std::string path = argv[picture];
    // The first time loads plug-ins and starts processes.
    in_process(path);
    client.pictures_per_second(path);
    std::vector<double> here;
    std::vector<double> pool;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
      here.push_back(in_process(path));
      pool.push_back(client.pictures_per_second(path));
      ratios.push_back(pool.back() / here.back());
    }
    std::printf("  %-28s %6.1f in process  %6.1f through the pool   %5.2f   (%.2f to %.2f)\n",
                path.substr(path.rfind('/') + 1).c_str(), median(here), median(pool),
                median(ratios), *std::min_element(ratios.begin(), ratios.end()),
                *std::max_element(ratios.begin(), ratios.end()));
  }
  return 0;
}
