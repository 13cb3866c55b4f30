#include "platform/LogLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <vector>

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LogLinesTest : public testing::Test {
 protected:
  void finish() { buffer_.reset(); }
  std::string line_of(const std::string& written) {
    lines_.clear();
    stream_ << written << '\n';
    return lines_.size() == 1 ? lines_.front() : "no line or several";
  }

  std::vector<std::string> lines_;
  std::optional<LogLines> buffer_{std::in_place,
                                  [this](const std::string& line) { lines_.push_back(line); }};
  std::ostream stream_{&*buffer_};
};

TEST_F(LogLinesTest, ALineIsHandedOverWhenItsEndIsWritten) {
  stream_ << "one " << 1 << std::flush;
  EXPECT_THAT(lines_, IsEmpty());
  stream_ << "\ntwo\nth";
  EXPECT_THAT(lines_, ElementsAre("one 1", "two"));
  EXPECT_TRUE(stream_);
}

TEST_F(LogLinesTest, WhatHasNoEndIsHandedOverAtLast) {
  stream_ << "one\ntwo";
  finish();
  EXPECT_THAT(lines_, ElementsAre("one", "two"));
}

TEST_F(LogLinesTest, EmptyLinesAreDropped) {
  stream_ << "\none\n\n\ntwo\n";
  finish();
  EXPECT_THAT(lines_, ElementsAre("one", "two"));
}

TEST_F(LogLinesTest, WhatSteersADisplayIsReplaced) {
  EXPECT_EQ(line_of("a\x1B[2J\tb\r\x7F"), "a\uFFFD[2J\uFFFDb\uFFFD\uFFFD");
  EXPECT_EQ(line_of("\u009B2J\u202Egpj"), "\uFFFD2J\uFFFDgpj");
  EXPECT_EQ(line_of(std::string("a\0b", 3)), "a\uFFFDb");
  EXPECT_EQ(line_of("\xFF\xC3("), "\uFFFD\uFFFD(");
  EXPECT_EQ(line_of("Gr\u00FC\u00DFe \U0001F4F7"), "Gr\u00FC\u00DFe \U0001F4F7");
}

TEST_F(LogLinesTest, ALongLineIsCut) {
  const std::string longest(LogLines::longest_line, 'x');
  EXPECT_EQ(line_of(longest), longest);
  EXPECT_EQ(line_of(longest + "y"), longest + "...");
  EXPECT_EQ(line_of(longest + std::string(1 << 20, 'y')), longest + "...");
  EXPECT_EQ(line_of("short"), "short");
}

TEST_F(LogLinesTest, ACharacterThatDoesNotFitIsLeftOutWhole) {
  for (std::size_t fitting : {1U, 2U, 3U}) {
    const std::string before(LogLines::longest_line - fitting, 'x');
    EXPECT_EQ(line_of(before + "\U0001F4F7z"), before + "...") << fitting;
  }
  const std::string before(LogLines::longest_line - 4, 'x');
  EXPECT_EQ(line_of(before + "\U0001F4F7"), before + "\U0001F4F7");
  EXPECT_EQ(line_of(before + "\U0001F4F7z"), before + "\U0001F4F7...");
  EXPECT_EQ(line_of(std::string(2 * LogLines::longest_line, '\x80')), "...");
}

}  // namespace
}  // namespace norvo
