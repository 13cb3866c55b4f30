// Calls that are refused, searches that fail and searches that are stopped.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/terminal/StopSignals.h"
#include "support/FakeDevice.h"
#include "support/FileContent.h"
#include "terminal/ProgramOnImage.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using test::final_event;
using test::general_pass;
using test::json;
using test::lines_of;
using test::sector_of;
using test::thorough_pass;
using test::zero_sectors;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class NorvoRecoverEndsTest : public test::ProgramOnImage {
 protected:
  // Refused: status 2, the message, no event and nothing written.
  void expect_refused(const std::vector<std::string>& options, const std::string& message) {
    for (const bool json : {false, true}) {
      std::vector<std::string> all = options;
      if (json) all.emplace_back("--json");
      EXPECT_EQ(search(all), 2);
      EXPECT_EQ(out_.str(), "");
      EXPECT_THAT(err_.str(), HasSubstr(message));
      EXPECT_FALSE(fs::exists(destination()));
    }
  }
};

TEST_F(NorvoRecoverEndsTest, RefusesARangeWithTheMessageOfItsFault) {
  expect_refused({"--start-sector", "-5", "--end-sector", "6"},
                 "Please enter valid Start Sector value.\n");
  expect_refused({"--start-sector", "01", "--end-sector", "6"},
                 "Please enter valid Start Sector value.\n");
  expect_refused({"--start-sector", "0", "--end-sector", "9"},
                 "Please enter valid End Sector value.\n");
  expect_refused({"--start-sector", "0", "--end-sector", ""},
                 "Please enter valid End Sector value.\n");
  expect_refused({"--start-sector", "5", "--end-sector", "5"},
                 "End Sector should be greater than Start Sector.\n");
}

TEST_F(NorvoRecoverEndsTest, CountsWholeSectorsOnly) {
  write_image(zero_sectors(2) + std::string(511, 'x'));
  expect_refused({"--start-sector", "0", "--end-sector", "3"},
                 "Please enter valid End Sector value.\n");
  EXPECT_EQ(search(), 0);
  EXPECT_THAT(err_.str(), HasSubstr("Sectors 0 of 2 "));
}

TEST_F(NorvoRecoverEndsTest, RefusesABundleNameWithoutAKeyword) {
  expect_refused({"--edition", "Norvo Oak"}, "Norvo Oak");
  expect_refused({"--edition", "norvo spruce"}, "norvo spruce");
}

TEST_F(NorvoRecoverEndsTest, RefusesASearchTypeThatTheEditionDoesNotHave) {
  expect_refused({"--edition", "Norvo Rowan", "--mode", "video"}, "Norvo Rowan");
  expect_refused({"--edition", "Norvo Alder", "--mode", "video"}, "Norvo Alder");
  expect_refused({"--edition", "Norvo Spruce", "--mode", "audio"}, "Norvo Spruce");
}

TEST_F(NorvoRecoverEndsTest, RefusesAWrongCall) {
  expect_refused({"--nonsense"}, "--nonsense");
  EXPECT_EQ(run({}), 2);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("--device"));
}

TEST_F(NorvoRecoverEndsTest, ReportsADeviceThatIsNotThere) {
  fs::remove(image());
  EXPECT_EQ(search({"--json"}), 3);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(general_pass, json("{'event':'device_error','errno':2,'permission':false}"),
                  final_event("open_failed")));
  EXPECT_THAT(err_.str(), HasSubstr("No such file or directory"));
  EXPECT_FALSE(fs::exists(destination()));
}

TEST_F(NorvoRecoverEndsTest, PrintsTheErrorNumberOfADeviceThatIsNotThere) {
  fs::remove(image());
  EXPECT_EQ(search(), 3);
  EXPECT_EQ(out_.str(), "err no : 2\n");
}

TEST_F(NorvoRecoverEndsTest, ReportsADeviceThatIsNotThereWhateverTheRange) {
  fs::remove(image());
  EXPECT_EQ(search({"--start-sector", "x", "--end-sector", "y"}), 3);
}

TEST_F(NorvoRecoverEndsTest, ReportsAMissingPermission) {
  test::FakeMedium medium;
  medium.open_error = EACCES;
  opener_ = std::make_unique<test::FakeOpener>(medium);
  EXPECT_EQ(search({"--json"}), 3);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(general_pass, json("{'event':'device_error','errno':13,'permission':true}"),
                  final_event("open_failed")));
  EXPECT_THAT(err_.str(), HasSubstr("sudo"));
}

TEST_F(NorvoRecoverEndsTest, SaysThatResultsCannotBeSaved) {
  test::write_file(destination(), "a plain file");
  EXPECT_EQ(search({"--json"}), 1);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(
          general_pass,
          json(
              "{'event':'message','text':'\\nUnable to continue saving recovered data.\\n\\nEither "
              "Destination Drive is inaccessible or there is no free space available in drive to "
              "save recovered data.'}"),
          final_event("save_failed")));
  EXPECT_THAT(err_.str(), HasSubstr("Unable to continue saving recovered data."));
  EXPECT_EQ(test::read_file(destination()), "a plain file");
}

TEST_F(NorvoRecoverEndsTest, TellsOfTheClearingBeforeTheFileThatMadeItNecessary) {
  constexpr std::size_t limit = 2000;
  std::string card;
  for (std::size_t i = 0; i < limit + 2; ++i) card += jpeg_ + sector_of("", 'x');
  write_image(card);
  EXPECT_EQ(search({"--json", "--no-thorough"}), 0);
  const std::vector<std::string> lines = lines_of(out_.str());
  ASSERT_EQ(lines.size(), 1 + limit + 1 + 2 + 1);
  const std::string clear = json(
      "{'event':'clear','notice':'To maintain the speed of recovery, thumbnail preview window "
      "is cleared after every 2000 thumbnails.'}");
  EXPECT_THAT(lines[limit], HasSubstr("GND02000.JPG"));
  EXPECT_EQ(lines[limit + 1], clear);
  EXPECT_THAT(lines[limit + 2], HasSubstr("GND02001.JPG"));
  EXPECT_EQ(std::count(lines.begin(), lines.end(), clear), 1);
}

// What the program calls with its stop flag, for a stop from within the drive.
std::atomic<std::int32_t>* published = nullptr;
int times_published = 0;
int times_withdrawn = 0;

void record_flag(std::atomic<std::int32_t>* flag) {
  published = flag;
  ++(flag == nullptr ? times_withdrawn : times_published);
}

TEST_F(NorvoRecoverEndsTest, PublishesItsStopFlagForAsLongAsASearchRuns) {
  times_published = times_withdrawn = 0;
  publish_stop_flag_ = record_flag;
  EXPECT_EQ(search(), 0);
  EXPECT_EQ(times_published, 1);
  EXPECT_EQ(times_withdrawn, 1);
  EXPECT_EQ(published, nullptr);
}

TEST_F(NorvoRecoverEndsTest, AStopKeepsAndReportsWhatWasRecovered) {
  write_image(zero_sectors(10000));
  test::FakeMedium medium;
  medium.made_sectors = 10000;
  medium.sector = [this](std::uint64_t number, std::span<std::byte> sector) {
    if (number == 0) std::memcpy(sector.data(), jpeg_.data(), jpeg_.size());
    if (number == 5000) *published = 1;
  };
  opener_ = std::make_unique<test::FakeOpener>(medium);
  publish_stop_flag_ = record_flag;
  EXPECT_EQ(search({"--json"}), 130);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, file_event("GEN", jpeg_path_), final_event("stopped")));
  EXPECT_EQ(test::read_file(results() / jpeg_path_), jpeg_ + zero_sectors(2));

  EXPECT_EQ(search({"--quiet"}), 130);
  EXPECT_THAT(out_.str(), StartsWith("Stopped."));
  EXPECT_THAT(out_.str(), HasSubstr("Saved in " + results().string()));
}

using NorvoRecoverEndsDeathTest = NorvoRecoverEndsTest;

TEST_F(NorvoRecoverEndsDeathTest, ASignalStopsTheSearch) {
  write_image(zero_sectors(10000));
  test::FakeMedium medium;
  medium.made_sectors = 10000;
  medium.sector = [](std::uint64_t number, std::span<std::byte>) {
    if (number == 5000) raise(SIGTERM);
  };
  opener_ = std::make_unique<test::FakeOpener>(medium);
  publish_stop_flag_ = publish_stop_flag;
  EXPECT_EXIT(
      {
        install_stop_signals();
        std::_Exit(search({"--json"}));
      },
      testing::ExitedWithCode(130), "");
}

}  // namespace
}  // namespace norvo
