#include "platform/decoder/DecoderPool.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <thread>

#include "decoder/PoolClient.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// Files whose words tell the stand-in what to do, and one decoder unless said otherwise.
class DecoderPoolTest : public ::testing::Test {
 protected:
  DecoderPoolTest() {
    settings_.decoder = NORVO_STAND_IN_DECODER;
    settings_.processes = 1;
    settings_.time_limit = std::chrono::seconds(20);
  }

  DecoderJob job(std::uint64_t id, const std::string& words, std::int32_t priority = 0) {
    const auto path = folder_.path() / std::to_string(id);
    write_file(path, words);
    return {.id = id, .path = path, .box = {.width = 20, .height = 10}, .priority = priority};
  }

  // What becomes of one file after another good one, and that the next one is good again.
  DecoderFailure fate_of(const std::string& words) {
    DecoderPool pool(settings_, client_.callback());
    pool.request(job(1, "good 1"));
    EXPECT_TRUE(client_.wait_for(1));
    pool.request(job(2, words));
    EXPECT_TRUE(client_.wait_for(2));
    pool.request(job(3, "good 3"));
    EXPECT_TRUE(client_.wait_for(3));
    EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1, 2, 3}));
    for (const std::uint64_t id : {1U, 3U}) EXPECT_TRUE(is_good(id)) << id;
    const DecoderResult result = client_.results_of(2).at(0);
    EXPECT_FALSE(result.picture);
    EXPECT_TRUE(result.is_last);
    EXPECT_EQ(result.verdict, Verdict{});
    return result.failure;
  }

  bool is_good(std::uint64_t id) const {
    const auto results = client_.results_of(id);
    if (results.size() != 1 || !results[0].picture) return false;
    const Picture& picture = *results[0].picture;
    const auto expected = 0xFF000000U | static_cast<std::uint32_t>(id);
    return results[0].failure == DecoderFailure::none && picture.pixels.size() == 200 &&
           std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [expected](std::uint32_t pixel) { return pixel == expected; });
  }

  // Fills the only decoder until release(), so that what is asked for meanwhile waits in the queue
  // together.
  void occupy(DecoderPool& pool) {
    pool.request(job(1000, "held 1000"));
    while (pool.started_processes() == 0) std::this_thread::sleep_for(milliseconds(1));
  }
  void release() const { replace(1000, "good 1000"); }

  // Lets the decoder go on that is held by the file of this job.
  void replace(std::uint64_t id, const std::string& words) const {
    write_file(folder_.path() / "new", words);
    std::filesystem::rename(folder_.path() / "new", folder_.path() / std::to_string(id));
  }

  TemporaryFolder folder_;
  DecoderPoolSettings settings_;
  PoolClient client_;
};

TEST(DecoderPool, LeavesOneCoreToOthers) {
  EXPECT_EQ(usual_processes(0), 1U) << "where the system does not tell";
  EXPECT_EQ(usual_processes(1), 1U);
  EXPECT_EQ(usual_processes(2), 1U);
  EXPECT_EQ(usual_processes(3), 2U);
  EXPECT_EQ(usual_processes(8), 7U);
}

TEST_F(DecoderPoolTest, HasAsManyDecodersAsTheMachineAllowsUnlessTold) {
  const unsigned usual = usual_processes(std::thread::hardware_concurrency());
  for (const unsigned told : {0U, usual + 2}) {
    const unsigned expected = told == 0 ? usual : told;
    settings_.processes = told;
    DecoderPool pool(settings_, client_.callback());
    for (std::uint64_t id = 1; id <= expected + 3; ++id) pool.request(job(id, "hang"));
    const auto end = Clock::now() + std::chrono::seconds(60);
    while (pool.started_processes() < expected && Clock::now() < end) {
      std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_EQ(pool.started_processes(), expected);
  }
}

TEST_F(DecoderPoolTest, AGoodFileHasItsPictureAndVerdictInOneResult) {
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(7, "good 7"));
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_TRUE(is_good(7));
  const DecoderResult result = client_.results().at(0);
  EXPECT_EQ(result.picture->size, (PictureSize{.width = 20, .height = 10}));
  EXPECT_EQ(result.verdict.completeness, Completeness::whole);
  EXPECT_TRUE(result.is_last);
}

TEST_F(DecoderPoolTest, ADecoderThatDiesCostsItsOwnFileOnly) {
  EXPECT_EQ(fate_of("crash"), DecoderFailure::died);
}
TEST_F(DecoderPoolTest, ADecoderThatAbortsCostsItsOwnFileOnly) {
  EXPECT_EQ(fate_of("abort"), DecoderFailure::died);
}
TEST_F(DecoderPoolTest, ADecoderThatLeavesSilentlyCostsItsOwnFileOnly) {
  EXPECT_EQ(fate_of("exit"), DecoderFailure::died);
}
TEST_F(DecoderPoolTest, AnAnswerThatEndsInTheMiddleCostsItsOwnFileOnly) {
  EXPECT_EQ(fate_of("half"), DecoderFailure::died);
}
TEST_F(DecoderPoolTest, GarbageCostsItsOwnFileOnly) {
  EXPECT_EQ(fate_of("garbage"), DecoderFailure::bad_answer);
}
TEST_F(DecoderPoolTest, APictureBeyondItsBoxIsRefused) {
  EXPECT_EQ(fate_of("large"), DecoderFailure::bad_answer);
}
TEST_F(DecoderPoolTest, AnAnswerToAnotherRequestIsRefused) {
  EXPECT_EQ(fate_of("serial"), DecoderFailure::bad_answer);
}
TEST_F(DecoderPoolTest, ColoursAboveTheirAlphaAreRefused) {
  EXPECT_EQ(fate_of("colours"), DecoderFailure::bad_answer);
}

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

TEST_F(DecoderPoolTest, WhatADecoderSaysTooMuchCostsNobodyAnything) {
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "trailing 1"));
  ASSERT_TRUE(client_.wait_for(1));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_TRUE(is_good(1));
  EXPECT_TRUE(is_good(2));
  EXPECT_EQ(pool.started_processes(), 2U);
}

TEST_F(DecoderPoolTest, ADecoderThatEndsAfterItsAnswerCostsNobodyAnything) {
  DecoderPool pool(settings_, client_.callback());
  for (std::uint64_t id = 1; id <= 5; ++id) {
    pool.request(job(id, "ends-after " + std::to_string(id)));
    ASSERT_TRUE(client_.wait_for(id));
    EXPECT_TRUE(is_good(id)) << id;
  }
}

TEST_F(DecoderPoolTest, AFreshProcessComesAfterTheSetNumberOfFiles) {
  settings_.files_per_process = 3;
  DecoderPool pool(settings_, client_.callback());
  for (std::uint64_t id = 1; id <= 10; ++id) pool.request(job(id, "good " + std::to_string(id)));
  ASSERT_TRUE(client_.wait_for(10));
  EXPECT_EQ(pool.started_processes(), 4U);
  for (std::uint64_t id = 1; id <= 10; ++id) EXPECT_TRUE(is_good(id)) << id;
}

TEST_F(DecoderPoolTest, TheHigherPriorityAndThenTheNewestComesFirst) {
  DecoderPool pool(settings_, client_.callback());
  occupy(pool);
  pool.request(job(1, "good 1"));
  pool.request(job(2, "good 2"));
  pool.request(job(3, "good 3", 5));
  pool.request(job(4, "good 4", -5));
  pool.set_priority(1, 9);
  release();
  ASSERT_TRUE(client_.wait_for(5));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1000, 1, 3, 2, 4}));
}

TEST_F(DecoderPoolTest, AllPicturesComeBeforeTheFirstLateVerdict) {
  DecoderPool pool(settings_, client_.callback());
  occupy(pool);
  for (std::uint64_t id = 1; id <= 4; ++id) pool.request(job(id, "later " + std::to_string(id)));
  release();
  ASSERT_TRUE(client_.wait_for(5));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1000, 4, 3, 2, 1, 1, 2, 3, 4}));
  const auto results = client_.results_of(2);
  EXPECT_TRUE(results.at(0).picture);
  EXPECT_FALSE(results.at(0).is_last);
  EXPECT_EQ(results.at(0).verdict.completeness, Completeness::not_known);
  EXPECT_FALSE(results.at(1).picture);
  EXPECT_TRUE(results.at(1).is_last);
  EXPECT_EQ(results.at(1).verdict.completeness, Completeness::whole);
}

TEST_F(DecoderPoolTest, APictureDoesNotWaitForAVerdictThatTakesLong) {
  settings_.patience = std::chrono::hours(1);
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "later-held 1"));
  while (client_.results().empty()) std::this_thread::sleep_for(milliseconds(1));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1, 2}));
  EXPECT_TRUE(is_good(2));
}

TEST_F(DecoderPoolTest, AVerdictThatMadeRoomIsGivenLater) {
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "later-held 1"));
  while (client_.results().empty()) std::this_thread::sleep_for(milliseconds(1));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(1));
  replace(1, "later 1");
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1, 2, 1}));
  EXPECT_EQ(client_.results().at(2).verdict.completeness, Completeness::whole);
}

TEST_F(DecoderPoolTest, ADecoderThatDiesOverTheVerdictLeavesThePicture) {
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "later-dies 1"));
  ASSERT_TRUE(client_.wait_for(1));
  const auto results = client_.results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_TRUE(results[0].picture);
  EXPECT_EQ(results[1].failure, DecoderFailure::died);
  EXPECT_EQ(results[1].verdict.completeness, Completeness::not_known);
}

TEST_F(DecoderPoolTest, NobodyAsksForAVerdictThatIsNotWanted) {
  DecoderPool pool(settings_, client_.callback());
  DecoderJob quick = job(1, "later 1");
  quick.wants_verdict = false;
  pool.request(quick);
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_EQ(client_.results().size(), 1U);
}

TEST_F(DecoderPoolTest, ACancelledFileHasNoResultAndHoldsUpNobody) {
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "hang"));
  while (pool.started_processes() == 0) std::this_thread::sleep_for(milliseconds(1));
  pool.request(job(2, "good 2"));
  pool.request(job(3, "good 3"));
  pool.cancel(3);
  pool.cancel(1);
  // Much less than the patience with a decoder that hangs.
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{2}));
}

TEST_F(DecoderPoolTest, AfterCancellingAllOnlyNewFilesHaveResults) {
  DecoderPool pool(settings_, client_.callback());
  occupy(pool);
  for (std::uint64_t id = 1; id <= 50; ++id) pool.request(job(id, "good 1"));
  pool.cancel_all();
  pool.request(job(7, "good 7"));
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{7}));
  EXPECT_TRUE(is_good(7));
}

TEST_F(DecoderPoolTest, AskingAgainReplacesARequestThatIsBeingWorkedOn) {
  DecoderPool pool(settings_, client_.callback());
  occupy(pool);
  DecoderJob again = job(1, "good 1");
  again.id = 1000;
  pool.request(again);
  release();
  ASSERT_TRUE(client_.wait_for(1));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_EQ(client_.order(), (std::vector<std::uint64_t>{1000, 2}));
  EXPECT_EQ(client_.results().at(0).picture->pixels.at(0), 0xFF000001U);
}

TEST_F(DecoderPoolTest, OnlyRegularFilesAreOpened) {
  DecoderPool pool(settings_, client_.callback());
  const auto good = job(1, "good 1");
  const auto link = folder_.path() / "link";
  const auto pipe = folder_.path() / "pipe";
  std::filesystem::create_symlink(good.path, link);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::uint64_t id = 10;
  for (const auto& path :
       {link, pipe, folder_.path(), folder_.path() / "none", std::filesystem::path("/dev/zero")}) {
    pool.request({.id = id++, .path = path, .box = {.width = 20, .height = 10}});
  }
  ASSERT_TRUE(client_.wait_for(5));
  for (const DecoderResult& result : client_.results()) {
    EXPECT_EQ(result.failure, DecoderFailure::file) << result.id;
  }
  EXPECT_EQ(pool.started_processes(), 0U);
}

TEST_F(DecoderPoolTest, WithoutADecoderEveryFileHasAResult) {
  settings_.decoder = folder_.path() / "no-such-program";
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(1, "good 1"));
  pool.request(job(2, "good 2"));
  ASSERT_TRUE(client_.wait_for(2));
  for (const DecoderResult& result : client_.results())
    EXPECT_NE(result.failure, DecoderFailure::none);
}

TEST_F(DecoderPoolTest, AHangingDecoderDoesNotHoldUpTheOthers) {
  settings_.processes = 3;
  DecoderPool pool(settings_, client_.callback());
  pool.request(job(100, "hang"));
  pool.request(job(101, "hang"));
  for (std::uint64_t id = 1; id <= 20; ++id) pool.request(job(id, "good " + std::to_string(id)));
  ASSERT_TRUE(client_.wait_for(20));
  for (std::uint64_t id = 1; id <= 20; ++id) EXPECT_TRUE(is_good(id)) << id;
}

TEST_F(DecoderPoolTest, DestroyingThePoolWaitsForNoFile) {
  const auto begin = Clock::now();
  {
    settings_.processes = 2;
    DecoderPool pool(settings_, client_.callback());
    pool.request(job(1, "hang"));
    pool.request(job(2, "stop"));
    for (std::uint64_t id = 3; id <= 30; ++id) pool.request(job(id, "hang"));
    while (pool.started_processes() < 2) std::this_thread::sleep_for(milliseconds(1));
  }
  EXPECT_LT(Clock::now() - begin, settings_.patience / 2);
  EXPECT_TRUE(client_.results().empty());
}

TEST_F(DecoderPoolTest, TheCallbackMayAskForMore) {
  DecoderPool* asked = nullptr;
  const DecoderJob second = job(2, "good 2");
  DecoderPool pool(settings_, [&](const DecoderResult& result) {
    if (result.id == 1) asked->request(second);
    client_.callback()(result);
  });
  asked = &pool;
  pool.request(job(1, "good 1"));
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_TRUE(is_good(2));
}

}  // namespace
}  // namespace norvo::test
