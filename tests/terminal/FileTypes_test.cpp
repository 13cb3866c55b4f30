// Searches for videos, raw files and audio by the program, its --types and its --list-types.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/terminal/CommandLine.h"
#include "support/FakeDevice.h"
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
using testing::ElementsAre;
using testing::HasSubstr;

std::string record(const std::string& extension, const std::string& header,
                   const std::string& description) {
  return "E : ." + extension + "\nS : 9000\nHeader : " + header +
         "\nP : 1\nK :\nD : " + description + "\n";
}

class FileTypesTest : public test::ProgramOnImage {
 protected:
  FileTypesTest() {
    write_signatures("SPRVideo", record("mov", "4D4F5631", "a movie") +
                                     record("avi", "52494646", "interleaved"));
    write_signatures("SPRVideoAdv", record("ts", "47545331", "a stream") +
                                        record("avi", "52494646", "other words"));
    write_image(avi_ + sector_of("", 'a') + mov_ + ts_ + sector_of("", 'b'));
  }

  void write_signatures(const std::string& name, const std::string& content) const {
    test::write_file(shipped() / (name + ".dll"), content);
  }

  int search_videos(std::vector<std::string> options) {
    options.insert(options.end(), {"--mode", "video"});
    return search(options);
  }

  fs::path found(const std::string& path) const {
    return destination() / "Norvo Spruce Results/Video Search" / path;
  }

  std::string video_event(const std::string& pass, const std::string& path) const {
    const std::string name = fs::path(path).filename().string();
    return json("{'event':'file','pass':'" + pass + "','path':'" + found(path).string() +
                "','name':'" + name + "','uid':'" + name + "'}");
  }

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

  const std::string avi_ = sector_of("RIFF", '1');
  const std::string mov_ = sector_of("MOV1", '2');
  const std::string ts_ = sector_of("GTS1", '3');
  const std::string avi_path_ = "General Recovery Results/AVI/AVI00001.AVI";
  const std::string mov_path_ = "General Recovery Results/MOV/MOV00001.MOV";
  const std::string avi_again_ = "Omitted (recovered by Thorough Scan)/AVI/AVI00002.AVI";
  const std::string ts_path_ = "Omitted (recovered by Thorough Scan)/TS/TS00001.TS";
};

TEST_F(FileTypesTest, AVideoSearchWritesAnEventForEachFileOfBothPasses) {
  EXPECT_EQ(search_videos({"--json"}), 0);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(general_pass, video_event("GEN", avi_path_), video_event("GEN", mov_path_),
                  thorough_pass, video_event("THD", avi_again_), video_event("THD", ts_path_),
                  final_event("completed")));
  EXPECT_EQ(test::read_file(found(avi_path_)), avi_ + sector_of("", 'a') + mov_);
  EXPECT_EQ(test::read_file(found(ts_path_)), ts_ + sector_of("", 'b') + sector_of("", 'b'));
}

TEST_F(FileTypesTest, AVideoSearchSumsItsFilesUpAndTellsTheirFolder) {
  EXPECT_EQ(search_videos({"--quiet", "--no-thorough"}), 0);
  EXPECT_EQ(out_.str(),
            "  Search     Type             Files      Size\n"
            "  General    AVI                  1    1.5 KB\n"
            "  General    MOV                  1    2.0 KB\n"
            "  Total                           2    3.6 KB\n"
            "Saved in " +
                found("").parent_path().string() + "\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(FileTypesTest, OnlyTheNamedTypesAreSearchedInBothPasses) {
  EXPECT_EQ(search_videos({"--json", "--types", "AVI"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, video_event("GEN", avi_path_), thorough_pass,
                          video_event("THD", avi_again_), final_event("completed")));
  EXPECT_EQ(search_videos({"--json", "--types", "TS,MOV"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, video_event("GEN", mov_path_), thorough_pass,
                          video_event("THD", ts_path_), final_event("completed")));
}

TEST_F(FileTypesTest, RefusesATypeThatIsNotListed) {
  expect_refused({"--mode", "video", "--types", "AVI,MKV"}, "MKV");
  // Exactly as it is listed: in its own letters, and without blanks.
  expect_refused({"--mode", "video", "--types", "avi"}, "\"avi\"");
  expect_refused({"--mode", "video", "--types", "AVI, MOV"}, "\" MOV\"");
  expect_refused({"--mode", "video", "--types", "JPG"}, "JPG");
}

TEST_F(FileTypesTest, RefusesASearchWithNothingTicked) {
  for (const char* types : {"", ",", ",,"}) {
    expect_refused({"--mode", "video", "--types", types},
                   "Please select atleast one extension type.\n");
  }
}

TEST_F(FileTypesTest, RefusesASearchWhoseSignatureFilesAreMissing) {
  expect_refused({"--mode", "raw"}, "Please select atleast one extension type.\n");
}

TEST_F(FileTypesTest, RefusesTypesForPhotos) {
  expect_refused({"--types", "JPG"}, "--types");
  expect_refused({"--types", "JPG", "--mode", "photo"}, "--types");
}

TEST_F(FileTypesTest, RefusesSearchTypesThatTheEditionDoesNotHave) {
  for (const auto& [edition, mode] : {std::pair{"Norvo Alder", "video"},
                                      {"Norvo Alder", "audio"},
                                      {"Norvo Cedar", "audio"},
                                      {"Norvo Larch", "audio"},
                                      {"Norvo Maple", "audio"},
                                      {"Norvo Rowan", "video"},
                                      {"Norvo Rowan", "raw"},
                                      {"Norvo Rowan", "audio"},
                                      {"Norvo Spruce", "audio"}}) {
    expect_refused({"--edition", edition, "--mode", mode}, edition);
    EXPECT_EQ(run({"--list-types", "--edition", edition, "--mode", mode}), 2);
    EXPECT_EQ(out_.str(), "");
  }
}

TEST_F(FileTypesTest, AnEditionWithAudioFindsIt) {
  write_signatures("BIRAudio", record("mp3", "52494646", "sound"));
  EXPECT_EQ(search({"--json", "--edition", "Norvo Birch", "--mode", "audio"}), 0);
  EXPECT_TRUE(fs::exists(destination() / "Norvo Birch Results/Audio File Search" /
                         "General Recovery Results/MP3/MP300001.MP3"));
}

TEST_F(FileTypesTest, ADeviceThatDoesNotOpenEndsWithItsStatus) {
  test::FakeMedium medium;
  medium.open_error = EACCES;
  opener_ = std::make_unique<test::FakeOpener>(medium);
  EXPECT_EQ(search_videos({"--json"}), 3);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(general_pass, json("{'event':'device_error','errno':13,'permission':true}"),
                  final_event("open_failed")));
  EXPECT_FALSE(fs::exists(destination()));
}

TEST_F(FileTypesTest, ResultsThatCannotBeSavedEndWithTheirStatus) {
  test::write_file(destination(), "a plain file");
  EXPECT_EQ(search_videos({"--json"}), 1);
  EXPECT_EQ(lines_of(out_.str()).size(), 3U);
  EXPECT_THAT(out_.str(), HasSubstr("Unable to continue saving recovered data."));
  EXPECT_EQ(lines_of(out_.str()).back(), final_event("save_failed"));
}

TEST_F(FileTypesTest, TellsOfTheClearingOnceTheFileThatFilledTheWindowWasReported) {
  std::string card;
  for (int i = 0; i < 2002; ++i) card += mov_;
  write_image(card);
  EXPECT_EQ(search_videos({"--json", "--no-thorough"}), 0);
  const std::vector<std::string> lines = lines_of(out_.str());
  ASSERT_EQ(lines.size(), 1U + 2002U + 1U + 1U);
  EXPECT_THAT(lines[2000], HasSubstr("MOV02000.MOV"));
  EXPECT_EQ(lines[2001], json("{'event':'clear','notice':'To maintain the speed of recovery, file "
                              "window is cleared after every 2000 files.'}"));
  EXPECT_THAT(lines[2002], HasSubstr("MOV02001.MOV"));
}

TEST_F(FileTypesTest, ListsTheTypesOfASearchSortedAndMarked) {
  EXPECT_EQ(run({"--list-types", "--mode", "video"}), 0);
  EXPECT_EQ(out_.str(),
            "Extension  Thoro  Description\n"
            "AVI               interleaved\n"
            "MOV               a movie\n"
            "TS         YES    a stream\n");
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(run({"--mode", "raw", "--list-types"}), 0);
  EXPECT_EQ(out_.str(), "Extension  Thoro  Description\n");
}

TEST_F(FileTypesTest, ListsTheTypesAsEventsWithJson) {
  EXPECT_EQ(run({"--list-types", "--mode", "video", "--json"}), 0);
  const auto event = [](const std::string& extension, const std::string& thorough,
                        const std::string& description) {
    return json("{'event':'type','extension':'" + extension + "','thorough':" + thorough +
                ",'description':'" + description + "'}");
  };
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(event("AVI", "false", "interleaved"), event("MOV", "false", "a movie"),
                          event("TS", "true", "a stream")));
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(run({"--mode", "raw", "--list-types", "--json"}), 0);
  EXPECT_EQ(out_.str(), "");
}

TEST_F(FileTypesTest, ListsTheTypesOfOtherSignatureFiles) {
  const fs::path other = folder_.path() / "other";
  fs::create_directory(other);
  test::write_file(other / "SPRVideo.dll", record("mkv", "1A45DFA3", "\x1B[2Jred\x7F"));
  EXPECT_EQ(run({"--list-types", "--mode", "video", "--signatures", other.string()}), 0);
  EXPECT_EQ(out_.str(),
            "Extension  Thoro  Description\n"
            "MKV               \xEF\xBF\xBD[2Jred\xEF\xBF\xBD\n");
}

TEST_F(FileTypesTest, ListsNoTypesOfABundleNameWithoutAKeyword) {
  EXPECT_EQ(run({"--list-types", "--mode", "video", "--edition", "Norvo Oak"}), 2);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("Norvo Oak"));
}

// The types of a call with --types.
std::vector<Text> typed(const char* types) {
  const std::vector<const char*> arguments{"--device", "d",     "--destination", "o",
                                           "--mode",   "audio", "--types",       types};
  const auto result = parse_command_line(arguments);
  const auto* line = std::get_if<CommandLine>(&result);
  EXPECT_TRUE(line != nullptr && line->types.has_value());
  return line == nullptr ? std::vector<Text>{} : line->types.value_or(std::vector<Text>{});
}

TEST(CommandLineTypes, AreSeparatedByCommasAndKeptAsTheyAre) {
  using Types = std::vector<Text>;
  EXPECT_EQ(typed("MP3"), (Types{u"MP3"}));
  EXPECT_EQ(typed("MP3,wav,TAR.GZ"), (Types{u"MP3", u"wav", u"TAR.GZ"}));
  EXPECT_EQ(typed(" MP3 ,a b"), (Types{u" MP3 ", u"a b"}));
  EXPECT_EQ(typed(",MP3,,WAV,"), (Types{u"MP3", u"WAV"}));
  EXPECT_EQ(typed(""), Types{});
  EXPECT_EQ(typed("\xC3\x84"), (Types{u"\u00C4"}));
}

TEST(CommandLineTypes, AreAllTypesWhenTheyAreNotNamed) {
  const std::vector<const char*> arguments{"--device", "d", "--destination", "o"};
  EXPECT_EQ(std::get<CommandLine>(parse_command_line(arguments)).types, std::nullopt);
}

TEST(CommandLineTypes, NeedAValue) {
  const std::vector<const char*> arguments{"--device", "d", "--destination", "o", "--types"};
  const auto result = parse_command_line(arguments);
  ASSERT_TRUE(std::holds_alternative<UsageError>(result));
  EXPECT_THAT(std::get<UsageError>(result).message, HasSubstr("--types"));
}

TEST(CommandLineTypes, AreListedWithoutDeviceAndDestination) {
  const std::vector<const char*> arguments{"--list-types"};
  const auto result = parse_command_line(arguments);
  ASSERT_TRUE(std::holds_alternative<CommandLine>(result));
  EXPECT_EQ(std::get<CommandLine>(result).action, CommandLine::Action::list_types);
  EXPECT_THAT(help_text(), HasSubstr("--list-types"));
  EXPECT_THAT(help_text(), HasSubstr("--types A,B,..."));
}

}  // namespace
}  // namespace norvo
