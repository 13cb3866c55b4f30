#include "platform/terminal/EventWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>

#include "terminal/QuotedJson.h"

namespace norvo {
namespace {

using test::json;

class EventWriterTest : public testing::Test {
 protected:
  std::ostringstream stream_;
  EventWriter writer_{stream_};
};

TEST_F(EventWriterTest, WritesAPass) {
  writer_.pass(Pass::general, u"( one )");
  writer_.pass(Pass::thorough, u"( two )");
  EXPECT_EQ(stream_.str(), json("{'event':'pass','pass':'GEN','label':'( one )'}\n"
                                "{'event':'pass','pass':'THD','label':'( two )'}\n"));
}

TEST_F(EventWriterTest, WritesAFile) {
  writer_.file(Pass::general, "/out/JPG/GND00001.JPG", u"GND00001.JPG", u"GND00007.JPG");
  writer_.file(Pass::thorough, "/out/x", u"THD00001.PNG", u"THD00002.PNG");
  EXPECT_EQ(stream_.str(), json("{'event':'file','pass':'GEN','path':'/out/JPG/GND00001.JPG',"
                                "'name':'GND00001.JPG','uid':'GND00007.JPG'}\n"
                                "{'event':'file','pass':'THD','path':'/out/x',"
                                "'name':'THD00001.PNG','uid':'THD00002.PNG'}\n"));
}

TEST_F(EventWriterTest, WritesAnEmptyPath) {
  writer_.file(Pass::general, "", u"a", u"b");
  EXPECT_EQ(stream_.str(), json("{'event':'file','pass':'GEN','path':'','name':'a','uid':'b'}\n"));
}

TEST_F(EventWriterTest, WritesAClearing) {
  writer_.clear(u"cleared");
  EXPECT_EQ(stream_.str(), json("{'event':'clear','notice':'cleared'}\n"));
}

TEST_F(EventWriterTest, WritesAMessageOnOneLine) {
  writer_.message(u"\nUnable to continue.\n\nEither");
  EXPECT_EQ(stream_.str(),
            json("{'event':'message','text':'\\nUnable to continue.\\n\\nEither'}\n"));
}

TEST_F(EventWriterTest, WritesADeviceError) {
  writer_.device_error(13, true);
  writer_.device_error(2, false);
  EXPECT_EQ(stream_.str(), json("{'event':'device_error','errno':13,'permission':true}\n"
                                "{'event':'device_error','errno':2,'permission':false}\n"));
}

TEST_F(EventWriterTest, WritesTheEnd) {
  writer_.final(SearchOutcome::completed);
  writer_.final(SearchOutcome::stopped);
  writer_.final(SearchOutcome::save_failed);
  writer_.final(SearchOutcome::open_failed);
  EXPECT_EQ(stream_.str(), json("{'event':'final','outcome':'completed'}\n"
                                "{'event':'final','outcome':'stopped'}\n"
                                "{'event':'final','outcome':'save_failed'}\n"
                                "{'event':'final','outcome':'open_failed'}\n"));
}

TEST_F(EventWriterTest, WritesATypeOfTheCheckList) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"MOV", true, u"a \"movie\"", u"");
  list.createExtensionListTableRecord(u"TS", true, u"", u"YES");
  for (const FileTypeEntry& row : list.rows()) writer_.type(row);
  EXPECT_EQ(stream_.str(), json("{'event':'type','extension':'MOV','thorough':false,"
                                "'description':'a \\'movie\\''}\n"
                                "{'event':'type','extension':'TS','thorough':true,"
                                "'description':''}\n"));
}

TEST_F(EventWriterTest, WritesATypeOfAStrangersSignatureFileInAscii) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"\u009BX", true, u"\u202Ecod \u00E4", u"");
  writer_.type(list.rows().at(0));
  EXPECT_EQ(stream_.str(), json("{'event':'type','extension':'\\u009bX','thorough':false,"
                                "'description':'\\u202ecod \\u00e4'}\n"));
}

TEST_F(EventWriterTest, EscapesWhatJsonDoesNotAllowInATextAndNothingElse) {
  writer_.message(u"\"\\/\t\u0001\u00E4\U0001F600");
  EXPECT_EQ(stream_.str(), json("{'event':'message',"
                                "'text':'\\\"\\\\/\\t\\u0001\xC3\xA4\xF0\x9F\x98\x80'}\n"));
}

TEST_F(EventWriterTest, ShowsAReplacementForAPathThatIsNoUtf8) {
  writer_.file(Pass::general, "/out/\xFF/a", u"a", u"a");
  writer_.file(Pass::general, "/out/\xC3(", u"a", u"a");
  EXPECT_EQ(
      stream_.str(),
      json("{'event':'file','pass':'GEN','path':'/out/\xEF\xBF\xBD/a','name':'a','uid':'a'}\n"
           "{'event':'file','pass':'GEN','path':'/out/\xEF\xBF\xBD(','name':'a','uid':'a'}\n"));
}

TEST_F(EventWriterTest, ShowsAReplacementForAnUnpairedSurrogate) {
  writer_.file(Pass::general, "/a", Text(1, char16_t{0xD800}), u"a");
  EXPECT_EQ(stream_.str(),
            json("{'event':'file','pass':'GEN','path':'/a','name':'\xEF\xBF\xBD','uid':'a'}\n"));
}

TEST_F(EventWriterTest, LinesOfSeveralThreadsNeverMix) {
  constexpr int lines_each = 500;
  const auto write = [this](TextView text) {
    for (int i = 0; i < lines_each; ++i) writer_.message(text);
  };
  std::thread other([&write] { write(u"aaaaaaaaaaaaaaaaaaaaaaaa"); });
  write(u"bbbbbbbbbbbbbbbbbbbbbbbb");
  other.join();

  const std::string line_a = json("{'event':'message','text':'aaaaaaaaaaaaaaaaaaaaaaaa'}");
  const std::string line_b = json("{'event':'message','text':'bbbbbbbbbbbbbbbbbbbbbbbb'}");
  int count = 0;
  std::istringstream lines(stream_.str());
  for (std::string line; std::getline(lines, line); ++count) {
    EXPECT_TRUE(line == line_a || line == line_b) << line;
  }
  EXPECT_EQ(count, 2 * lines_each);
}

}  // namespace
}  // namespace norvo
