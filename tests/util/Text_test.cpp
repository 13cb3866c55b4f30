#include "util/Text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace norvo {
namespace {

constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

TEST(ReplaceCharInString, ReplacesEveryOccurrenceOfATextOfAnyLength) {
  EXPECT_EQ(Replace_char_in_string(u"a-b-c", u"-", u"+"), u"a+b+c");
  EXPECT_EQ(Replace_char_in_string(u"one two one", u"one", u"three"), u"three two three");
  EXPECT_EQ(Replace_char_in_string(u"a\r\nb", u"\r\n", u"%0A"), u"a%0Ab");
  EXPECT_EQ(Replace_char_in_string(u"a b c", u" ", u""), u"abc");
}

TEST(ReplaceCharInString, GoesLeftToRightWithoutOverlap) {
  EXPECT_EQ(Replace_char_in_string(u"aaaaa", u"aa", u"b"), u"bba");
}

TEST(ReplaceCharInString, DoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(Replace_char_in_string(u"aa", u"a", u"aa"), u"aaaa");
  EXPECT_EQ(Replace_char_in_string(u"xab", u"xa", u"x"), u"xb");
}

TEST(ReplaceCharInString, IsLiteralAndCaseSensitive) {
  EXPECT_EQ(Replace_char_in_string(u"aA.", u"A", u"x"), u"ax.");
  EXPECT_EQ(Replace_char_in_string(u"abc.", u".", u"x"), u"abcx");
}

TEST(ReplaceCharInString, KeepsATextWithoutAnOccurrence) {
  EXPECT_EQ(Replace_char_in_string(u"abc", u"d", u"x"), u"abc");
  EXPECT_EQ(Replace_char_in_string(u"abc", u"abcd", u"x"), u"abc");
  EXPECT_EQ(Replace_char_in_string(u"", u"a", u"x"), u"");
}

TEST(ReplaceCharInString, ReplacesNothingForAnEmptySearch) {
  EXPECT_EQ(Replace_char_in_string(u"abc", u"", u"x"), u"abc");
}

TEST(TrimStr, RemovesWhiteSpaceAndLineEndsAtBothEndsOnly) {
  EXPECT_EQ(Trim_Str(u" \t a b\r\n "), u"a b");
  EXPECT_EQ(Trim_Str(u"a \n b"), u"a \n b");
  EXPECT_EQ(Trim_Str(u"ab"), u"ab");
  EXPECT_EQ(Trim_Str(u" a"), u"a");
  EXPECT_EQ(Trim_Str(u"a "), u"a");
}

TEST(TrimStr, LeavesNothingOfWhiteSpaceAlone) {
  EXPECT_EQ(Trim_Str(u" \t\r\n "), u"");
  EXPECT_EQ(Trim_Str(u""), u"");
}

class WhiteSpace : public testing::TestWithParam<char16_t> {};

TEST_P(WhiteSpace, IsTrimmed) {
  const Text space(1, GetParam());
  EXPECT_TRUE(is_white_space(GetParam()));
  EXPECT_EQ(Trim_Str(space + u"a" + space + u"b" + space), u"a" + space + u"b");
}

INSTANTIATE_TEST_SUITE_P(Each, WhiteSpace,
                         testing::Values(u'\t', u'\n', u'\v', u'\f', u'\r', u' ', u'\u0085',
                                         u'\u00A0', u'\u1680', u'\u2000', u'\u2001', u'\u2002',
                                         u'\u2003', u'\u2004', u'\u2005', u'\u2006', u'\u2007',
                                         u'\u2008', u'\u2009', u'\u200A', u'\u2028', u'\u2029',
                                         u'\u202F', u'\u205F', u'\u3000'));

class OtherCharacter : public testing::TestWithParam<char16_t> {};

TEST_P(OtherCharacter, IsNotTrimmed) {
  const Text character(1, GetParam());
  EXPECT_FALSE(is_white_space(GetParam()));
  EXPECT_EQ(Trim_Str(character), character);
}

INSTANTIATE_TEST_SUITE_P(Each, OtherCharacter,
                         testing::Values(u'\0', u'\b', u'\u000E', u'\u001F', u'!', u'\u0084',
                                         u'\u0086', u'\u009F', u'\u00A1', u'\u1FFF', u'\u2010',
                                         u'\u2027', u'\u202A', u'\u3001', u'\uFEFF', u'a'));

TEST(FindStr, FindsALiteralPartAnywhere) {
  EXPECT_TRUE(Find_Str(u"ABC", u"A"));
  EXPECT_TRUE(Find_Str(u"ABC", u"BC"));
  EXPECT_TRUE(Find_Str(u"ABC", u"ABC"));
  EXPECT_FALSE(Find_Str(u"ABC", u"CB"));
  EXPECT_FALSE(Find_Str(u"ABC", u"ABCD"));
  EXPECT_FALSE(Find_Str(u"ABC", u"."));
}

TEST(FindStr, IsCaseSensitive) {
  EXPECT_FALSE(Find_Str(u"ABC", u"b"));
  EXPECT_FALSE(Find_Str(u"abc", u"B"));
}

TEST(FindStr, FindsNoEmptyNeedleAndNothingInAnEmptyText) {
  EXPECT_FALSE(Find_Str(u"ABC", u""));
  EXPECT_FALSE(Find_Str(u"", u""));
  EXPECT_FALSE(Find_Str(u"", u"A"));
}

TEST(FindStrCaseInsensitive, IgnoresCase) {
  EXPECT_TRUE(Find_Str_Case_Insensitive(u"Photo.JPG", u".jpg"));
  EXPECT_TRUE(Find_Str_Case_Insensitive(u"photo.jpg", u"PHOTO"));
  EXPECT_TRUE(Find_Str_Case_Insensitive(u"\u00C4RGER", u"\u00E4rg"));
  EXPECT_FALSE(Find_Str_Case_Insensitive(u"Photo", u"image"));
}

TEST(FindStrCaseInsensitive, FindsNoEmptyNeedleAndNothingInAnEmptyText) {
  EXPECT_FALSE(Find_Str_Case_Insensitive(u"ABC", u""));
  EXPECT_FALSE(Find_Str_Case_Insensitive(u"", u""));
  EXPECT_FALSE(Find_Str_Case_Insensitive(u"", u"a"));
}

TEST(LeftStr, TakesTheFirstCharacters) {
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", 2), u"AB");
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", 0), u"");
}

TEST(LeftStr, KeepsATextThatIsNotLonger) {
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", 5), u"ABCDE");
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", largest), u"ABCDE");
  EXPECT_EQ(Left_Str_substringToIndex(u"", 1), u"");
}

TEST(LeftStr, CountsANegativeNumberAsZero) {
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", -1), u"");
  EXPECT_EQ(Left_Str_substringToIndex(u"ABCDE", smallest), u"");
}

TEST(RightStr, TakesTheLastCharacters) {
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 2), u"DE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 4), u"BCDE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 0), u"");
}

TEST(RightStr, KeepsATextThatIsNotLonger) {
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 5), u"ABCDE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", 9), u"ABCDE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", largest), u"ABCDE");
  EXPECT_EQ(Right_Str_substringFromIndex(u"", 0), u"");
}

TEST(RightStr, CountsANegativeNumberAsZero) {
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", -1), u"");
  EXPECT_EQ(Right_Str_substringFromIndex(u"ABCDE", smallest), u"");
}

TEST(ReadStrFromIndex, ReadsFromTheIndexToTheEnd) {
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", 0), u"ABCDE");
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", 3), u"DE");
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", 5), u"");
  EXPECT_EQ(Read_Str_FromIndex(u"", 0), u"");
}

TEST(ReadStrFromIndex, IsEmptyBeyondTheLengthAndBelowZero) {
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", 6), u"");
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", largest), u"");
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", -1), u"");
  EXPECT_EQ(Read_Str_FromIndex(u"ABCDE", smallest), u"");
}

TEST(ReadStrUptoIndex, ReadsUpToTheIndex) {
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", 0), u"");
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", 3), u"ABC");
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", 5), u"ABCDE");
}

TEST(ReadStrUptoIndex, IsEmptyBeyondTheLengthAndBelowZero) {
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", 6), u"");
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", largest), u"");
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", -1), u"");
  EXPECT_EQ(Read_Str_Upto_Index(u"ABCDE", smallest), u"");
}

TEST(Texts, AreCountedInCodeUnits) {
  const Text face = u"\U0001F600";  // two code units
  EXPECT_EQ(Left_Str_substringToIndex(face, 1), face.substr(0, 1));
  EXPECT_EQ(Right_Str_substringFromIndex(face, 1), face.substr(1));
  EXPECT_EQ(Read_Str_FromIndex(face, 2), u"");
  EXPECT_EQ(Read_Str_Upto_Index(face, 3), u"");
}

TEST(Decimal, HasNoLeadingZeros) {
  EXPECT_EQ(decimal(0), u"0");
  EXPECT_EQ(decimal(7), u"7");
  EXPECT_EQ(decimal(255), u"255");
  EXPECT_EQ(decimal(std::numeric_limits<std::uint64_t>::max()), u"18446744073709551615");
}

TEST(Text, WhatIsDisplayedHoldsNoControlAndNoDirectionCharacters) {
  EXPECT_EQ(displayable(u"a\x1B[2Jb\u202Ec\u2066d\u061Ce\u2028f\u0085g"),
            u"a\uFFFD[2Jb\uFFFDc\uFFFDd\uFFFDe\uFFFDf\uFFFDg");
  EXPECT_EQ(displayable(u"\u00DCber \u5199\u771F.JPG"), u"\u00DCber \u5199\u771F.JPG");
}

}  // namespace
}  // namespace norvo
