#include "platform/terminal/SignatureReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* sound_record =
    "E : .jpg\nS : 1536\nHeader : FFD8FF\nP : 1\nK :\nD : JPEG image\n";

class SignatureReportTest : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& content) const {
    test::write_file(folder_.path() / name, content);
  }
  std::string path_of(const std::string& name) const { return (folder_.path() / name).string(); }
  int report() { return report_signature_faults(folder_.path(), out_, err_); }

  test::TemporaryFolder folder_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(SignatureReportTest, CountsTheFilesWhenAllIsWell) {
  write("a.dll", sound_record);
  EXPECT_EQ(report(), 0);
  EXPECT_EQ(out_.str(), "1 file, 0 faults\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(SignatureReportTest, NamesFileLineAndFaultInAlphabeticalOrderOfTheFiles) {
  write("b.dll", std::string("\n\n") + "E : .png\n");
  write("a.dll", std::string(sound_record) + "E : .png\n");
  write("c.dll", sound_record);
  EXPECT_EQ(report(), 1);
  std::istringstream lines(out_.str());
  std::string line;
  std::getline(lines, line);
  EXPECT_THAT(line, StartsWith(path_of("a.dll") + ":7: "));
  EXPECT_THAT(line, HasSubstr("incomplete"));
  std::getline(lines, line);
  EXPECT_THAT(line, StartsWith(path_of("b.dll") + ":3: "));
  std::getline(lines, line);
  EXPECT_EQ(line, "3 files, 2 faults");
  EXPECT_FALSE(std::getline(lines, line));
  EXPECT_EQ(err_.str(), "");
}

TEST_F(SignatureReportTest, NamesAShortHeaderValue) {
  write("a.dll", "E : .jpg\nS : 1\nHeader :\nP : 1\nK :\nD : x\n");
  EXPECT_EQ(report(), 1);
  EXPECT_THAT(out_.str(), StartsWith(path_of("a.dll") + ":3: "));
  EXPECT_THAT(out_.str(), testing::EndsWith("1 file, 1 fault\n"));
}

TEST_F(SignatureReportTest, LooksAtSignatureFilesOnly) {
  write("a.dll", sound_record);
  write("notes.txt", "a : b\n");
  write("a.dll.old", "a : b\n");
  EXPECT_EQ(report(), 0);
  EXPECT_EQ(out_.str(), "1 file, 0 faults\n");
}

TEST_F(SignatureReportTest, NamesAFileThatCannotBeRead) {
  std::filesystem::create_directory(folder_.path() / "a.dll");
  EXPECT_EQ(report(), 1);
  EXPECT_THAT(out_.str(), StartsWith(path_of("a.dll") + ": "));
}

TEST_F(SignatureReportTest, SaysThatThereIsNoSignatureFile) {
  EXPECT_EQ(report(), 2);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr(folder_.path().string()));
}

TEST_F(SignatureReportTest, SaysThatTheFolderIsNotThere) {
  EXPECT_EQ(report_signature_faults(folder_.path() / "nowhere", out_, err_), 2);
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(err_.str(), HasSubstr("nowhere"));
}

}  // namespace
}  // namespace norvo
