#include "platform/player/MovieProtocol.h"

#include <gtest/gtest.h>

namespace norvo::test {
namespace {

TEST(MovieProtocol, CommandsAndReportsComeBackAsTheyWere) {
  for (const MovieCommand& command :
       {MovieCommand{.kind = MovieCommand::Kind::open, .box = {.width = 2048, .height = 1}},
        MovieCommand{.kind = MovieCommand::Kind::seek, .box = {}, .milliseconds = 1234567890123},
        MovieCommand{.kind = MovieCommand::Kind::frame_taken, .box = {}}}) {
    EXPECT_EQ(decode_command(encode(command)), command);
  }
  for (const MovieReport& report :
       {MovieReport{.kind = MovieReport::Kind::opened, .size = {}, .milliseconds = 5000},
        MovieReport{.kind = MovieReport::Kind::frame, .size = {.width = 400, .height = 300}},
        MovieReport{.kind = MovieReport::Kind::no_movie, .size = {}}}) {
    EXPECT_EQ(decode_report(encode(report)), report);
  }
}

TEST(MovieProtocol, EveryChangedBitOfAReportIsRefusedOrReadAsItStands) {
  const MovieMessage good =
      encode(MovieReport{.kind = MovieReport::Kind::frame, .size = {.width = 400, .height = 300}});
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      MovieMessage changed = good;
      changed[at] ^= std::byte{1} << bit;
      const auto report = decode_report(changed);
      EXPECT_TRUE(!report || encode(*report) == changed) << at << " " << bit;
      EXPECT_FALSE(report && (at < 6 || at > 9)) << at << " " << bit;
    }
  }
}

TEST(MovieProtocol, HostileReportsAreRefused) {
  using Kind = MovieReport::Kind;
  EXPECT_FALSE(decode_report(encode(MovieReport{.kind = Kind::frame, .size = {}})));
  EXPECT_FALSE(decode_report(
      encode(MovieReport{.kind = Kind::frame, .size = {.width = 2049, .height = 1}})));
  EXPECT_FALSE(
      decode_report(encode(MovieReport{.kind = Kind::opened, .size = {}, .milliseconds = -1})));
  EXPECT_FALSE(decode_report(encode(MovieReport{.kind = static_cast<Kind>(6), .size = {}})));
  EXPECT_FALSE(decode_report(encode(MovieCommand{.kind = MovieCommand::Kind::play, .box = {}})));
}

}  // namespace
}  // namespace norvo::test
