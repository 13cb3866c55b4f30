// The rows that count the recovered files of each type.
#include "results/FoundFilesTable.h"

#include <gtest/gtest.h>

#include <thread>

namespace norvo::test {
namespace {

void add_types(FoundFilesTable& table, const std::vector<Text>& types) {
  for (const Text& type : types) table.createSignatureListTableRecord(type, 0, u"", {}, type);
}

std::vector<Text> counts(const FoundFilesTable& table) {
  std::vector<Text> all;
  for (std::size_t i = 0; i < table.size(); ++i) all.push_back(table.row(i).NoOfFile);
  return all;
}

TEST(FoundFilesTable, HasNoRowsAtFirst) {
  const FoundFilesTable table;
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table.NoOfFile(u"MOV"), std::nullopt);
}

TEST(FoundFilesTable, ANewRowStandsAtTheEndWithItsFiveValues) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"MOV", 0, u"", {}, u"MOV");
  table.createSignatureListTableRecord(u"Shown", 12, u"last.mp4", "/d/last.mp4", u"mp4");
  ASSERT_EQ(table.size(), 2U);
  EXPECT_EQ(table.row(0), (FoundFilesRow{u"MOV", u"0", u"", {}, u"MOV"}));
  EXPECT_EQ(table.row(1), (FoundFilesRow{u"Shown", u"12", u"last.mp4", "/d/last.mp4", u"mp4"}));
}

TEST(FoundFilesTable, ACountIsWrittenWithAllItsDigits) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"A", 18446744073709551615U, u"", {}, u"A");
  table.createSignatureListTableRecord(u"B", 9223372036854775806U, u"", {}, u"B");
  EXPECT_EQ(table.row(0).NoOfFile, u"18446744073709551615");
  EXPECT_EQ(table.NoOfFile(u"B"), 9223372036854775806U);
}

TEST(FoundFilesTable, AFileRaisesTheCountOfItsRowAndStandsThere) {
  FoundFilesTable table;
  add_types(table, {u"AVI", u"MOV", u"MP4"});
  table.count_file("/d/MOV/MOV00001.MOV", u"MOV00001.MOV");
  EXPECT_EQ(table.row(1),
            (FoundFilesRow{u"MOV", u"1", u"MOV00001.MOV", "/d/MOV/MOV00001.MOV", u"MOV"}));
  table.count_file("/d/MOV/MOV00002.MOV", u"second");
  EXPECT_EQ(table.row(1), (FoundFilesRow{u"MOV", u"2", u"second", "/d/MOV/MOV00002.MOV", u"MOV"}));
  EXPECT_EQ(table.row(0), (FoundFilesRow{u"AVI", u"0", u"", {}, u"AVI"}));
  EXPECT_EQ(table.row(2), (FoundFilesRow{u"MP4", u"0", u"", {}, u"MP4"}));
  EXPECT_EQ(table.NoOfFile(u"MOV"), 2U);
}

TEST(FoundFilesTable, ACountGoesOnFromWhatTheRowBeganWith) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"A", 99999, u"", {}, u"A");
  table.count_file("/x.A", u"x.A");
  EXPECT_EQ(table.row(0).NoOfFile, u"100000");
}

TEST(FoundFilesTable, ACountedRowShowsTheExtensionWhateverItShowedBefore) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"Video", 0, u"", {}, u"MOV");
  table.count_file("/d/a.MOV", u"a.MOV");
  EXPECT_EQ(table.row(0), (FoundFilesRow{u"MOV", u"1", u"a.MOV", "/d/a.MOV", u"MOV"}));
}

TEST(FoundFilesTable, OfTwoRowsOfATypeOnlyTheFirstCounts) {
  FoundFilesTable table;
  add_types(table, {u"MOV", u"AVI", u"MOV"});
  for (int i = 0; i < 3; ++i) table.count_file("/d/a.MOV", u"a.MOV");
  EXPECT_EQ(counts(table), (std::vector<Text>{u"3", u"0", u"0"}));
}

TEST(FoundFilesTable, TheHiddenTypeIsComparedAndNotTheShownOne) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"MOV", 0, u"", {}, u"other");
  table.createSignatureListTableRecord(u"other", 0, u"", {}, u"MOV");
  table.count_file("/d/a.MOV", u"a.MOV");
  EXPECT_EQ(counts(table), (std::vector<Text>{u"0", u"1"}));
  EXPECT_EQ(table.NoOfFile(u"other"), 0U);
}

TEST(FoundFilesTable, AnExtensionOfNoRowOrInOtherLettersChangesNothing) {
  FoundFilesTable table;
  add_types(table, {u"MOV"});
  for (const char* path : {"/d/a.mov", "/d/a.Mov", "/d/a.MOV2", "/d/a.MO", "/d/a", "/d.MOV/a"}) {
    table.count_file(path, u"a");
  }
  EXPECT_EQ(table.row(0), (FoundFilesRow{u"MOV", u"0", u"", {}, u"MOV"}));
  EXPECT_EQ(table.NoOfFile(u"mov"), std::nullopt);
}

TEST(FoundFilesTable, ATypeWithAFullStopNeverFindsItsOwnRow) {
  FoundFilesTable table;
  add_types(table, {u"TAR.GZ", u"GZ"});
  table.count_file("/d/a.TAR.GZ", u"a.TAR.GZ");
  EXPECT_EQ(counts(table), (std::vector<Text>{u"0", u"1"}));
}

TEST(FoundFilesTable, WhiteSpaceAtThePathsEndsDoesNotBelongToTheExtension) {
  FoundFilesTable table;
  add_types(table, {u"MOV"});
  table.count_file(" \t/d/a.MOV \n", u"a.MOV");
  EXPECT_EQ(table.row(0).NoOfFile, u"1");
  EXPECT_EQ(table.row(0).FileTypes, u"MOV");
  EXPECT_EQ(table.row(0).FileTypes_Hidden, u"MOV");
}

TEST(FoundFilesTable, ARowShowsThePathWithoutWhiteSpaceAtItsEnds) {
  FoundFilesTable table;
  add_types(table, {u"MOV"});
  table.count_file(" \t/d/a.MOV \n", u"a.MOV");
  EXPECT_EQ(table.row(0).FilePath, "/d/a.MOV");
}

TEST(FoundFilesTable, AClearedTableHasNoRowsAndTakesNewOnes) {
  FoundFilesTable table;
  add_types(table, {u"MOV", u"AVI"});
  table.count_file("/d/a.MOV", u"a.MOV");
  table.clear();
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table.NoOfFile(u"MOV"), std::nullopt);
  add_types(table, {u"MOV"});
  EXPECT_EQ(table.NoOfFile(u"MOV"), 0U);
}

TEST(FoundFilesTable, MayBeReadWhileFilesAreCounted) {
  FoundFilesTable table;
  add_types(table, {u"AVI", u"MOV"});
  std::thread worker([&] {
    for (int i = 0; i < 5000; ++i) table.count_file("/d/a.MOV", u"a.MOV");
  });
  std::uint64_t seen = 0;
  while (seen < 5000) {
    const std::uint64_t now = table.NoOfFile(u"MOV").value_or(0);
    EXPECT_GE(now, seen);
    seen = now;
    EXPECT_EQ(table.row(1).FileTypes, u"MOV");
  }
  worker.join();
  EXPECT_EQ(counts(table), (std::vector<Text>{u"0", u"5000"}));
}

TEST(ExtensionOf, IsWhatFollowsTheLastFullStopOfTheLastComponent) {
  const std::vector<std::pair<const char*, Text>> cases{{"/d/a.MOV", u"MOV"},
                                                        {"/d/a.b.MOV", u"MOV"},
                                                        {"a.MOV", u"MOV"},
                                                        {"/d.x/a", u""},
                                                        {"/d/a", u""},
                                                        {"/d/a.", u""},
                                                        {"", u""},
                                                        {"/d/.MOV", u"MOV"},
                                                        {"/d/a.MOV\n", u"MOV"},
                                                        {" /d/a.MOV  ", u"MOV"},
                                                        {"/d/a. MOV", u" MOV"},
                                                        {"/d/a.\xC3\x84", u"\u00C4"}};
  for (const auto& [path, extension] : cases) EXPECT_EQ(extension_of(path), extension) << path;
}

TEST(FoundFilesTable, ARowThatIsNotThereIsEmpty) {
  FoundFilesTable table;
  table.createSignatureListTableRecord(u"MOV", 0, u"", {}, u"MOV");
  EXPECT_EQ(table.row(1), FoundFilesRow{});
}

}  // namespace
}  // namespace norvo::test
