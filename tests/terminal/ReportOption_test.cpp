// The program with --report.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/FileContent.h"
#include "support/FileSizeLimit.h"
#include "terminal/ProgramOnImage.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using test::sector_of;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ReportOption : public test::ProgramOnImage {
 protected:
  int search_with_report(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"--quiet", "--report", report().string()});
    return search(options);
  }
  fs::path report() const { return folder_.path() / "told" / name_; }
  std::string told() const { return test::read_file(report()); }

  std::string name_ = "report.xml";
};

constexpr const char* csv_names = "filename,filesize,byte_runs,sha256,search,unread\r\n";

TEST_F(ReportOption, TellsTheFilesOfBothPassesInTheirOrder) {
  name_ = "report.csv";
  EXPECT_EQ(search_with_report(), 0);
  EXPECT_EQ(err_.str(), "");
  const std::string root = "Norvo Spruce Results/Photo Search/";
  EXPECT_THAT(told(), StartsWith(csv_names + root + jpeg_path_.string() + ",1536,0:512:1536,"));
  EXPECT_THAT(told(), HasSubstr(",General,\r\n" + root + png_path_.string() +
                                ",2048,0:2560:1536 1536:3584:512,"));
  EXPECT_THAT(told(), EndsWith(",Thorough,\r\n"));
}

TEST_F(ReportOption, IsCsvForItsExtensionInAnyLetters) {
  for (const char* name : {"a.csv", "b.CSV", "c.Csv", "d.e.cSV"}) {
    name_ = name;
    EXPECT_EQ(search_with_report(), 0);
    EXPECT_THAT(told(), StartsWith(csv_names)) << name;
  }
  for (const char* name : {"csv", "f.csvx", "g.csv.xml"}) {
    name_ = name;
    EXPECT_EQ(search_with_report(), 0);
    EXPECT_THAT(told(), StartsWith("<?xml ")) << name;
  }
}

TEST_F(ReportOption, IsOneDocument) {
  EXPECT_EQ(search_with_report(), 0);
  EXPECT_THAT(told(), StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<dfxml "));
  EXPECT_THAT(told(), HasSubstr("<command_line>norvo-recover --device "));
  EXPECT_THAT(told(), HasSubstr("<device_sectors>8</device_sectors>"));
  EXPECT_THAT(told(), EndsWith("  </fileobject>\n</dfxml>\n"));
}

TEST_F(ReportOption, AnExistingFileIsNeitherReplacedNorSearchedFor) {
  fs::create_directories(report().parent_path());
  test::write_file(report(), "precious");
  EXPECT_EQ(search_with_report(), 2);
  EXPECT_THAT(err_.str(), HasSubstr(report().string() + " exists already"));
  EXPECT_EQ(told(), "precious");
  EXPECT_FALSE(fs::exists(destination()));
}

TEST_F(ReportOption, ALinkThatLeadsNowhereIsNotFollowed) {
  fs::create_directories(report().parent_path());
  fs::create_symlink(folder_.path() / "elsewhere", report());
  EXPECT_EQ(search_with_report(), 2);
  EXPECT_FALSE(fs::exists(folder_.path() / "elsewhere"));
}

TEST_F(ReportOption, AReportThatCannotBeMadeIsWrongUsage) {
  test::write_file(folder_.path() / "told", "no folder");
  EXPECT_EQ(search_with_report(), 2);
  EXPECT_THAT(err_.str(), HasSubstr("cannot be written"));
  EXPECT_FALSE(fs::exists(destination()));
}

TEST_F(ReportOption, MayNotLieAmongTheRecoveredFiles) {
  const fs::path among = destination() / "x/../Norvo Spruce Results/Photo Search" / jpeg_path_;
  EXPECT_EQ(search({"--quiet", "--report", among.string()}), 2);
  EXPECT_THAT(err_.str(), HasSubstr("among the recovered files"));
  EXPECT_FALSE(fs::exists(destination()));
}

TEST_F(ReportOption, MayNotTakeThePlaceOfTheDestination) {
  for (const fs::path& place : {destination(), destination() / "", destination() / "x/.."}) {
    err_.str("");
    EXPECT_EQ(search({"--quiet", "--report", place.string()}), 2) << place;
    EXPECT_THAT(err_.str(), HasSubstr("where the destination is to be made")) << place;
    EXPECT_FALSE(fs::exists(destination())) << place;
  }
}

TEST_F(ReportOption, MayNotTakeThePlaceOfAFolderAboveTheDestination) {
  const fs::path above = folder_.path() / "above";
  EXPECT_EQ(search({"--quiet", "--report", above.string(), "--destination",
                    (above / "destination").string()}),
            2);
  EXPECT_THAT(err_.str(), HasSubstr("where the destination is to be made"));
  EXPECT_FALSE(fs::exists(above));
}

TEST_F(ReportOption, MayLieBesideTheResults) {
  EXPECT_EQ(search({"--quiet", "--report", (destination() / "report.xml").string()}), 0);
  EXPECT_TRUE(fs::exists(destination() / "report.xml"));
}

TEST_F(ReportOption, AWrongCallLeavesNoReportBehind) {
  EXPECT_EQ(search_with_report({"--start-sector", "9", "--end-sector", "10"}), 2);
  EXPECT_FALSE(fs::exists(report()));
}

TEST_F(ReportOption, ADeviceThatCannotBeOpenedEndsTheReportToo) {
  fs::remove(image());
  EXPECT_EQ(search_with_report(), 3);
  EXPECT_THAT(told(), EndsWith("</source>\n</dfxml>\n"));
}

TEST_F(ReportOption, ReportsOfSearchesWithoutResultsAreEnded) {
  write_image(test::zero_sectors(4));
  EXPECT_EQ(search_with_report(), 0);
  EXPECT_THAT(told(), EndsWith("</source>\n</dfxml>\n"));
}

TEST_F(ReportOption, IsEndedWhenResultsCannotBeSaved) {
  name_ = "report.csv";
  const test::FileSizeLimit limit(1024);
  EXPECT_EQ(search_with_report(), 1);
  EXPECT_EQ(told(), csv_names);
  EXPECT_THAT(err_.str(), Not(HasSubstr("could not be written any further")));
}

TEST_F(ReportOption, AFullDriveCostsTheReportAndNotTheSearch) {
  // Every picture fits below the limit; the report's rows together do not.
  name_ = "report.csv";
  std::string pictures;
  for (int i = 0; i < 12; ++i) pictures += jpeg_ + sector_of("", 'a') + sector_of("", 'b');
  write_image(pictures);
  const test::FileSizeLimit limit(1536);
  EXPECT_EQ(search_with_report({"--no-thorough"}), 1);
  EXPECT_EQ(test::lines_of(out_.str()).at(1), "  General    JPG                 12   18.4 KB");
  const std::string message = "The report " + report().string() + " could not be written any";
  EXPECT_THAT(err_.str(), StartsWith(message));
  EXPECT_EQ(err_.str().find(message, 1), std::string::npos) << "told once";
  EXPECT_THAT(told(), StartsWith(csv_names));
  EXPECT_THAT(told(), HasSubstr("GND00005.JPG"));
  EXPECT_THAT(told(), EndsWith(",General,\r\n")) << "no part of a row is left";
  EXPECT_THAT(told(), Not(HasSubstr("GND00012.JPG")));
}

}  // namespace
}  // namespace norvo
