// The decoder that people get, under its own rules, on good pictures and on bombs.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include "decoder/PictureFiles.h"
#include "decoder/PoolClient.h"
#include "platform/decoder/DecoderProtocol.h"
#include "support/ChildPolicies.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

class RealDecoder : public ::testing::Test {
 protected:
  RealDecoder() { settings_.decoder = NORVO_DECODER_PROGRAM; }

  DecoderPoolSettings settings_;
  PoolClient client_;
};

// A PNG of zeros: `side` squared grey pixels in a few kilobytes or megabytes of file.
void make_bomb(const std::filesystem::path& path, int side) {
  const std::string script =
      "import sys, zlib, struct\n"
      "side = int(sys.argv[2])\n"
      "def chunk(k, d): return struct.pack('>I', len(d)) + k + d + "
      "struct.pack('>I', zlib.crc32(k + d))\n"
      "z = zlib.compressobj(1)\n"
      "data = b''.join(z.compress(bytes(side + 1)) for _ in range(side)) + z.flush()\n"
      "open(sys.argv[1], 'wb').write(b'\\x89PNG\\r\\n\\x1a\\n' + chunk(b'IHDR', "
      "struct.pack('>IIBBBBB', side, side, 8, 0, 0, 0, 0)) + chunk(b'IDAT', data) + "
      "chunk(b'IEND', b''))\n";
  const std::string script_path = path.native() + ".py";
  write_file(script_path, script);
  const std::string command =
      "/usr/bin/python3 " + script_path + " " + path.native() + " " + std::to_string(side);
  ASSERT_EQ(std::system(command.c_str()), 0);
}

TEST_F(RealDecoder, DecodesEveryFormatWithoutItsRights) {
  const auto files = all_pictures();
  ASSERT_GE(files.size(), 45U);
  DecoderPool pool(settings_, client_.callback());
  for (std::size_t i = 0; i < files.size(); ++i) {
    pool.request({.id = i, .path = files[i], .box = {.width = 100, .height = 100}});
  }
  ASSERT_TRUE(client_.wait_for(files.size()));
  for (std::size_t i = 0; i < files.size(); ++i) {
    const auto results = client_.results_of(i);
    ASSERT_FALSE(results.empty()) << files[i];
    EXPECT_TRUE(results.front().picture) << files[i];
    EXPECT_EQ(results.back().verdict.completeness, Completeness::whole) << files[i];
    EXPECT_EQ(results.back().failure, DecoderFailure::none) << files[i];
  }
}

TEST_F(RealDecoder, OneProcessLastsForManyFiles) {
  settings_.processes = 1;
  DecoderPool pool(settings_, client_.callback());
  const auto files = all_pictures();
  for (std::size_t i = 0; i < 150; ++i) {
    pool.request({.id = i,
                  .path = files[i % files.size()],
                  .box = {.width = 200, .height = 200},
                  .wants_verdict = false});
  }
  ASSERT_TRUE(client_.wait_for(150));
  EXPECT_EQ(pool.started_processes(), 1U);
}

// Its picture is not waited for: on a busy machine it may take long.
TEST_F(RealDecoder, TakesOnlyIdleProcessorsInTheBackground) {
  const NewDecoders decoders;
  settings_.processes = 1;
  DecoderPool pool(settings_, client_.callback());
  DecoderJob job{.id = 1,
                 .path = picture_folder() / "rgb.png",
                 .box = {.width = 99, .height = 99},
                 .wants_verdict = false};
  pool.request(job);
  ASSERT_TRUE(client_.wait_for(1));
  EXPECT_FALSE(decoders.any_has_policy(SCHED_IDLE));
  pool.set_background(true);
  job.id = 2;
  pool.request(job);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!decoders.any_has_policy(SCHED_IDLE)) {
    ASSERT_LT(std::chrono::steady_clock::now(), end);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

TEST_F(RealDecoder, ABombCostsItsOwnPictureOnly) {
  const TemporaryFolder folder;
  settings_.processes = 1;
  settings_.time_limit = std::chrono::seconds(3);
  make_bomb(folder.path() / "bomb.png", 30000);
  DecoderPool pool(settings_, client_.callback());
  pool.request({.id = 1, .path = folder.path() / "bomb.png", .box = {.width = 99, .height = 99}});
  ASSERT_TRUE(client_.wait_for(1));
  pool.request({.id = 2, .path = picture_folder() / "rgb.png", .box = {.width = 99, .height = 99}});
  ASSERT_TRUE(client_.wait_for(2));
  EXPECT_FALSE(client_.results_of(1).at(0).picture);
  EXPECT_TRUE(client_.results_of(2).at(0).picture);
}

TEST_F(RealDecoder, MemoryIsLimited) {
  const TemporaryFolder folder;
  settings_.processes = 1;
  make_bomb(folder.path() / "large.png", 8000);
  for (const std::uint64_t mebibytes : {1536U, 400U}) {
    settings_.memory_limit = mebibytes << 20U;
    PoolClient client;
    DecoderPool pool(settings_, client.callback());
    pool.request({.id = 1, .path = folder.path() / "large.png", .box = {.width = 9, .height = 9}});
    ASSERT_TRUE(client.wait_for(1));
    EXPECT_EQ(client.results().at(0).picture.has_value(), mebibytes == 1536U) << mebibytes;
  }
}

TEST_F(RealDecoder, OneThatTakesAllMemoryCostsItsOwnPictureOnly) {
  const TemporaryFolder folder;
  for (const char* const name : {"first", "hungry", "last"}) {
    write_file(folder.path() / name, name);
  }
  settings_.decoder = NORVO_HUNGRY_DECODER;
  settings_.processes = 1;
  settings_.memory_limit = std::uint64_t{512} << 20U;
  DecoderPool pool(settings_, client_.callback());
  std::uint64_t id = 0;
  for (const char* const name : {"first", "hungry", "last"}) {
    pool.request({.id = ++id, .path = folder.path() / name, .box = {.width = 9, .height = 9}});
    ASSERT_TRUE(client_.wait_for(id));
  }
  EXPECT_TRUE(client_.results_of(1).at(0).picture);
  EXPECT_FALSE(client_.results_of(2).at(0).picture);
  EXPECT_EQ(client_.results_of(2).at(0).failure, DecoderFailure::died);
  EXPECT_TRUE(client_.results_of(3).at(0).picture);
  // The hungry one had a second try in a process that nobody had used.
  EXPECT_EQ(pool.started_processes(), 3U);
}

}  // namespace
}  // namespace norvo::test
