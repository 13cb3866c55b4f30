// Which types a header opens files for, and the thirty files that are carved at once.
#include <gtest/gtest.h>

#include "RawFileSearch.h"
#include "support/FileTree.h"

namespace norvo::test {
namespace {

// The types for which the one J header of a card opened files, in the order of the table.
std::string opened_by_header(const std::vector<TypeRow>& rows) {
  RawFileSearch search("aJ");
  EXPECT_TRUE(search.run(Pass::general, table_of(rows)));
  std::string types;
  for (const std::string& path : search.reported()) types += path.substr(0, path.find('/')) + " ";
  return types;
}

TypeRow type(const Text& extension, const Text& header, const Text& position = u"1") {
  return {extension, no_limit, header, position};
}

TEST(RawFileScan, TwoTypesWithOneHeaderBothGetAFile) {
  EXPECT_EQ(opened_by_header({type(u"MOV", u"FFD8FF"), type(u"MP4", u"FFD8FF")}), "MOV MP4 ");
}

TEST(RawFileScan, ATypeWhoseHeaderIsPartOfTheFoundOneGoesWithItWhateverItsRule) {
  for (const char16_t* rule : {u"1", u"nn", u"9", u""}) {
    EXPECT_EQ(opened_by_header({jfif(), type(u"JPG", u"FFD8FF", rule)}), "JFI JPG ");
  }
  // At its middle and its end too.
  EXPECT_EQ(opened_by_header({jfif(), type(u"MID", u"D8FF"), type(u"END", u"E0")}), "JFI MID END ");
}

TEST(RawFileScan, HeadersAreComparedAsTextsSoTheyMayOverlapByHalfAByte) {
  EXPECT_EQ(opened_by_header({jfif(), type(u"ODD", u"FD8FFE")}), "JFI ODD ");
}

TEST(RawFileScan, ATypeWhoseHeaderContainsTheFoundOneGoesWithItWhenTheRulesAreEqual) {
  EXPECT_EQ(opened_by_header({jpeg(), jfif()}), "JPG JFI ");
  // Its own header need not stand in the sector.
  EXPECT_EQ(opened_by_header({jpeg(), type(u"EXI", u"FFD8FFE1")}), "JPG EXI ");
  EXPECT_EQ(opened_by_header({jpeg(), type(u"MID", u"00FFD8FF")}), "JPG MID ");
}

TEST(RawFileScan, ATypeWhoseHeaderContainsTheFoundOneStaysAwayWhenTheRulesDiffer) {
  for (const char16_t* rule : {u"nn", u"01", u" 1", u"5", u""}) {
    EXPECT_EQ(opened_by_header({jpeg(), type(u"JFI", u"FFD8FFE0", rule)}), "JPG ");
  }
}

TEST(RawFileScan, EqualHeadersGoTogetherWhateverTheirRules) {
  EXPECT_EQ(opened_by_header({jpeg(), type(u"ANY", u"FFD8FF", u"77")}), "JPG ANY ");
}

TEST(RawFileScan, HeadersInOtherLettersOrWithNothingInCommonStayAway) {
  EXPECT_EQ(opened_by_header({jpeg(), type(u"LOW", u"ffd8ff"), png()}), "JPG ");
  EXPECT_EQ(opened_by_header({jpeg(), type(u"PRT", u"D8FFE0")}), "JPG ");
}

TEST(RawFileScan, ATypeWithAnEmptyHeaderGoesWithNone) {
  for (const char16_t* rule : {u"1", u"nn"}) {
    EXPECT_EQ(opened_by_header({jpeg(), {u"NIL", no_limit, u"", rule, u"255"}}), "JPG ");
  }
}

TEST(RawFileScan, TypesBeforeTheFoundOneGetNoFile) {
  // The first type's header is longer and does not fit.
  EXPECT_EQ(opened_by_header({type(u"EXI", u"FFD8FFE1"), jpeg(), jfif()}), "JPG JFI ");
}

TEST(RawFileScan, TheFirstTypeInTheTableThatIsFoundWins) {
  EXPECT_EQ(opened_by_header({type(u"ONE", u"FFD8"), png(), type(u"TWO", u"FFD8", u"nn")}),
            "ONE TWO ");
  EXPECT_EQ(opened_by_header({png(), type(u"TWO", u"FFD8", u"nn"), type(u"ONE", u"FFD8")}),
            "TWO ONE ");
}

TEST(RawFileScan, CompanionsBelongToTheTypeThatWasFound) {
  // J finds JFI, whose companions differ from those of the types around it.
  const SignatureTable table = table_of({png(), jfif(), gif(), jpeg(), type(u"PN2", u"89504E47")});
  expect_carved({.drawing = "PaJaGa", .table = table}, {{"PNG/PNG00001.PNG", "0 1 2"},
                                                        {"PN2/PN200001.PN2", "0 1 2"},
                                                        {"JFI/JFI00001.JFI", "2 3 4"},
                                                        {"JPG/JPG00001.JPG", "2 3 4"},
                                                        {"GIF/GIF00001.GIF", "4 5 5"}});
}

// T00 to T`count - 1`, all with the header of J and a maximum that ends them in one sector.
std::vector<TypeRow> many_types(int count) {
  std::vector<TypeRow> rows;
  for (int i = 0; i < count; ++i) {
    Text name = u"T00";
    name[1] = static_cast<char16_t>(u'0' + i / 10);
    name[2] = static_cast<char16_t>(u'0' + i % 10);
    rows.push_back({name, no_limit, u"FFD8FF"});
  }
  return rows;
}

std::string type_name(int number) {
  return (number < 10 ? "T0" : "T") + std::to_string(number);
}

TEST(RawFileScan, ThirtyTypesGetAFileEachAndFurtherOnesOnlyTheirFolder) {
  RawFileSearch search("aJa");
  EXPECT_TRUE(search.run(Pass::general, table_of(many_types(33))));
  Found files;
  std::set<std::string> entries;
  for (int i = 0; i < 33; ++i) {
    const std::string folder = type_name(i) + "/";
    entries.insert(folder);
    if (i >= 30) continue;
    // Without rows, files are numbered through all types.
    const std::string number = (i < 9 ? "0000" : "000") + std::to_string(i + 1);
    files[folder + type_name(i) + number + "." + type_name(i)] = "1 2 2";
  }
  for (const auto& [path, content] : files) entries.insert(path);
  EXPECT_EQ(search.found(), files);
  EXPECT_EQ(entries_below(search.pass_path(Pass::general)), entries);
}

TEST(RawFileScan, AllThirtySlotsAreFreeAgainAtTheNextHeaderAndNumbersGoOnWithoutGaps) {
  RawFileSearch search("aJaJ");
  EXPECT_TRUE(search.run(Pass::general, table_of(many_types(33))));
  const std::vector<std::string> reported = search.reported();
  ASSERT_EQ(reported.size(), 60U);
  EXPECT_EQ(reported[29], "T29/T2900030.T29");
  EXPECT_EQ(reported[30], "T00/T0000031.T00");
  EXPECT_EQ(reported[59], "T29/T2900060.T29");
}

TEST(RawFileScan, ASlotThatAMaximumFreedIsTakenAtTheNextHeader) {
  std::vector<TypeRow> rows = many_types(31);
  rows[4].maximum = u"512";
  rows[17].maximum = u"1024";
  RawFileSearch search("JaaJaa");
  EXPECT_TRUE(search.run(Pass::general, table_of(rows)));
  const Found files = search.found();
  EXPECT_EQ(files.size(), 60U);
  EXPECT_EQ(files.at("T04/T0400005.T04"), "0 0");
  EXPECT_EQ(files.at("T17/T1700018.T17"), "0 1");
  EXPECT_EQ(files.at("T18/T1800019.T18"), "0 1 2 3");
  EXPECT_EQ(files.at("T04/T0400035.T04"), "3 3");
  EXPECT_EQ(files.at("T29/T2900060.T29"), "3 4 5 5");
}

TEST(RawFileScan, ThirtyOpenFilesGetEverySector) {
  std::vector<TypeRow> rows = many_types(30);
  Found wanted;
  for (int i = 0; i < 30; ++i) {
    const std::string name = type_name(i);
    wanted[name + "/" + name + "00001." + name] = "1 2 z 4 5 5";
  }
  expect_carved({.drawing = "aJazaa", .table = table_of(rows)}, wanted);
}

TEST(RawFileScan, TheFolderOfATypeWithoutASlotIsCountedLikeAnother) {
  // One header raises the count of the one type 50,001 times; thirty of its records find a slot.
  const SignatureTable table = table_of(std::vector<TypeRow>(50'001, {u"MOV", u"512", u"FFD8FF"}));
  RawFileSearch search("JJJ");
  EXPECT_TRUE(search.run(Pass::general, table));
  const std::vector<std::string> reported = search.reported();
  ASSERT_EQ(reported.size(), 90U);
  EXPECT_EQ(reported[0], "MOV/MOV00001.MOV");
  EXPECT_EQ(reported[29], "MOV/MOV00030.MOV");
  EXPECT_EQ(reported[30], "MOV_001/MOV00031.MOV");
  EXPECT_EQ(reported[59], "MOV_001/MOV00060.MOV");
  EXPECT_EQ(reported[60], "MOV_002/MOV00061.MOV");
}

TEST(RawFileScan, ATypeOfFourLettersFillsItsSecondFolderAgain) {
  const SignatureTable table = table_of(std::vector<TypeRow>(50'001, {u"MPEG", u"512", u"FFD8FF"}));
  RawFileSearch search("JJJ");
  EXPECT_TRUE(search.run(Pass::general, table));
  const std::vector<std::string> reported = search.reported();
  ASSERT_EQ(reported.size(), 90U);
  EXPECT_EQ(reported[29], "MPEG/MPEG00030.MPEG");
  EXPECT_EQ(reported[30], "MPEG_001/MPEG00031.MPEG");
  EXPECT_EQ(reported[60], "MPEG_001/MPEG00061.MPEG");
}

TEST(RawFileScan, FolderCountsBeginAnewInTheThoroughPass) {
  const SignatureTable table = table_of(std::vector<TypeRow>(50'001, {u"MOV", u"512", u"FFD8FF"}));
  RawFileSearch search("Ja");
  EXPECT_TRUE(search.run(Pass::general, table));
  EXPECT_TRUE(search.run(Pass::thorough, table));
  const std::vector<std::string> reported = search.reported(Pass::thorough);
  ASSERT_EQ(reported.size(), 60U);
  EXPECT_EQ(reported[30], "MOV/MOV00001.MOV");
}

}  // namespace
}  // namespace norvo::test
