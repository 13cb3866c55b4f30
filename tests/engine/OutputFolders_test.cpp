#include "engine/OutputFolders.h"

#include <gtest/gtest.h>

#include "support/TableBuilder.h"

namespace norvo::test {
namespace {

TEST(FileNames, NumbersArePaddedToFiveDigits) {
  const std::vector<std::pair<std::uint64_t, Text>> cases{
      {0, u"GND00000.jpg"},       {1, u"GND00001.jpg"},
      {9, u"GND00009.jpg"},       {10, u"GND00010.jpg"},
      {99, u"GND00099.jpg"},      {100, u"GND00100.jpg"},
      {999, u"GND00999.jpg"},     {1000, u"GND01000.jpg"},
      {9999, u"GND09999.jpg"},    {10000, u"GND10000.jpg"},
      {99999, u"GND99999.jpg"},   {100000, u"GND100000.jpg"},
      {123456, u"GND123456.jpg"}, {18446744073709551615U, u"GND18446744073709551615.jpg"}};
  for (const auto& [number, name] : cases) {
    EXPECT_EQ(Generate_File_Name(number, u"GND", u"jpg"), name);
    EXPECT_EQ(Generate_File_UID_Num(number, false, u"jpg"), name);
  }
}

TEST(FileNames, PrefixAndExtensionStandAsTheyAre) {
  EXPECT_EQ(Generate_File_Name(7, u"MOV", u"TAR.GZ"), u"MOV00007.TAR.GZ");
  EXPECT_EQ(Generate_File_Name(7, u"", u""), u"00007.");
}

TEST(FileNames, AnIdentifierTellsThePass) {
  EXPECT_EQ(Generate_File_UID_Num(7, false, u"JPG"), u"GND00007.JPG");
  EXPECT_EQ(Generate_File_UID_Num(7, true, u"JPG"), u"THD00007.JPG");
}

TEST(FolderTree, TheSearchFolderBearsTheSearchType) {
  EXPECT_EQ(search_folder(u"Norvo Birch Results", 0), "Norvo Birch Results/Photo Search");
  EXPECT_EQ(search_folder(u"Norvo Birch Results", 1), "Norvo Birch Results/Video Search");
  EXPECT_EQ(search_folder(u"Norvo Birch Results", 2), "Norvo Birch Results/File Search");
  EXPECT_EQ(search_folder(u"Norvo Birch Results", 3), "Norvo Birch Results/Audio File Search");
}

TEST(FolderTree, EachPassHasItsFolder) {
  EXPECT_EQ(pass_folder("a", Pass::general), "a/General Recovery Results");
  EXPECT_EQ(pass_folder("a", Pass::thorough), "a/Omitted (recovered by Thorough Scan)");
}

struct FolderCase {
  const char16_t* folder;
  const char16_t* next;
};

void expect_next(const std::vector<FolderCase>& cases) {
  for (const FolderCase& c : cases) {
    EXPECT_EQ(next_folder_name(c.folder), c.next) << utf8_from_text(c.folder);
  }
}

TEST(NextFolderName, AFolderWithoutAnUnderscoreGetsTheFirstNumber) {
  expect_next({{u"JPG", u"JPG_001"}, {u"JPEG", u"JPEG_001"}, {u"X", u"X_001"}, {u"", u"_001"}});
}

TEST(NextFolderName, WithThreeLettersTheNumberIsReadWholeAndRaised) {
  expect_next({{u"JPG_001", u"JPG_002"},
               {u"JPG_008", u"JPG_009"},
               {u"JPG_009", u"JPG_010"},
               {u"JPG_098", u"JPG_099"},
               {u"JPG_099", u"JPG_100"},
               {u"JPG_998", u"JPG_999"}});
}

TEST(NextFolderName, ThereIsNoThousandthFolder) {
  expect_next({{u"JPG_999", u""}});
}

TEST(NextFolderName, WithFewerLettersOnlyTheLastDigitsAreRead) {
  expect_next({{u"PS_001", u"PS_002"},
               {u"PS_099", u"PS_100"},
               {u"PS_100", u"PS_001"},  // reads 00
               {u"C_009", u"C_010"},
               {u"C_010", u"C_001"}});  // reads 0
}

TEST(NextFolderName, WithMoreLettersTheUnderscoreIsReadTooAndGivesTheFirstNumberAgain) {
  expect_next(
      {{u"JPEG_001", u"JPEG_001"}, {u"JPEG_417", u"JPEG_001"}, {u"HEICS_001", u"HEICS_001"}});
}

TEST(NextFolderName, TheFirstUnderscoreCounts) {
  expect_next({{u"A_B", u"A_001"},          // reads B
               {u"A_7", u"A_008"},          // reads 7
               {u"ABC_D_001", u"ABC_002"},  // reads 001
               {u"_X", u"_001"},            // reads nothing
               {u"_001", u"_001"}});
}

TEST(NextFolderName, TheNumberIsReadUpToTheFirstOtherCharacter) {
  expect_next({{u"AB_7x", u"AB_008"}, {u"ABC_12x", u"ABC_013"}});
}

TEST(NextFolderName, WhatDoesNotStartWithADigitIsReadAsZero) {
  expect_next(
      {{u"AB_ 7", u"AB_001"}, {u"AB_+7", u"AB_001"}, {u"AB_-7", u"AB_001"}, {u"AB_x7", u"AB_001"}});
}

TEST(NextFolderName, WhiteSpaceAtTheEndsIsTrimmed) {
  expect_next({{u" JPG", u"JPG_001"}, {u" JP_001", u"JP_002"}});
}

// Counts `files` more files of one type.
void count_files(FolderCounters& counters, TextView extension, int files) {
  for (int i = 0; i < files; ++i) counters.folder_for_next_file(extension);
}

TEST(FolderCounters, FiftyThousandFilesShareAFolderAndTheNextOneBeginsAnother) {
  FolderCounters counters;
  counters.add_types(table_of({jpeg()}));
  for (int i = 0; i < 50000; ++i) ASSERT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG");
  for (int i = 0; i < 50000; ++i) ASSERT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG_001");
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG_002");
}

TEST(FolderCounters, EachTypeCountsForItself) {
  FolderCounters counters;
  counters.add_types(table_of({jpeg(), png()}));
  count_files(counters, u"JPG", 49999);
  count_files(counters, u"PNG", 3);
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG");
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG_001");
  EXPECT_EQ(counters.folder_for_next_file(u"PNG"), u"PNG");
}

TEST(FolderCounters, RecordsOfOneExtensionShareTheirCount) {
  FolderCounters counters;
  counters.add_types(table_of({jpeg(), {u"JPG", u"1", u"42"}, png()}));
  count_files(counters, u"JPG", 50000);
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG_001");
}

TEST(FolderCounters, AnExtensionInOtherLettersIsAnotherType) {
  FolderCounters counters;
  counters.add_types(table_of({jpeg(), {u"jpg", u"1", u"42"}}));
  count_files(counters, u"JPG", 50000);
  EXPECT_EQ(counters.folder_for_next_file(u"jpg"), u"jpg");
}

TEST(FolderCounters, AFourLetterTypeFillsItsSecondFolderAgainAndAgain) {
  FolderCounters counters;
  counters.add_types(table_of({{u"JPEG", u"1", u"42"}}));
  count_files(counters, u"JPEG", 50000);
  for (int i = 0; i < 100001; ++i) ASSERT_EQ(counters.folder_for_next_file(u"JPEG"), u"JPEG_001");
}

TEST(FolderCounters, TheLastFolderKeepsAllFurtherFiles) {
  FolderCounters counters;
  counters.add_types(table_of({{u"JPG_999", u"1", u"42"}}));
  for (int i = 0; i < 100001; ++i) {
    ASSERT_EQ(counters.folder_for_next_file(u"JPG_999"), u"JPG_999");
  }
}

TEST(FolderCounters, StartAfreshWhenTheyAreClearedAndBuiltAgain) {
  FolderCounters counters;
  counters.add_types(table_of({jpeg()}));
  count_files(counters, u"JPG", 50001);
  counters.clear();
  counters.add_types(table_of({jpeg()}));
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG");
}

TEST(FolderCounters, ATypeWhoseRecordIsCutOffIsCountedToo) {
  FolderCounters counters;
  counters.add_types({u"JPG", u"100"});
  EXPECT_EQ(counters.folder_for_next_file(u"JPG"), u"JPG");
}

}  // namespace
}  // namespace norvo::test
