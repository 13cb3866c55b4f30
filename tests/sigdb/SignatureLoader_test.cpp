// How signature text becomes a table.

#include <gtest/gtest.h>

#include <string>

#include "sigdb/SignatureTables.h"

namespace norvo {
namespace {

SignatureTable loaded(TextView text) {
  SignatureTable table;
  SignatureLoader().append_records(text, table);
  return table;
}

// The value that a field line with `value` after its colon is stored as.
Text stored(const Text& value) {
  const SignatureTable table = loaded(u"key :" + value);
  EXPECT_EQ(table.size(), 1U);
  return table.empty() ? Text() : table.front();
}

// Entry 6 of a record whose third line is `header_line`.
Text gate_of(const Text& header_line) {
  const SignatureTable table =
      loaded(u"Ext : .jpg\nSize : 1\n" + header_line + u"\nPos : 1\nKind :\nInfo : x\n");
  EXPECT_EQ(table.size(), 7U);
  return table.empty() ? Text() : table.back();
}

constexpr TextView jpeg_record =
    u"Extension : .jpg\nMaximum size : 5000000\nHeader : FFD8FFE0\nPosition : nn\n"
    u"Kind : any\nDescription : JPEG image\n";
const SignatureTable jpeg_table{u"JPG", u"5000000",    u"FFD8FFE0", u"nn",
                                u"any", u"JPEG image", u"255"};

TEST(SignatureLoader, MakesSevenEntriesOfSixFieldLines) {
  EXPECT_EQ(loaded(jpeg_record), jpeg_table);
}

TEST(SignatureLoader, AppendsToWhatTheTableHolds) {
  SignatureTable table{u"before"};
  SignatureLoader().append_records(jpeg_record, table);
  EXPECT_EQ(table.size(), 8U);
  EXPECT_EQ(table[0], u"before");
  EXPECT_EQ(table[1], u"JPG");
}

TEST(SignatureLoader, MakesNothingOfAnEmptyText) {
  EXPECT_EQ(loaded(u""), SignatureTable{});
}

TEST(SignatureLoader, TakesALastLineWithoutALineFeed) {
  EXPECT_EQ(loaded(jpeg_record.substr(0, jpeg_record.size() - 1)), jpeg_table);
}

TEST(SignatureLoader, IgnoresLinesWithoutAColon) {
  Text text(jpeg_record);
  text = u"# Pictures\n\n   \n" + Replace_char_in_string(text, u"\n", u"\nno field, no colon\n\n");
  EXPECT_EQ(loaded(text), jpeg_table);
}

TEST(SignatureLoader, TakesALineWithAColonForAFieldAndShiftsWhatFollows) {
  const SignatureTable table = loaded(u"Note: first\n" + Text(jpeg_record));
  const SignatureTable shifted{u"first", u"JPG", u"5000000", u"FFD8FFE0",
                               u"nn",    u"any", u"255",     u"JPEG image"};
  EXPECT_EQ(table, shifted);
}

TEST(SignatureLoader, LoadsCarriageReturnsBeforeLineFeedsTheSame) {
  EXPECT_EQ(loaded(Replace_char_in_string(jpeg_record, u"\n", u"\r\n")), jpeg_table);
}

TEST(SignatureLoader, SeparatesLinesAtLineFeedsOnly) {
  for (const TextView other : {u"\r", u"\v", u"\f", u"\u0085", u"\u2028", u"\u2029"}) {
    const SignatureTable table = loaded(u"a : 1" + Text(other) + u"b : 2\nc : 3");
    const SignatureTable expected{u"1" + Text(other) + u"b : 2", u"3"};
    EXPECT_EQ(table, expected);
  }
}

TEST(SignatureLoader, TakesTheValueFromTheFirstColonOn) {
  EXPECT_EQ(stored(u" 10:20:30 "), u"10:20:30");
  EXPECT_EQ(stored(u":"), u":");
  EXPECT_EQ(stored(u""), u"");
  EXPECT_EQ(loaded(u":x"), SignatureTable{u"x"});
}

TEST(SignatureLoader, TrimsTheValueAtBothEnds) {
  EXPECT_EQ(stored(u" \t\u00A0JPEG image\u3000\u0085\r"), u"JPEG image");
  EXPECT_EQ(stored(u" \t "), u"");
}

TEST(SignatureLoader, CutsAValueAtItsFirstFullStopAndTurnsTheRestToUpperCase) {
  EXPECT_EQ(stored(u" .jpg"), u"JPG");
  EXPECT_EQ(stored(u" .Jpeg"), u"JPEG");
  EXPECT_EQ(stored(u" Photo v2.1"), u"1");
  EXPECT_EQ(stored(u" .tar.gz"), u"TAR.GZ");
  EXPECT_EQ(stored(u" a. b c"), u" B C");
  EXPECT_EQ(stored(u" end."), u"");
  EXPECT_EQ(stored(u" ."), u"");
  EXPECT_EQ(stored(u" .\u00E4\u00DF"), u"\u00C4SS");
}

TEST(SignatureLoader, KeepsAValueWithoutAFullStopInItsOwnCase) {
  EXPECT_EQ(stored(u" jpeg"), u"jpeg");
  EXPECT_EQ(stored(u" JpEg Image"), u"JpEg Image");
}

TEST(SignatureLoader, TransformsEveryFieldAlike) {
  const SignatureTable table =
      loaded(u"1 : a.b\n2 : 1.5\nHeader : FF.d8\n4 : n.n\n5 : c.d\n6 : v2.x\n");
  const SignatureTable expected{u"B", u"5", u"D8", u"N", u"D", u"X", u"255"};
  EXPECT_EQ(table, expected);
}

TEST(SignatureLoader, WritesTheFirstHeaderByteInDecimal) {
  EXPECT_EQ(gate_of(u"Header : FFD8FFE0"), u"255");
  EXPECT_EQ(gate_of(u"Header : ffd8"), u"255");
  EXPECT_EQ(gate_of(u"Header : 0A0B"), u"10");
  EXPECT_EQ(gate_of(u"Header : 00"), u"0");
  EXPECT_EQ(gate_of(u"Header : 7"), u"");
  EXPECT_EQ(gate_of(u"Header :FFD8"), u"255");
  EXPECT_EQ(gate_of(u"Header :\t  FFD8 \r"), u"255");
}

TEST(SignatureLoader, CountsBadHeaderDigitsAsZero) {
  EXPECT_EQ(gate_of(u"Header : G1"), u"1");
  EXPECT_EQ(gate_of(u"Header : 1G"), u"16");
  EXPECT_EQ(gate_of(u"Header : 0x1F"), u"0");
  EXPECT_EQ(gate_of(u"Header : F F"), u"240");
  EXPECT_EQ(gate_of(u"Header : \u0146\u0146"), u"255");
}

TEST(SignatureLoader, TakesTheHeaderByteBeforeTheValueIsCut) {
  EXPECT_EQ(gate_of(u"Header : 41.42"), u"65");
}

TEST(SignatureLoader, KnowsTheHeaderLineByItsExactBeginning) {
  for (const TextView line : {u"Header: FF", u"header : FF", u"HEADER : FF", u" Header : FF",
                              u"Header  : FF", u"Header\t: FF", u"Headers : FF", u"My Header : FF",
                              u"Header\u00A0: FF", u"\uFEFFHeader : FF"}) {
    EXPECT_EQ(gate_of(Text(line)), u"") << utf8_from_text(line);
  }
  const SignatureTable table = loaded(u"Header: FF");
  EXPECT_EQ(table, SignatureTable{u"FF"});
}

TEST(SignatureLoader, AByteOrderMarkBelongsToTheFirstKey) {
  EXPECT_EQ(loaded(u"\uFEFF" + Text(jpeg_record)), jpeg_table);
  EXPECT_EQ(loaded(u"\uFEFFHeader : FF\nb :\nc :\nd :\ne :\nf :\n").back(), u"");
}

TEST(SignatureLoader, TakesTheHeaderLineAtAnyPlaceOfTheRecord) {
  EXPECT_EQ(loaded(u"Header : 11\nb :\nc :\nd :\ne :\nf :\n").back(), u"17");
  EXPECT_EQ(loaded(u"a :\nb :\nc :\nd :\ne :\nHeader : 11\n").back(), u"17");
}

TEST(SignatureLoader, TakesTheMostRecentHeaderLine) {
  EXPECT_EQ(loaded(u"Header : 11\nb :\nHeader : 22\nd :\ne :\nf :\n").back(), u"34");
}

TEST(SignatureLoader, ForgetsTheHeaderByteWithEachCompletedRecord) {
  const SignatureTable table = loaded(Text(jpeg_record) + u"a :\nb :\nHeader: D8\nd :\ne :\nf :\n");
  ASSERT_EQ(table.size(), 14U);
  EXPECT_EQ(table[6], u"255");
  EXPECT_EQ(table[9], u"D8");
  EXPECT_EQ(table[13], u"");
}

TEST(SignatureLoader, AShortHeaderValueIsStoredAndLeavesThePendingByteAsItWas) {
  const SignatureTable alone = loaded(u"a :\nb :\nHeader : F\nd :\ne :\nf :\n");
  EXPECT_EQ(alone, (SignatureTable{u"", u"", u"F", u"", u"", u"", u""}));
  const SignatureTable second = loaded(u"a :\nHeader : 11\nHeader : F\nd :\nHeader :\nf :\n");
  EXPECT_EQ(second, (SignatureTable{u"", u"11", u"F", u"", u"", u"", u"17"}));
}

TEST(SignatureLoader, KeepsTheLeftOverFieldsOfAnIncompleteLastRecord) {
  const SignatureTable table = loaded(Text(jpeg_record) + u"Ext : .png\nSize : 7\n");
  SignatureTable expected = jpeg_table;
  expected.insert(expected.end(), {u"PNG", u"7"});
  EXPECT_EQ(table, expected);
}

TEST(SignatureLoader, CarriesThePendingHeaderByteToTheNextText) {
  SignatureLoader loader;
  SignatureTable first;
  SignatureTable second;
  loader.append_records(u"Ext : .png\nHeader : 89504E47\n", first);
  loader.append_records(u"a :\nb :\nc :\nd :\ne :\nf :\na :\nb :\nc :\nd :\ne :\nf :\n", second);
  EXPECT_EQ(first, (SignatureTable{u"PNG", u"89504E47"}));
  ASSERT_EQ(second.size(), 14U);
  EXPECT_EQ(second[6], u"137");
  EXPECT_EQ(second[13], u"");
}

TEST(SignatureLoader, CountsTheFieldsOfEachTextAnew) {
  SignatureLoader loader;
  SignatureTable first;
  SignatureTable second;
  loader.append_records(u"a : 1\nb : 2\n", first);
  loader.append_records(jpeg_record, second);
  EXPECT_EQ(second, jpeg_table);
}

}  // namespace
}  // namespace norvo
