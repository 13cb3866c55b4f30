#include "platform/player/MoviePlayer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

  // Waits until the player of that file has got a command after the one to open it.
  bool has_got_a_command(const std::string& word) const {
    struct stat status {};
    for (int i = 0; i < 3000; ++i) {
      if (stat((folder_.path() / word).c_str(), &status) == 0 && status.st_mtime == 1) return true;
      std::this_thread::sleep_for(milliseconds(10));
    }
    return false;
  }

  TemporaryFolder folder_;
  MoviePlayerSettings settings_;
};

TEST_F(MoviePlayerTest, WhatIsAskedForReachesThePlayerInItsOrder) {
  MovieClient client(settings_);
  const auto movie = client.player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  EXPECT_EQ(client.of(Kind::opened).at(0).milliseconds, 1500);
  client.player.pause();
  client.player.seek(milliseconds(77));
  client.player.play();
  ASSERT_TRUE(client.wait_for(Kind::position, movie, 3));
  std::vector<std::int64_t> told;
  for (const MovieEvent& event : client.of(Kind::position)) told.push_back(event.milliseconds);
  EXPECT_EQ(told, (std::vector<std::int64_t>{3000, 4077, 2000}));
}

TEST_F(MoviePlayerTest, APlayerThatFailsIsAnErrorAndTheNextMoviePlays) {
  MovieClient client(settings_);
  for (const char* const word :
       {"crash", "exit", "garbage", "late-crash", "large", "not-opened", "opened-twice"}) {
    const auto bad = client.player.open(file(word), {.width = 40, .height = 30});
    EXPECT_TRUE(client.wait_for(Kind::error, bad)) << word;
    const auto good = client.player.open(file("good"), {.width = 40, .height = 30});
    EXPECT_TRUE(client.wait_for(Kind::opened, good)) << word;
  }
  EXPECT_TRUE(client.of(Kind::frame).empty());
}

TEST_F(MoviePlayerTest, APlayerThatHangsWhileOpeningIsAnError) {
  settings_.opening_limit = milliseconds(300);
  MovieClient client(settings_);
  const auto movie = client.player.open(file("hang"), {.width = 40, .height = 30});
  EXPECT_TRUE(client.wait_for(Kind::error, movie));
}

TEST_F(MoviePlayerTest, APlayerThatHangsWhilePlayingIsAnError) {
  settings_.silence_limit = milliseconds(300);
  MovieClient client(settings_);
  const auto movie = client.player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  EXPECT_TRUE(client.wait_for(Kind::error, movie));
}

TEST_F(MoviePlayerTest, APausedMovieMayBeSilent) {
  settings_.silence_limit = milliseconds(300);
  MovieClient client(settings_);
  client.take_all(false);
  const auto movie = client.player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  client.player.pause();
  client.take_all(true);
  client.player.taken();
  ASSERT_TRUE(client.wait_for(Kind::position, movie));
  std::this_thread::sleep_for(3 * settings_.silence_limit);
  EXPECT_TRUE(client.of(Kind::error).empty());
  client.player.play();
  EXPECT_TRUE(client.wait_for(Kind::error, movie)) << "now it plays";
}

TEST_F(MoviePlayerTest, AMovieThatHasEndedMayBeSilent) {
  settings_.silence_limit = milliseconds(300);
  MovieClient client(settings_);
  const auto movie = client.player.open(file("end"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::ended, movie));
  std::this_thread::sleep_for(3 * settings_.silence_limit);
  EXPECT_TRUE(client.of(Kind::error).empty());
}

TEST_F(MoviePlayerTest, ASlowCallerDoesNotMakeAPlayerSilent) {
  settings_.silence_limit = milliseconds(300);
  MovieClient client(settings_);
  client.take_all(false);
  const auto movie = client.player.open(file("end"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  std::this_thread::sleep_for(3 * settings_.silence_limit);
  client.take_all(true);
  client.player.taken();
  EXPECT_TRUE(client.wait_for(Kind::ended, movie));
  EXPECT_TRUE(client.of(Kind::error).empty());
}

TEST_F(MoviePlayerTest, AFloodOfReportsIsReadAsFastAsItIsTaken) {
  MovieClient client(settings_);
  client.take_all(false);
  const auto movie = client.player.open(file("flood"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  for (const std::size_t taken : {1U, 2U, 3U}) {
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(client.size(), taken) << "one event at a time";
    client.player.taken();
    ASSERT_TRUE(client.wait_for(Kind::position, movie, taken));
  }
  client.take_all(true);
  client.player.taken();
  EXPECT_TRUE(client.wait_for(Kind::position, movie, 1000));
}

TEST_F(MoviePlayerTest, APlayerHearsThatItsFrameWasTakenWhenItWas) {
  MovieClient client(settings_);
  client.take_all(false);
  const auto movie = client.player.open(file("frame"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  client.player.taken();
  ASSERT_TRUE(client.wait_for(Kind::frame, movie));
  client.player.pause();
  ASSERT_TRUE(has_got_a_command("frame"));
  client.take_all(true);
  client.player.taken();
  ASSERT_TRUE(client.wait_for(Kind::position, movie, 2));
  std::vector<std::int64_t> told;
  for (const MovieEvent& event : client.of(Kind::position)) told.push_back(event.milliseconds);
  EXPECT_EQ(told, (std::vector<std::int64_t>{3000, 5000})) << "paused first, taken then";
}

TEST_F(MoviePlayerTest, AnUntakenEventOfAnotherMovieHoldsUpOnlyUntilItIsTaken) {
  MovieClient client(settings_);
  client.take_all(false);
  const auto first = client.player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, first));
  const auto second = client.player.open(file("good"), {.width = 40, .height = 30});
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_EQ(client.size(), 1U);
  client.player.taken();
  EXPECT_TRUE(client.wait_for(Kind::opened, second));
}

TEST_F(MoviePlayerTest, WhatIsNoRegularFileIsNoMovie) {
  MovieClient client(settings_);
  std::filesystem::create_symlink(file("good"), folder_.path() / "link");
  for (const auto& path : {folder_.path(), folder_.path() / "none", folder_.path() / "link"}) {
    EXPECT_TRUE(
        client.wait_for(Kind::no_movie, client.player.open(path, {.width = 9, .height = 9})));
  }
}

TEST_F(MoviePlayerTest, AfterClosingNothingIsReported) {
  MovieClient client(settings_);
  const auto movie = client.player.open(file("good"), {.width = 40, .height = 30});
  ASSERT_TRUE(client.wait_for(Kind::opened, movie));
  client.player.close();
  client.player.play();
  std::this_thread::sleep_for(milliseconds(200));
  EXPECT_EQ(client.size(), 1U);
}

TEST_F(MoviePlayerTest, WithoutAPlayerThereIsAnError) {
  settings_.player = folder_.path() / "no-such-program";
  MovieClient client(settings_);
  EXPECT_TRUE(
      client.wait_for(Kind::error, client.player.open(file("good"), {.width = 9, .height = 9})));
}

TEST_F(MoviePlayerTest, DestroyingItWaitsForNoMovie) {
  settings_.opening_limit = std::chrono::minutes(4);
  const auto begin = std::chrono::steady_clock::now();
  {
    MovieClient client(settings_);
    client.player.open(file("hang"), {.width = 40, .height = 30});
    std::this_thread::sleep_for(milliseconds(50));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, settings_.opening_limit / 2);
}

}  // namespace
}  // namespace norvo::test
