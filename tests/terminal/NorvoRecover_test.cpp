#include "platform/terminal/NorvoRecover.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "support/FileContent.h"
#include "terminal/ProgramOnImage.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;
using test::final_event;
using test::general_pass;
using test::lines_of;
using test::sector_of;
using test::thorough_pass;
using test::zero_sectors;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using NorvoRecoverTest = test::ProgramOnImage;

TEST_F(NorvoRecoverTest, RecoversTheFilesOfBothPasses) {
  EXPECT_EQ(search(), 0);
  EXPECT_EQ(test::read_file(results() / jpeg_path_),
            jpeg_ + sector_of("", 'a') + sector_of("", 'b'));
  EXPECT_EQ(test::read_file(results() / png_path_),
            png_ + sector_of("", 'd') + sector_of("", 'e') + sector_of("", 'e'));
}

TEST_F(NorvoRecoverTest, WritesTheEventsAndNothingElseOnStandardOutput) {
  EXPECT_EQ(search({"--json"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, file_event("GEN", jpeg_path_), thorough_pass,
                          file_event("THD", png_path_), final_event("completed")));
}

TEST_F(NorvoRecoverTest, ShowsATableAndWhereTheFilesLie) {
  EXPECT_EQ(search({"--quiet"}), 0);
  EXPECT_EQ(out_.str(),
            "  Search     Type             Files      Size\n"
            "  General    JPG                  1    1.5 KB\n"
            "  Thorough   PNG                  1    2.0 KB\n"
            "  Total                           2    3.6 KB\n"
            "Saved in " +
                results().string() + "\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(NorvoRecoverTest, SaysThatNothingWasFound) {
  write_image(zero_sectors(4));
  EXPECT_EQ(search(), 0);
  EXPECT_EQ(out_.str(), "  Nothing was found.\n");
}

TEST_F(NorvoRecoverTest, ShowsItsProgressOnStandardError) {
  EXPECT_EQ(search(), 0);
  EXPECT_THAT(err_.str(), StartsWith("Sectors 0 of 8   ( Completed 0% )\n"));
  err_is_terminal_ = true;
  EXPECT_EQ(search(), 0);
  EXPECT_THAT(err_.str(), StartsWith("\rSectors 0 of 8   ( Completed 0% )\r"));
  EXPECT_THAT(err_.str(), testing::EndsWith("\n"));
}

TEST_F(NorvoRecoverTest, QuietKeepsProgressAndNothingElseAway) {
  EXPECT_EQ(search({"--quiet"}), 0);
  EXPECT_EQ(err_.str(), "");
  fs::remove(image());
  EXPECT_EQ(search({"--quiet"}), 3);
  EXPECT_NE(err_.str(), "");
}

TEST_F(NorvoRecoverTest, LeavesTheThoroughPassOutWhenAsked) {
  EXPECT_EQ(search({"--json", "--no-thorough"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, file_event("GEN", jpeg_path_), final_event("completed")));
  EXPECT_FALSE(fs::exists((results() / png_path_).parent_path().parent_path()));
}

TEST_F(NorvoRecoverTest, SearchesARange) {
  EXPECT_EQ(search({"--json", "--start-sector", "2", "--end-sector", "6"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, thorough_pass, file_event("THD", png_path_),
                          final_event("completed")));
  EXPECT_EQ(test::read_file(results() / png_path_), png_ + png_);
}

TEST_F(NorvoRecoverTest, TheRangeOfAllSectorsIsTheEntireDisk) {
  EXPECT_EQ(search({"--json"}), 0);
  const std::string entire = out_.str();
  EXPECT_EQ(search({"--json", "--start-sector", "0", "--end-sector", "8"}), 0);
  EXPECT_EQ(out_.str(), entire);
}

TEST_F(NorvoRecoverTest, NamesTheResultsFolderAfterTheEdition) {
  fs::copy(shipped() / "SPRExt2.dll", shipped() / "CEDExt2.dll");
  EXPECT_EQ(search({"--edition", "My Cedar", "--no-thorough"}), 0);
  EXPECT_TRUE(fs::exists(destination() / "My Cedar Results/Photo Search" / jpeg_path_));
}

TEST_F(NorvoRecoverTest, TakesTheSignaturesOfAnotherFolder) {
  const fs::path other = folder_.path() / "other";
  fs::create_directory(other);
  test::write_file(other / "SPRExt2.dll",
                   "E : .png\nS : 512\nHeader : 89504E47\nP : 1\nK :\nD : x\n");
  EXPECT_EQ(search({"--json", "--signatures", other.string()}), 0);
  EXPECT_THAT(
      lines_of(out_.str()),
      ElementsAre(general_pass, file_event("GEN", "General Recovery Results/PNG/GND00001.PNG"),
                  thorough_pass, final_event("completed")));
}

TEST_F(NorvoRecoverTest, WarnsThatThereAreNoSignatures) {
  const fs::path nowhere = folder_.path() / "nowhere";
  EXPECT_EQ(search({"--json", "--quiet", "--signatures", nowhere.string()}), 0);
  EXPECT_THAT(err_.str(), HasSubstr(nowhere.string()));
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, thorough_pass, final_event("completed")));
}

TEST_F(NorvoRecoverTest, AnEmptyDeviceRunsBothPasses) {
  write_image("");
  EXPECT_EQ(search({"--json"}), 0);
  EXPECT_THAT(lines_of(out_.str()),
              ElementsAre(general_pass, thorough_pass, final_event("completed")));
  EXPECT_TRUE(fs::is_directory(results() / "General Recovery Results"));
  EXPECT_TRUE(fs::is_directory(results() / "Omitted (recovered by Thorough Scan)"));
}

TEST_F(NorvoRecoverTest, ChecksSignatureFiles) {
  EXPECT_EQ(run({"--check-signatures", shipped().string()}), 0);
  EXPECT_EQ(out_.str(), "2 files, 0 faults\n");
  test::write_file(shipped() / "SPRRaw.dll", "E : .raw\n");
  EXPECT_EQ(run({"--check-signatures", shipped().string()}), 1);
  EXPECT_THAT(out_.str(), HasSubstr((shipped() / "SPRRaw.dll").string() + ":1: "));
  EXPECT_EQ(run({"--check-signatures", (shipped() / "nowhere").string()}), 2);
}

TEST_F(NorvoRecoverTest, ShowsItsHelpAndItsVersion) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(out_.str(), HasSubstr("--device PATH"));
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(run({"--version"}), 0);
  EXPECT_TRUE(std::regex_match(out_.str(), std::regex("norvo-recover [0-9]+\\.[0-9]+\\.[0-9]+\n")))
      << out_.str();
  EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace norvo
