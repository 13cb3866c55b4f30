#include "platform/terminal/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace norvo {
namespace {

using testing::HasSubstr;

using Arguments = std::vector<const char*>;

CommandLine parsed(const Arguments& arguments) {
  const auto result = parse_command_line(arguments);
  const auto* error = std::get_if<UsageError>(&result);
  EXPECT_EQ(error, nullptr) << error->message;
  return error == nullptr ? std::get<CommandLine>(result) : CommandLine{};
}

// The message of a refused call; empty for an accepted one.
std::string refusal(const Arguments& arguments) {
  const auto result = parse_command_line(arguments);
  const auto* error = std::get_if<UsageError>(&result);
  return error == nullptr ? "" : error->message;
}

Arguments search_with(const Arguments& more) {
  Arguments arguments{"--device", "/dev/sdx", "--destination", "/out"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

TEST(CommandLine, NeedsOnlyDeviceAndDestinationAndHasDefaultsForTheRest) {
  const CommandLine line = parsed(search_with({}));
  EXPECT_EQ(line.action, CommandLine::Action::search);
  EXPECT_EQ(line.device, "/dev/sdx");
  EXPECT_EQ(line.destination, "/out");
  EXPECT_EQ(line.edition, u"Norvo Spruce");
  EXPECT_EQ(line.Recovery_MODE, 0);
  EXPECT_EQ(line.start_sector, std::nullopt);
  EXPECT_EQ(line.end_sector, std::nullopt);
  EXPECT_TRUE(line.thorough);
  EXPECT_TRUE(line.signatures.empty());
  EXPECT_FALSE(line.json);
  EXPECT_FALSE(line.quiet);
}

TEST(CommandLine, TakesEveryOption) {
  const CommandLine line = parsed(search_with(
      {"--edition", "My Birch", "--mode", "audio", "--start-sector", "10", "--end-sector", "20",
       "--no-thorough", "--signatures", "/sig", "--json", "--quiet"}));
  EXPECT_EQ(line.edition, u"My Birch");
  EXPECT_EQ(line.Recovery_MODE, 3);
  EXPECT_EQ(line.start_sector, Text(u"10"));
  EXPECT_EQ(line.end_sector, Text(u"20"));
  EXPECT_FALSE(line.thorough);
  EXPECT_EQ(line.signatures, "/sig");
  EXPECT_TRUE(line.json);
  EXPECT_TRUE(line.quiet);
}

TEST(CommandLine, TakesOptionsInAnyOrder) {
  const CommandLine line = parsed({"--json", "--destination", "/out", "--device", "/dev/sdx"});
  EXPECT_EQ(line.device, "/dev/sdx");
  EXPECT_EQ(line.destination, "/out");
  EXPECT_TRUE(line.json);
}

TEST(CommandLine, TakesAValueAfterAnEqualsSign) {
  const CommandLine line = parsed({"--device=/a=b", "--destination=/out", "--mode=video"});
  EXPECT_EQ(line.device, "/a=b");
  EXPECT_EQ(line.destination, "/out");
  EXPECT_EQ(line.Recovery_MODE, 1);
}

TEST(CommandLine, TheLastOfSeveralEqualOptionsCounts) {
  const CommandLine line =
      parsed(search_with({"--mode", "raw", "--mode", "video", "--device", "b"}));
  EXPECT_EQ(line.Recovery_MODE, 1);
  EXPECT_EQ(line.device, "b");
}

TEST(CommandLine, NumbersTheSearchTypes) {
  EXPECT_EQ(parsed(search_with({"--mode", "photo"})).Recovery_MODE, 0);
  EXPECT_EQ(parsed(search_with({"--mode", "video"})).Recovery_MODE, 1);
  EXPECT_EQ(parsed(search_with({"--mode", "raw"})).Recovery_MODE, 2);
  EXPECT_EQ(parsed(search_with({"--mode", "audio"})).Recovery_MODE, 3);
}

TEST(CommandLine, RefusesAnUnknownSearchType) {
  for (const char* mode : {"", "Photo", "PHOTO", "pictures", "0"}) {
    EXPECT_THAT(refusal(search_with({"--mode", mode})), HasSubstr("--mode")) << mode;
  }
}

TEST(CommandLine, RefusesUnknownOptionsByName) {
  for (const char* option : {"--devices", "-d", "image.img", "", "--Device", "--", "-"}) {
    EXPECT_THAT(refusal(search_with({option})), HasSubstr("\"" + std::string(option) + "\""));
  }
  EXPECT_THAT(refusal(search_with({"--unknown=x"})), HasSubstr("\"--unknown\""));
}

TEST(CommandLine, RefusesAnOptionWithoutItsValue) {
  for (const char* option : {"--device", "--destination", "--edition", "--mode", "--start-sector",
                             "--end-sector", "--signatures", "--check-signatures"}) {
    EXPECT_THAT(refusal(search_with({option})), HasSubstr(option)) << option;
  }
}

TEST(CommandLine, RefusesAValueForAnOptionWithoutOne) {
  for (const char* option :
       {"--json=1", "--quiet=", "--no-thorough=x", "--help=y", "--version=z"}) {
    EXPECT_THAT(refusal(search_with({option})), HasSubstr("no value")) << option;
  }
}

TEST(CommandLine, RefusesEmptyPaths) {
  for (const char* option :
       {"--device=", "--destination=", "--signatures=", "--check-signatures="}) {
    const std::string name(option, std::string(option).size() - 1);
    EXPECT_THAT(refusal(search_with({option})), HasSubstr(name)) << option;
  }
}

TEST(CommandLine, RefusesASearchWithoutDeviceOrDestination) {
  EXPECT_THAT(refusal({"--destination", "/out"}), HasSubstr("--device"));
  EXPECT_THAT(refusal({"--device", "/dev/sdx"}), HasSubstr("--destination"));
  EXPECT_THAT(refusal({}), HasSubstr("--device"));
}

TEST(CommandLine, RefusesHalfARange) {
  const std::string start = refusal(search_with({"--start-sector", "1"}));
  const std::string end = refusal(search_with({"--end-sector", "1"}));
  EXPECT_THAT(start, HasSubstr("--end-sector"));
  EXPECT_EQ(start, end);
}

TEST(CommandLine, LeavesTheRangeAsItWasTyped) {
  const CommandLine line = parsed(search_with({"--start-sector", " -5", "--end-sector", ""}));
  EXPECT_EQ(line.start_sector, Text(u" -5"));
  EXPECT_EQ(line.end_sector, Text(u""));
}

TEST(CommandLine, RefusesAnEditionThatCouldLeadOutOfTheDestination) {
  for (const char* edition : {"../Spruce", "/Spruce", "Spruce/", "\xFFSpruce"}) {
    EXPECT_THAT(refusal(search_with({"--edition", edition})), HasSubstr("--edition")) << edition;
  }
}

TEST(CommandLine, TakesAnEditionInUtf8) {
  EXPECT_EQ(parsed(search_with({"--edition", "\xC3\x84 Spruce"})).edition, u"\u00C4 Spruce");
}

TEST(CommandLine, KeepsPathsThatAreNoUtf8) {
  const CommandLine line = parsed({"--device", "/dev/\xFF", "--destination", "/\xC3(/out"});
  EXPECT_EQ(line.device.native(), "/dev/\xFF");
  EXPECT_EQ(line.destination.native(), "/\xC3(/out");
}

TEST(CommandLine, OtherActionsNeedNoDevice) {
  EXPECT_EQ(parsed({"--help"}).action, CommandLine::Action::help);
  EXPECT_EQ(parsed({"--version"}).action, CommandLine::Action::version);
  const CommandLine check = parsed({"--check-signatures", "/sig"});
  EXPECT_EQ(check.action, CommandLine::Action::check_signatures);
  EXPECT_EQ(check.checked_signatures, "/sig");
}

TEST(CommandLine, TheHelpNamesEveryOptionAndExitStatus) {
  const std::string help = help_text();
  for (const char* word :
       {"--device PATH", "--destination DIR", "--edition NAME", "--mode", "--start-sector N",
        "--end-sector N", "--no-thorough", "--signatures DIR", "--json", "--check-signatures DIR",
        "--quiet", "--help", "--version", "0 ", "1 ", "2 ", "3 ", "130"}) {
    EXPECT_THAT(help, HasSubstr(word));
  }
}

TEST(CommandLine, TheHelpFitsATerminal) {
  std::size_t width = 0;
  for (const char c : help_text()) {
    width = c == '\n' ? 0 : width + 1;
    ASSERT_LE(width, 100U);
  }
}

}  // namespace
}  // namespace norvo
