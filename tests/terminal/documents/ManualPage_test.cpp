#include "platform/terminal/documents/ManualPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "platform/terminal/EventWriter.h"

namespace norvo {
namespace {

using testing::HasSubstr;

// One line for every kind of event.
std::string every_event() {
  std::ostringstream stream;
  EventWriter events(stream);
  events.pass(Pass::general, u"label");
  events.file(Pass::thorough, "/path", u"name", u"uid");
  events.clear(u"notice");
  events.message(u"text");
  events.device_error(13, true);
  for (const SearchOutcome outcome : {SearchOutcome::completed, SearchOutcome::stopped,
                                      SearchOutcome::save_failed, SearchOutcome::open_failed}) {
    events.final(outcome);
  }
  events.drive(MyDataObject{}, "/dev/sdb");
  events.type(FileTypeEntry{});
  return stream.str();
}

std::string json_section() {
  const std::ifstream file(NORVO_MANUAL_PAGE_TEXT);
  std::ostringstream text;
  text << file.rdbuf();
  const std::string page = text.str();
  const std::size_t begin = page.find(".SS JSON");
  return page.substr(begin, page.find(".SH", begin) - begin);
}

TEST(ManualPage, ExplainsEveryEventWithItsMembers) {
  const std::string section = json_section();
  std::istringstream lines(every_event());
  std::size_t events = 0;
  for (std::string line; std::getline(lines, line); ++events) {
    const auto event = nlohmann::json::parse(line);
    EXPECT_THAT(section, HasSubstr(".TP\n.B " + event.at("event").get<std::string>() + "\n"));
    for (const auto& [member, value] : event.items()) {
      EXPECT_THAT(section, testing::ContainsRegex("\n\\.BR? " + member + "( [.,:])?\n")) << line;
    }
  }
  EXPECT_EQ(events, 11U);
}

TEST(ManualPage, NamesEveryOutcomeAndPass) {
  for (const char* word : {"completed", "stopped", "save_failed", "open_failed", "GEN", "THD"}) {
    EXPECT_THAT(json_section(), testing::ContainsRegex(std::string("\n\\.IR? ") + word)) << word;
  }
}

TEST(ManualPage, ShowsADescriptionAsItStands) {
  const std::array<Option, 1> options{
      {{"--odd-one", "X\\Y", ".so 'file' goes with --a-b \\n", nullptr}}};
  EXPECT_EQ(manual_page("a\n@OPTIONS@\nb\n", options),
            "a\n.TP\n\\fB\\-\\-odd\\-one\\fR \\fIX\\eY\\fR\n"
            "\\&.so 'file' goes with \\-\\-a\\-b \\en\nb\n");
}

TEST(ManualPage, PutsTheListsInThePlaceOfTheirNames) {
  const std::string page =
      manual_page("@EDITIONS@\n@EXIT_STATUSES@\n@SEARCH_TYPES@\n@VERSION@\n@RELEASE_DAY@\n", {});
  EXPECT_THAT(page, HasSubstr(".TP\n\\fBNorvo Rowan\\fR\nNorvo Recovery for Pictures: photo;"));
  EXPECT_THAT(page, HasSubstr(".TP\n\\fB130\\fR\nstopped"));
  EXPECT_THAT(page, HasSubstr("\nphoto, video, raw or audio\n"));
  EXPECT_EQ(page.find('@'), std::string::npos);
}

}  // namespace
}  // namespace norvo
