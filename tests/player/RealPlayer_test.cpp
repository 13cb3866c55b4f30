// The player that people get, with movies made by an encoder.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string>
#include <thread>

#include "player/MovieClient.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

using Kind = MovieEvent::Kind;

class RealPlayer : public ::testing::Test {
 protected:
  // A red movie of some seconds with a tone, as `name`'s extension says.
  std::filesystem::path movie(const std::string& name, const std::string& options,
                              int seconds = 2) {
    const auto path = folder_.path() / name;
    const std::string duration = std::to_string(seconds);
    const std::string command =
        "ffmpeg -v error -f lavfi -i color=c=red:s=320x240:r=25:d=" + duration +
        " -f lavfi -i sine=frequency=440:duration=" + duration + " " + options + " -shortest -y " +
        path.native() + " </dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return path;
  }

  // Whether the last position that was told is about this one.
  bool is_at(double milliseconds) const {
    const auto positions = client_.of(Kind::position);
    return !positions.empty() &&
           std::abs(static_cast<double>(positions.back().milliseconds) - milliseconds) <= 200;
  }

  // Waits until nothing has been told for a while; false when that takes more than a minute.
  bool falls_silent() const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (std::chrono::steady_clock::now() < end) {
      const std::size_t before = client_.size();
      std::this_thread::sleep_for(std::chrono::milliseconds(700));
      if (client_.size() == before) return true;
    }
    return false;
  }

  TemporaryFolder folder_;
  MovieClient client_{{.player = NORVO_PLAYER_PROGRAM}};
  MoviePlayer& player_ = client_.player;
};

TEST_F(RealPlayer, PlaysAMovieToItsEndWithinItsBox) {
  struct Sample {
    const char* name;
    const char* options;
    double duration;  // 0: this container's is not known to the toolkit
  };
  for (const Sample& sample :
       {Sample{"a.mp4", "-c:v mpeg4 -c:a aac", 2000}, Sample{"a.mkv", "-c:v mpeg4 -c:a flac", 0},
        Sample{"silent.mkv", "-c:v mpeg4 -an", 0}, Sample{"silent.mp4", "-c:v mpeg4 -an", 2000},
        Sample{"a.avi", "-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16le", 2000}}) {
    const auto number =
        player_.open(movie(sample.name, sample.options), {.width = 100, .height = 100});
    ASSERT_TRUE(client_.wait_for(Kind::opened, number)) << sample.name;
    const auto told = static_cast<double>(client_.of(Kind::opened).back().milliseconds);
    EXPECT_NEAR(told, sample.duration, 150) << sample.name;
    ASSERT_TRUE(client_.wait_for(Kind::frame, number, 5)) << sample.name;
    const Picture frame = *client_.of(Kind::frame).back().frame;
    EXPECT_EQ(frame.size, (PictureSize{.width = 100, .height = 75})) << sample.name;
    const std::uint32_t middle = frame.pixels.at(37 * 100 + 50);
    EXPECT_GT(middle >> 16U & 0xFFU, 200U) << sample.name;
    EXPECT_LT(middle & 0xFFU, 60U) << sample.name;
    EXPECT_TRUE(client_.wait_for(Kind::ended, number)) << sample.name;
  }
}

TEST_F(RealPlayer, ASoundWithoutAPictureIsAMovie) {
  const auto path = folder_.path() / "tone.wav";
  const std::string command =
      "ffmpeg -v error -f lavfi -i sine=frequency=440:duration=1 -y " + path.native();
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_TRUE(client_.wait_for(Kind::opened, player_.open(path, {.width = 50, .height = 50})));
}

TEST_F(RealPlayer, PausesAndSeeks) {
  // Long enough to be paused far from its end.
  const auto number =
      player_.open(movie("a.mp4", "-c:v mpeg4 -c:a aac", 20), {.width = 50, .height = 50});
  ASSERT_TRUE(client_.wait_for(Kind::frame, number, 2));
  player_.pause();
  player_.seek(std::chrono::milliseconds(19'500));
  for (int i = 0; i < 3000 && !is_at(19'500); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(falls_silent());
  EXPECT_TRUE(is_at(19'500));
  EXPECT_TRUE(client_.of(Kind::ended).empty()) << "a paused movie stands still";
  player_.play();
  EXPECT_TRUE(client_.wait_for(Kind::ended, number));
}

TEST_F(RealPlayer, WhatIsNoMovieIsToldSo) {
  const auto text = folder_.path() / "text.mp4";
  write_file(text, std::string(100'000, 'x'));
  const auto picture = folder_.path() / "picture.jpg";
  const std::string command =
      "ffmpeg -v error -f lavfi -i color=c=red:s=64x64 -frames:v 1 -y " + picture.native();
  ASSERT_EQ(std::system(command.c_str()), 0);
  for (const auto& path : {text, picture}) {
    EXPECT_TRUE(client_.wait_for(Kind::no_movie, player_.open(path, {.width = 50, .height = 50})))
        << path;
  }
}

TEST_F(RealPlayer, ACutMovieIsAnAnswerAndTheNextOnePlays) {
  const std::string content =
      read_file(movie("a.avi", "-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16le"));
  const auto cut = folder_.path() / "cut.avi";
  const auto good = movie("b.mp4", "-c:v mpeg4 -c:a aac");
  for (const std::size_t length : {std::size_t{1000}, content.size() / 2}) {
    write_file(cut, content.substr(0, length));
    const auto broken = player_.open(cut, {.width = 50, .height = 50});
    EXPECT_TRUE(client_.wait_for(length == 1000 ? Kind::no_movie : Kind::frame, broken)) << length;
    EXPECT_TRUE(client_.wait_for(Kind::opened, player_.open(good, {.width = 50, .height = 50})));
  }
}

}  // namespace
}  // namespace norvo::test
