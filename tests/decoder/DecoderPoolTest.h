// A pool over the stand-in decoder, for tests of what becomes of files.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "decoder/PoolClient.h"
#include "platform/decoder/DecoderPool.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {

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
    while (pool.started_processes() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
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

}  // namespace norvo::test
