#include "PlainSignatures.h"

#include <gtest/gtest.h>

namespace plain {
namespace {

using Table = std::vector<Text>;

TEST(PlainLoader, MakesSevenEntriesOfSixFieldLines) {
  const Table table = load_table(
      "Photos\n\nExtension : .jpg\nMaximum : 4096\nHeader : FFD8FFE0\nOffset : nn\nOther : x:y\n"
      "Description : JPEG image\n");
  EXPECT_EQ(table, (Table{u"JPG", u"4096", u"FFD8FFE0", u"nn", u"x:y", u"JPEG image", u"255"}));
}

TEST(PlainLoader, LoadsCarriageReturnsTheSame) {
  EXPECT_EQ(load_table("a: .jpg\r\nb: 1\r\nHeader : 4142\r\nc: 1\r\nd: \r\ne: E\r\n"),
            load_table("a: .jpg\nb: 1\nHeader : 4142\nc: 1\nd: \ne: E"));
}

TEST(PlainLoader, KnowsTheHeaderLineByItsExactKey) {
  const Table table = load_table(
      "a: x\nb: 1\nHeader: FF\nc: 1\nd:\ne: E\n"
      "a: y\nb: 1\n Header : FF\nc: 1\nd:\ne: E\n"
      "a: z\nb: 1\nheader : FF\nc: 1\nd:\ne: E\n"
      "a: w\nb: 1\nHeader :4243\nc: 1\nd:\ne: E\n");
  ASSERT_EQ(table.size(), 28U);
  EXPECT_EQ(table[2], u"FF");
  EXPECT_EQ(table[6], u"");
  EXPECT_EQ(table[13], u"");
  EXPECT_EQ(table[20], u"");
  EXPECT_EQ(table[27], u"66");
}

TEST(PlainLoader, KeepsWhatFollowsTheFirstFullStopInUpperCase) {
  const Table table =
      load_table("a: .Jpeg\nb: jpeg\nHeader : 41.4a\nc: .tar.gz\nd: a.\ne: Photo v2.1\n");
  EXPECT_EQ(table, (Table{u"JPEG", u"jpeg", u"4A", u"TAR.GZ", u"", u"1", u"65"}));
}

TEST(PlainLoader, LeavesAShortHeaderValueWithoutPendingValue) {
  const Table table = load_table("a: x\nHeader : 41\nHeader : F\nHeader :\nc: 1\nd: 2\n");
  EXPECT_EQ(table, (Table{u"x", u"41", u"F", u"", u"1", u"2", u"65"}));
}

TEST(PlainLoader, CountsABadHeaderDigitAsZero) {
  EXPECT_EQ(load_table("a:1\nb:2\nHeader : ZF\nc:3\nd:4\ne:5")[6], u"15");
  EXPECT_EQ(load_table("a:1\nb:2\nHeader : 00FF\nc:3\nd:4\ne:5")[6], u"0");
}

TEST(PlainLoader, KeepsTheLeftOverFieldLinesOfAnIncompleteRecord) {
  const Table table = load_table("a:1\nb:2\nHeader : 41\nc:3\nd:4\ne:5\na:6\nb:7\n");
  EXPECT_EQ(table, (Table{u"1", u"2", u"41", u"3", u"4", u"5", u"65", u"6", u"7"}));
}

TEST(PlainLoader, CarriesThePendingHeaderValueIntoTheNextFile) {
  const std::vector<Table> tables = load_tables(
      {"a:1\nb:2\nHeader : 41\n", std::nullopt, "a:1\nb:2\nc:3\nd:4\ne:5\nf:6\n", "a\n"});
  ASSERT_EQ(tables.size(), 4U);
  EXPECT_EQ(tables[0].size(), 3U);
  EXPECT_TRUE(tables[1].empty());
  EXPECT_EQ(tables[2].at(6), u"65");
  EXPECT_TRUE(tables[3].empty());
}

TEST(PlainLoader, TakesANoteWithAColonForAField) {
  const Table table = load_table("Note: mind\na:1\nb:2\nHeader : 41\nc:3\nd:4\ne:5\n");
  EXPECT_EQ(table, (Table{u"mind", u"1", u"2", u"41", u"3", u"4", u"65", u"5"}));
}

TEST(PlainLoader, TakesAByteOrderMarkForAPartOfTheFirstKey) {
  const Table table = load_table("\xEF\xBB\xBFHeader : 41\na:1\nb:2\nc:3\nd:4\ne:5\n");
  EXPECT_EQ(table.at(0), u"41");
  EXPECT_EQ(table.at(6), u"");
}

TEST(PlainLoader, LeavesTheTableEmptyWithoutValidText) {
  EXPECT_TRUE(load_table("a:1\nb:2\nHeader : 41\nc:3\nd:\xFF\ne:5\n").empty());
  EXPECT_TRUE(load_table("").empty());
}

TEST(PlainLoader, DoesNotReadTheFilesOfAMissingSearchType) {
  std::vector<std::string> asked;
  const std::vector<Table> tables = load_edition(
      {"P", "PA", "", "LongAdv", "Raw.d", "", "1234", "1234Adv"}, [&](const std::string& name) {
        asked.push_back(name);
        return std::optional<std::string>("a:" + name);
      });
  EXPECT_EQ(asked, (std::vector<std::string>{"P", "PA", "Raw.d", ""}));
  EXPECT_EQ(tables[0], Table{u"P"});
  EXPECT_TRUE(tables[2].empty());
  EXPECT_TRUE(tables[3].empty());
  EXPECT_EQ(tables[4], Table{u"D"});
  EXPECT_EQ(tables[5], Table{u""});
  EXPECT_TRUE(tables[6].empty());
}

}  // namespace
}  // namespace plain
