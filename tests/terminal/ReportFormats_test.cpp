// The pieces of reports: byte runs, names from strangers, DFXML and CSV.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "platform/terminal/CsvFormat.h"
#include "platform/terminal/DfxmlFormat.h"
#include "platform/terminal/ReportFacts.h"
#include "platform/terminal/ReportedFile.h"
#include "platform/terminal/Sha256.h"

namespace norvo {
namespace {

using Kind = SectorOrigin::Kind;
using testing::ElementsAre;
using testing::HasSubstr;

const std::vector<SourceRun> read_and_unread{{.origin = {Kind::read, 7}, .sectors = 3},
                                             {.origin = {Kind::repeated, 9}, .sectors = 2},
                                             {.origin = {Kind::unknown, 0}, .sectors = 1},
                                             {.origin = {Kind::read, 11}, .sectors = 1}};

ReportedFile file_with_every_run() {
  return {.filename = "Results/a.JPG",
          .size = 3584,
          .pass = Pass::thorough,
          .evidence = FileEvidence{.sha256 = "abc", .runs = byte_runs(read_and_unread)}};
}

TEST(ByteRuns, LieOneBehindTheOtherInTheFile) {
  EXPECT_THAT(byte_runs(read_and_unread),
              ElementsAre(ByteRun{.offset = 0, .length = 1536, .img_offset = 3584},
                          ByteRun{.offset = 1536, .length = 1024, .repeats = 4608},
                          ByteRun{.offset = 2560, .length = 512},
                          ByteRun{.offset = 3072, .length = 512, .img_offset = 5632}));
}

TEST(ByteRuns, GoBeyondTwoTerabytes) {
  EXPECT_THAT(byte_runs({{.origin = {Kind::read, 1ULL << 40}, .sectors = 1ULL << 33}}),
              ElementsAre(ByteRun{.offset = 0, .length = 1ULL << 42, .img_offset = 1ULL << 49}));
}

TEST(Reportable, ReplacesWhatXmlCannotHold) {
  EXPECT_EQ(reportable("a\x01\x1B\rb"),
            "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(reportable("\xEF\xBF\xBE\xEF\xBF\xBF"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(reportable("\xFF"), "\xEF\xBF\xBD");
  EXPECT_EQ(reportable("a\tb\nc \xC3\xA9 \xF0\x9F\x93\xB7"), "a\tb\nc \xC3\xA9 \xF0\x9F\x93\xB7");
}

TEST(Dfxml, TellsRunsThatWereReadAndThoseThatWereNot) {
  EXPECT_EQ(DfxmlFormat({}).file(file_with_every_run()),
            "  <fileobject>\n"
            "    <filename>Results/a.JPG</filename>\n"
            "    <filesize>3584</filesize>\n"
            "    <byte_runs>\n"
            "      <byte_run offset=\"0\" img_offset=\"3584\" len=\"1536\" />\n"
            "      <byte_run offset=\"1536\" len=\"1024\" />\n"
            "      <byte_run offset=\"2560\" len=\"512\" />\n"
            "      <byte_run offset=\"3072\" img_offset=\"5632\" len=\"512\" />\n"
            "    </byte_runs>\n"
            "    <hashdigest type=\"sha256\">abc</hashdigest>\n"
            "    <norvo:search>Thorough</norvo:search>\n"
            "    <norvo:unread offset=\"1536\" len=\"1024\" repeats=\"4608\" />\n"
            "    <norvo:unread offset=\"2560\" len=\"512\" />\n"
            "  </fileobject>\n");
}

TEST(Dfxml, AFileThatNobodySawHasNoRunsAndNoDigest) {
  EXPECT_EQ(DfxmlFormat({}).file({.filename = "a", .size = 5}),
            "  <fileobject>\n"
            "    <filename>a</filename>\n"
            "    <filesize>5</filesize>\n"
            "    <norvo:search>General</norvo:search>\n"
            "  </fileobject>\n");
}

TEST(Dfxml, NamesAreTextAndNothingElse) {
  const std::string piece = DfxmlFormat({}).file({.filename = "</filename>&<b a=\"\x02'"});
  EXPECT_THAT(piece,
              HasSubstr("<filename>&lt;/filename&gt;&amp;&lt;b a=\"\xEF\xBF\xBD'</filename>"));
}

TEST(Dfxml, FactsAreTextAndNothingElse) {
  ReportFacts facts;
  facts.command_line = "a <b> & \x1F";
  facts.image_filename = "/d/\x07<";
  const DfxmlFormat format(facts);
  EXPECT_THAT(format.beginning(),
              HasSubstr("<command_line>a &lt;b&gt; &amp; \xEF\xBF\xBD</command_line>"));
  EXPECT_THAT(format.beginning(),
              HasSubstr("<image_filename>/d/\xEF\xBF\xBD&lt;</image_filename>"));
}

TEST(Csv, TellsTheSameAsTheXml) {
  EXPECT_EQ(CsvFormat().beginning(), "filename,filesize,byte_runs,sha256,search,unread\r\n");
  EXPECT_EQ(CsvFormat().file(file_with_every_run()),
            "Results/a.JPG,3584,0:3584:1536 1536::1024 2560::512 3072:5632:512,abc,Thorough,"
            "1536:4608:1024 2560::512\r\n");
  EXPECT_EQ(CsvFormat().ending(), "");
}

TEST(Csv, QuotesWhatWouldEndACell) {
  EXPECT_EQ(csv_cell("plain text"), "plain text");
  EXPECT_EQ(csv_cell("a,b"), "\"a,b\"");
  EXPECT_EQ(csv_cell("a\"b"), "\"a\"\"b\"");
  EXPECT_EQ(csv_cell("a\nb"), "\"a\nb\"");
  EXPECT_EQ(csv_cell("a\rb"), "\"a\rb\"");
}

TEST(Csv, NoCellEndsEarlyInProgramsThatSplitElsewhere) {
  EXPECT_EQ(csv_cell("a;=1+1"), "\"a;=1+1\"");
  EXPECT_EQ(csv_cell("a\t=1+1"), "\"a\t=1+1\"");
}

TEST(Csv, NoCellIsAFormula) {
  for (const char first : std::string("=+-@\t'")) {
    const std::string text = std::string(1, first) + "1";
    EXPECT_EQ(csv_cell(text), first == '\t' ? "\"'" + text + "\"" : "'" + text);
  }
  EXPECT_EQ(csv_cell("=a,b"), "\"'=a,b\"");
  EXPECT_EQ(csv_cell("a=1"), "a=1");
}

TEST(Sha256, IsThatOfThePublishedExamples) {
  EXPECT_EQ(Sha256().digits(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  Sha256 digest;
  for (const std::string part : {"a", "", "bc"}) digest.add(std::as_bytes(std::span(part)));
  EXPECT_EQ(digest.digits(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(ReportFacts, TheCommandCanBeGivenToAShell) {
  const std::vector<const char*> arguments{"--device", "/dev/sdb", "", "My card", "it's", "$(x)"};
  EXPECT_EQ(shell_command(arguments),
            "norvo-recover --device /dev/sdb '' 'My card' 'it'\\''s' '$(x)'");
}

}  // namespace
}  // namespace norvo
