// How long a decoder may take over a file, and what its rank has to do with it.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "decoder/DecoderPoolTest.h"

namespace norvo::test {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

TEST_F(DecoderPoolTest, ADecoderThatHangsIsEndedByTheTimeLimit) {
  settings_.time_limit = milliseconds(400);
  settings_.patience = milliseconds(400);
  for (const char* const words : {"hang", "stop", "stall"}) {
    PoolClient client;
    DecoderPool pool(settings_, client.callback());
    const auto begin = Clock::now();
    pool.request(job(2, words));
    ASSERT_TRUE(client.wait_for(1)) << words;
    EXPECT_EQ(client.results().at(0).failure, DecoderFailure::time_limit) << words;
    EXPECT_GE(Clock::now() - begin, milliseconds(400)) << words;
  }
}

TEST_F(DecoderPoolTest, ADecoderThatComputesForEverIsEndedByTheTimeLimit) {
  settings_.time_limit = std::chrono::seconds(2);
  settings_.patience = std::chrono::hours(1);
  EXPECT_EQ(fate_of("compute"), DecoderFailure::time_limit);
}

TEST_F(DecoderPoolTest, ADecoderThatWaitsForAProcessorHasMoreTimeThanTheLimit) {
  settings_.time_limit = milliseconds(100);
  settings_.patience = std::chrono::hours(1);
  DecoderPool pool(settings_, client_.callback());
  // The time that the process takes to start would count as the first file's.
  pool.request(job(1, "good 1"));
  ASSERT_TRUE(client_.wait_for(1));
  const std::uint64_t processes = pool.started_processes();
  pool.request(job(2, "slow 600"));
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_EQ(client_.results_of(2).at(0).failure, DecoderFailure::none);
  EXPECT_EQ(pool.started_processes(), processes);
}

TEST_F(DecoderPoolTest, ADecoderThatHangsAfterItsAnswerCostsTheNextFileNothing) {
  settings_.time_limit = milliseconds(400);
  settings_.patience = milliseconds(400);
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "hangs-after 1"));
  ASSERT_TRUE(client_.wait_for(1));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_TRUE(is_good(1));
  EXPECT_TRUE(is_good(2));
}

TEST_F(DecoderPoolTest, ADecoderThatIsKeptFromTheProcessorsSaysNothingOfItsFile) {
  settings_.background_patience = milliseconds(400);
  settings_.patience = std::chrono::hours(1);
  DecoderPool pool(settings_, client_.callback());
  pool.set_background(true);
  pool.request(job(1, "hang"));
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_EQ(client_.results().at(0).failure, DecoderFailure::starved);
}

TEST_F(DecoderPoolTest, ADecoderIsReplacedWhenItsRankChanges) {
  DecoderPool pool(settings_, client_.callback());
  for (std::uint64_t id = 1; id <= 6; ++id) {
    pool.set_background(id == 3 || id == 4);
    pool.request(job(id, "good " + std::to_string(id)));
    ASSERT_TRUE(client_.wait_for(id));
    EXPECT_TRUE(is_good(id)) << id;
  }
  EXPECT_EQ(pool.started_processes(), 3U);
}

// Other programs may keep it waiting for minutes.
TEST_F(DecoderPoolTest, AFileThatWasBegunInTheBackgroundIsBegunAnewWhenThatIsOver) {
  DecoderPool pool(settings_, client_.callback());
  pool.set_background(true);
  pool.request(job(1, "hang-in-background 1"));
  while (pool.started_processes() == 0) std::this_thread::sleep_for(milliseconds(1));
  pool.set_background(false);
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_TRUE(is_good(1));
  EXPECT_EQ(pool.started_processes(), 2U);
}

}  // namespace
}  // namespace norvo::test
