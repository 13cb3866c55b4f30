#include "platform/player/MoviePlayer.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "player/MovieClient.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

using Kind = MovieEvent::Kind;
using std::chrono::milliseconds;

class MoviePlayerTest : public ::testing::Test {
 protected:
  MoviePlayerTest() { settings_.player = NORVO_STAND_IN_PLAYER; }

  std::filesystem::path file(const std::string& word) {
    write_file(folder_.path() / word, word);
    return folder_.path() / word;
  }

  TemporaryFolder folder_;
  MoviePlayerSettings settings_;
  MovieClient client_;
};

TEST_F(MoviePlayerTest, WhatIsAskedForReachesThePlayerInItsOrder) {
  MoviePlayer player(settings_, client_.callback());
  const auto movie = player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client_.wait_for(Kind::opened, movie));
  EXPECT_EQ(client_.of(Kind::opened).at(0).milliseconds, 1500);
  player.pause();
  player.seek(milliseconds(77));
  player.play();
  ASSERT_TRUE(client_.wait_for(Kind::position, movie, 3));
  std::vector<std::int64_t> told;
  for (const MovieEvent& event : client_.of(Kind::position)) told.push_back(event.milliseconds);
  EXPECT_EQ(told, (std::vector<std::int64_t>{3000, 4077, 2000}));
}

TEST_F(MoviePlayerTest, APlayerThatFailsIsAnErrorAndTheNextMoviePlays) {
  MoviePlayer player(settings_, client_.callback());
  for (const char* const word : {"crash", "exit", "garbage", "late-crash", "large"}) {
    const auto bad = player.open(file(word), {.width = 40, .height = 30});
    EXPECT_TRUE(client_.wait_for(Kind::error, bad)) << word;
    const auto good = player.open(file("good"), {.width = 40, .height = 30});
    EXPECT_TRUE(client_.wait_for(Kind::opened, good)) << word;
  }
  EXPECT_TRUE(client_.of(Kind::frame).empty());
}

TEST_F(MoviePlayerTest, APlayerThatHangsWhileOpeningIsAnError) {
  settings_.opening_limit = milliseconds(300);
  MoviePlayer player(settings_, client_.callback());
  const auto movie = player.open(file("hang"), {.width = 40, .height = 30});
  EXPECT_TRUE(client_.wait_for(Kind::error, movie));
}

TEST_F(MoviePlayerTest, WhatIsNoRegularFileIsNoMovie) {
  MoviePlayer player(settings_, client_.callback());
  std::filesystem::create_symlink(file("good"), folder_.path() / "link");
  for (const auto& path : {folder_.path(), folder_.path() / "none", folder_.path() / "link"}) {
    EXPECT_TRUE(client_.wait_for(Kind::no_movie, player.open(path, {.width = 9, .height = 9})));
  }
}

TEST_F(MoviePlayerTest, AfterClosingNothingIsReported) {
  MoviePlayer player(settings_, client_.callback());
  const auto movie = player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client_.wait_for(Kind::opened, movie));
  player.close();
  player.play();
  std::this_thread::sleep_for(milliseconds(200));
  EXPECT_EQ(client_.size(), 1U);
}

TEST_F(MoviePlayerTest, WithoutAPlayerThereIsAnError) {
  settings_.player = folder_.path() / "no-such-program";
  MoviePlayer player(settings_, client_.callback());
  EXPECT_TRUE(client_.wait_for(Kind::error, player.open(file("good"), {.width = 9, .height = 9})));
}

TEST_F(MoviePlayerTest, DestroyingItWaitsForNoMovie) {
  const auto begin = std::chrono::steady_clock::now();
  {
    MoviePlayer player(settings_, client_.callback());
    player.open(file("hang"), {.width = 40, .height = 30});
    std::this_thread::sleep_for(milliseconds(50));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
}  // namespace norvo::test
