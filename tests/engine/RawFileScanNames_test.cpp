// The names of carved files: by the count of their type's row, or by the pass's own count.
#include <gtest/gtest.h>

#include <filesystem>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

using Paths = std::vector<std::string>;

void add_row(RawFileSearch& search, const Text& type, std::uint64_t count = 0) {
  search.recorder.found_files.createSignatureListTableRecord(type, count, u"", {}, type);
}

TEST(RawFileScan, FilesAreNumberedByTheFilesReportedOfTheirType) {
  RawFileSearch search("JPJPPa");
  const SignatureTable table = table_of({jpeg(), png()});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "PNG/PNG00001.PNG", "JPG/JPG00002.JPG",
                                      "PNG/PNG00002.PNG", "PNG/PNG00003.PNG"}));
  EXPECT_EQ(search.counted(u"JPG"), u"2");
  EXPECT_EQ(search.counted(u"PNG"), u"3");
}

TEST(RawFileScan, TypesThatShareAHeaderAreNumberedEachForItself) {
  RawFileSearch search("JJ");
  const SignatureTable table = table_of({jpeg(), jfif()});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JFI/JFI00001.JFI", "JPG/JPG00002.JPG",
                                      "JFI/JFI00002.JFI"}));
}

TEST(RawFileScan, ATypeWithoutARowIsNumberedByAllFilesOfThePass) {
  RawFileSearch search("JPJ");
  add_row(search, u"PNG", 41);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(), png()})));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "PNG/PNG00042.PNG", "JPG/JPG00003.JPG"}));
}

TEST(RawFileScan, TwoTypesWithOneHeaderAndNoRowsAreNumberedConsecutively) {
  RawFileSearch search("Ja");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg(), {u"MP4", no_limit, u"FFD8FF"}})));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 1"}, {"MP4/MP400002.MP4", "0 1 1"}}));
}

TEST(RawFileScan, AReportTellsPathNameAndTheNameAgain) {
  RawFileSearch search("Ja", 3);
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.recorder.all<Report>(),
            (std::vector<Report>{{search.pass_path(Pass::thorough) / "JPG/JPG00001.JPG",
                                  u"JPG00001.JPG", u"JPG00001.JPG"}}));
}

TEST(RawFileScan, TheThoroughPassGoesOnWithTheRowsNumbers) {
  RawFileSearch search("JJ");
  const SignatureTable table = table_of({jpeg()});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_TRUE(search.run(Pass::thorough, table));
  EXPECT_EQ(search.found(Pass::general),
            (Found{{"JPG/JPG00001.JPG", "0 1"}, {"JPG/JPG00002.JPG", "1 1"}}));
  EXPECT_EQ(search.found(Pass::thorough),
            (Found{{"JPG/JPG00003.JPG", "0 1"}, {"JPG/JPG00004.JPG", "1 1"}}));
}

TEST(RawFileScan, WithoutRowsTheThoroughPassNumbersFromOneAgain) {
  RawFileSearch search("JJ");
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_TRUE(search.run(Pass::thorough, table_of({jpeg()})));
  EXPECT_EQ(search.found(Pass::thorough),
            (Found{{"JPG/JPG00001.JPG", "0 1"}, {"JPG/JPG00002.JPG", "1 1"}}));
}

TEST(RawFileScan, ARowInOtherLettersIsAnotherTypes) {
  RawFileSearch search("JJ");
  add_row(search, u"jpg", 6);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JPG/JPG00002.JPG"}));
  EXPECT_EQ(search.counted(u"jpg"), u"6");
}

TEST(RawFileScan, OfTwoRowsOfATypeTheFirstNumbersItsFiles) {
  RawFileSearch search("JJ");
  add_row(search, u"JPG", 7);
  add_row(search, u"JPG", 80);
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00008.JPG", "JPG/JPG00009.JPG"}));
  EXPECT_EQ(search.recorder.found_files.row(0).NoOfFile, u"9");
  EXPECT_EQ(search.recorder.found_files.row(1).NoOfFile, u"80");
}

TEST(RawFileScan, ATypeWithAFullStopNeverCountsAndReplacesItsFileEachTime) {
  // The extension of its files is GZ, which is no row's type.
  RawFileSearch search("JaJ");
  const SignatureTable table = table_of({{u"TAR.GZ", no_limit, u"FFD8FF"}});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.reported(), (Paths{"TAR.GZ/TAR.GZ00001.TAR.GZ", "TAR.GZ/TAR.GZ00001.TAR.GZ"}));
  EXPECT_EQ(search.found(), (Found{{"TAR.GZ/TAR.GZ00001.TAR.GZ", "2 2"}}));
  EXPECT_EQ(search.counted(u"TAR.GZ"), u"0");
}

TEST(RawFileScan, TwoRecordsOfOneTypeWriteOneFileTogetherAndCountItTwice) {
  RawFileSearch search("JaaaJ");
  const SignatureTable table = table_of({jpeg(u"1024"), jpeg(u"1536")});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.reported(), (Paths{"JPG/JPG00001.JPG", "JPG/JPG00001.JPG", "JPG/JPG00003.JPG",
                                      "JPG/JPG00003.JPG"}));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 2"}, {"JPG/JPG00003.JPG", "4 4"}}));
  EXPECT_EQ(search.counted(u"JPG"), u"4");
}

TEST(RawFileScan, AnExistingFileOfTheSameNameIsOverwritten) {
  RawFileSearch search("Ja");
  make_file(search.pass_path(Pass::general) / "JPG/JPG00001.JPG", std::string(5000, 'x'));
  EXPECT_TRUE(search.run(Pass::general, table_of({jpeg()})));
  EXPECT_EQ(search.found(), (Found{{"JPG/JPG00001.JPG", "0 1 1"}}));
}

TEST(RawFileScan, AReportedFileStandsInItsRow) {
  RawFileSearch search("JaJ");
  const SignatureTable table = table_of({png(), jpeg()});
  search.add_rows(table);
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_EQ(search.recorder.found_files.row(0), (FoundFilesRow{u"PNG", u"0", u"", {}, u"PNG"}));
  EXPECT_EQ(search.recorder.found_files.row(1),
            (FoundFilesRow{u"JPG", u"2", u"JPG00002.JPG",
                           search.pass_path(Pass::general) / "JPG/JPG00002.JPG", u"JPG"}));
}

}  // namespace
}  // namespace norvo::test
