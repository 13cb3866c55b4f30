// The check list of file types, and which records of the tables the ticked ones keep.
#include "sigdb/FileTypeCheckList.h"

#include <gtest/gtest.h>

namespace norvo::test {
namespace {

// A record of an extension; the description tells records of one extension apart.
void add(SignatureTable& table, const Text& extension, const Text& description = u"") {
  for (const Text& entry : {extension, Text(u"1024"), Text(u"4142"), Text(u"1"), Text(u"?"),
                            description, Text(u"65")}) {
    table.push_back(entry);
  }
}

SignatureTable table_of_types(const std::vector<Text>& extensions) {
  SignatureTable table;
  for (const Text& extension : extensions) add(table, extension);
  return table;
}

std::vector<Text> extensions(const FileTypeCheckList& list) {
  std::vector<Text> all;
  for (const FileTypeEntry& row : list.rows()) all.push_back(row.Extension);
  return all;
}

FileTypeCheckList list_of(const SignatureTable& general, const SignatureTable& thorough) {
  FileTypeCheckList list;
  list.build({general, thorough});
  return list;
}

void untick(FileTypeCheckList& list, const Text& extension) {
  for (std::size_t i = 0; i < list.rows().size(); ++i) {
    if (list.rows()[i].Extension == extension) list.set_State(i, false);
  }
}

using Extensions = std::vector<Text>;

TEST(FileTypeCheckList, ListsATypeOfBothTablesOnceAndMarksThoseOfTheThoroughTableAlone) {
  SignatureTable general;
  add(general, u"JPG", u"picture");
  SignatureTable thorough;
  add(thorough, u"JPG", u"another picture");
  add(thorough, u"RAF", u"raw file");
  EXPECT_EQ(list_of(general, thorough).rows(),
            (std::vector<FileTypeEntry>{{u"JPG", u"picture", u"", true},
                                        {u"RAF", u"raw file", u"YES", true}}));
}

TEST(FileTypeCheckList, TheFirstRecordOfAnExtensionGivesItsDescription) {
  SignatureTable general;
  add(general, u"MOV", u"first");
  add(general, u"AVI", u"");
  add(general, u"MOV", u"second");
  SignatureTable thorough;
  add(thorough, u"AVI", u"not this one");
  add(thorough, u"TS", u"third");
  add(thorough, u"TS", u"fourth");
  EXPECT_EQ(list_of(general, thorough).rows(),
            (std::vector<FileTypeEntry>{{u"AVI", u"", u"", true},
                                        {u"MOV", u"first", u"", true},
                                        {u"TS", u"third", u"YES", true}}));
}

TEST(FileTypeCheckList, IsSortedByExtensionWithoutRegardToCase) {
  EXPECT_EQ(extensions(list_of(table_of_types({u"wav", u"MP3", u"aiff", u"Flac"}),
                               table_of_types({u"OGG", u"ape", u"3GA"}))),
            (Extensions{u"3GA", u"aiff", u"ape", u"Flac", u"MP3", u"OGG", u"wav"}));
}

TEST(FileTypeCheckList, AShorterExtensionStandsBeforeALongerOneThatBeginsWithIt) {
  EXPECT_EQ(extensions(list_of(table_of_types({u"MP4V", u"mp4", u"MP", u"m"}), {})),
            (Extensions{u"m", u"MP", u"mp4", u"MP4V"}));
}

TEST(FileTypeCheckList, ExtensionsThatDifferInCaseAreTwoRowsBesideEachOther) {
  const Extensions rows = extensions(list_of(table_of_types({u"jpg", u"PNG", u"JPG", u"bmp"}), {}));
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[0], u"bmp");
  EXPECT_TRUE(rows[1] != rows[2] && (rows[1] == u"jpg" || rows[1] == u"JPG") &&
              (rows[2] == u"jpg" || rows[2] == u"JPG"));
  EXPECT_EQ(rows[3], u"PNG");
}

TEST(FileTypeCheckList, EmptyTablesGiveAnEmptyListInWhichNothingIsSelected) {
  const FileTypeCheckList list = list_of({}, {});
  EXPECT_TRUE(list.rows().empty());
  EXPECT_FALSE(list.Check_For_One_Extension_Selection());
  EXPECT_TRUE(list.all_selected());
}

TEST(FileTypeCheckList, AnIncompleteRecordAtATablesEndHasNoRow) {
  SignatureTable general = table_of_types({u"MOV"});
  SignatureTable thorough = table_of_types({u"AVI"});
  for (const Text& entry :
       {Text(u"TS"), Text(u"1"), Text(u"47"), Text(u"1"), Text(u"?"), Text(u"six entries")}) {
    general.push_back(entry);
    EXPECT_EQ(extensions(list_of(general, thorough)), (Extensions{u"AVI", u"MOV"}));
  }
  thorough.emplace_back(u"MKV");
  EXPECT_EQ(extensions(list_of(general, thorough)), (Extensions{u"AVI", u"MOV"}));
}

TEST(FileTypeCheckList, BuildingAgainForgetsRowsAndTicks) {
  const SignatureTable video = table_of_types({u"MOV", u"AVI"});
  FileTypeCheckList list = list_of(video, {});
  list.Select_Unselect_Check(false);
  list.build({video, {}});
  EXPECT_EQ(extensions(list), (Extensions{u"AVI", u"MOV"}));
  EXPECT_TRUE(list.all_selected());
  const SignatureTable audio = table_of_types({u"MP3"});
  list.build({audio, {}});
  EXPECT_EQ(extensions(list), (Extensions{u"MP3"}));
}

TEST(FileTypeCheckList, ARowIsAppendedUncheckedForDuplicatesAndUnsorted) {
  FileTypeCheckList list = list_of(table_of_types({u"MOV"}), {});
  list.createExtensionListTableRecord(u"AVI", false, u"a video", u"YES");
  list.createExtensionListTableRecord(u"MOV", true, u"twice", u"");
  EXPECT_EQ(list.rows(), (std::vector<FileTypeEntry>{{u"MOV", u"", u"", true},
                                                     {u"AVI", u"a video", u"YES", false},
                                                     {u"MOV", u"twice", u"", true}}));
}

TEST(FileTypeCheckList, SelectAllTicksEveryRowAndLeavesAllElseAndTheOrder) {
  FileTypeCheckList list;
  list.createExtensionListTableRecord(u"MOV", true, u"a video", u"");
  list.createExtensionListTableRecord(u"AVI", false, u"another", u"YES");
  list.Select_Unselect_Check(true);
  EXPECT_EQ(list.rows(), (std::vector<FileTypeEntry>{{u"MOV", u"a video", u"", true},
                                                     {u"AVI", u"another", u"YES", true}}));
  list.Select_Unselect_Check(false);
  EXPECT_EQ(list.rows(), (std::vector<FileTypeEntry>{{u"MOV", u"a video", u"", false},
                                                     {u"AVI", u"another", u"YES", false}}));
}

TEST(FileTypeCheckList, OneTickIsASelectionAndOneMissingTickIsNotAll) {
  FileTypeCheckList list = list_of(table_of_types({u"A", u"B", u"C"}), {});
  EXPECT_TRUE(list.all_selected());
  for (std::size_t row = 0; row < 3; ++row) {
    list.Select_Unselect_Check(true);
    list.set_State(row, false);
    EXPECT_FALSE(list.all_selected());
    EXPECT_TRUE(list.Check_For_One_Extension_Selection());
    list.set_State(row, true);
    EXPECT_TRUE(list.all_selected());
    list.Select_Unselect_Check(false);
    EXPECT_FALSE(list.Check_For_One_Extension_Selection());
    list.set_State(row, true);
    EXPECT_TRUE(list.Check_For_One_Extension_Selection());
    EXPECT_FALSE(list.all_selected());
  }
}

TEST(SelectedTables, KeepAllRecordsInTheTablesOrderWhenEverythingIsTicked) {
  const SignatureTable general = table_of_types({u"MOV", u"AVI", u"MOV"});
  const SignatureTable thorough = table_of_types({u"TS", u"AVI"});
  const SelectedTables selected = list_of(general, thorough).selected_tables({general, thorough});
  EXPECT_EQ(selected.CheckListHeader_Array, general);
  EXPECT_EQ(selected.CheckListHeader_Adv_Array, thorough);
}

TEST(SelectedTables, AnUntickedTypeLosesAllItsRecordsInBothTables) {
  const SignatureTable general = table_of_types({u"MOV", u"MOV", u"AVI", u"MOV", u"MKV", u"MOV"});
  const SignatureTable thorough = table_of_types({u"TS", u"MOV", u"MOV"});
  FileTypeCheckList list = list_of(general, thorough);
  untick(list, u"MOV");
  const SelectedTables selected = list.selected_tables({general, thorough});
  EXPECT_EQ(selected.CheckListHeader_Array, table_of_types({u"AVI", u"MKV"}));
  EXPECT_EQ(selected.CheckListHeader_Adv_Array, table_of_types({u"TS"}));
}

TEST(SelectedTables, ATickedTypeKeepsItsRecordsOfBothTablesWhateverItsMark) {
  const SignatureTable general = table_of_types({u"MOV"});
  const SignatureTable thorough = table_of_types({u"MOV", u"TS", u"TS"});
  FileTypeCheckList list = list_of(general, thorough);
  untick(list, u"TS");
  EXPECT_EQ(list.selected_tables({general, thorough}).CheckListHeader_Adv_Array,
            table_of_types({u"MOV"}));
  list.Select_Unselect_Check(true);
  untick(list, u"MOV");
  const SelectedTables selected = list.selected_tables({general, thorough});
  EXPECT_TRUE(selected.CheckListHeader_Array.empty());
  EXPECT_EQ(selected.CheckListHeader_Adv_Array, table_of_types({u"TS", u"TS"}));
}

TEST(SelectedTables, ExtensionsAreComparedExactly) {
  const SignatureTable general = table_of_types({u"jpg", u"JPG", u"JPGX", u"JP"});
  FileTypeCheckList list = list_of(general, {});
  untick(list, u"JPG");
  EXPECT_EQ(list.selected_tables({general, {}}).CheckListHeader_Array,
            table_of_types({u"jpg", u"JPGX", u"JP"}));
}

TEST(SelectedTables, NothingTickedKeepsNoRecord) {
  const SignatureTable general = table_of_types({u"MOV", u"AVI"});
  const SignatureTable thorough = table_of_types({u"TS"});
  FileTypeCheckList list = list_of(general, thorough);
  list.Select_Unselect_Check(false);
  const SelectedTables selected = list.selected_tables({general, thorough});
  EXPECT_TRUE(selected.CheckListHeader_Array.empty());
  EXPECT_TRUE(selected.CheckListHeader_Adv_Array.empty());
}

TEST(SelectedTables, OfTwoRowsOfATypeAnUntickedOneIsEnough) {
  const SignatureTable general = table_of_types({u"MOV", u"AVI"});
  FileTypeCheckList list = list_of(general, {});
  list.createExtensionListTableRecord(u"MOV", false, u"", u"");
  EXPECT_EQ(list.selected_tables({general, {}}).CheckListHeader_Array, table_of_types({u"AVI"}));
}

TEST(SelectedTables, AnIncompleteRecordAtATablesEndStaysThoughItsTypeIsUnticked) {
  SignatureTable general = table_of_types({u"MOV", u"AVI"});
  general.insert(general.end(), {u"MOV", u"1024", u"4142"});
  FileTypeCheckList list = list_of(general, {});
  untick(list, u"MOV");
  SignatureTable wanted = table_of_types({u"AVI"});
  wanted.insert(wanted.end(), {u"MOV", u"1024", u"4142"});
  EXPECT_EQ(list.selected_tables({general, {}}).CheckListHeader_Array, wanted);
  untick(list, u"AVI");
  EXPECT_EQ(list.selected_tables({general, {}}).CheckListHeader_Array,
            (SignatureTable{u"MOV", u"1024", u"4142"}));
}

TEST(SelectedTables, LeaveTheTablesThemselvesAlone) {
  const SignatureTable general = table_of_types({u"MOV", u"AVI"});
  FileTypeCheckList list = list_of(general, {});
  list.Select_Unselect_Check(false);
  static_cast<void>(list.selected_tables({general, {}}));
  EXPECT_EQ(general, table_of_types({u"MOV", u"AVI"}));
  EXPECT_EQ(extensions(list), (Extensions{u"AVI", u"MOV"}));
}

TEST(TablesOfMode, EachSearchTypeHasItsOwnTwoTables) {
  const SignatureTables tables;
  EXPECT_EQ(&tables_of_mode(tables, 1).general, &tables.Video_Array);
  EXPECT_EQ(&tables_of_mode(tables, 1).thorough, &tables.Adv_Video_Array);
  EXPECT_EQ(&tables_of_mode(tables, 2).general, &tables.RawFile_Array);
  EXPECT_EQ(&tables_of_mode(tables, 2).thorough, &tables.Adv_RawFile_Array);
  EXPECT_EQ(&tables_of_mode(tables, 3).general, &tables.Audio_Array);
  EXPECT_EQ(&tables_of_mode(tables, 3).thorough, &tables.Adv_Audio_Array);
}

}  // namespace
}  // namespace norvo::test
