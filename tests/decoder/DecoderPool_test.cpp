#include "platform/decoder/DecoderPool.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <thread>

#include "decoder/DecoderPoolTest.h"

namespace norvo::test {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

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
