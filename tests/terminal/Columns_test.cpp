#include "platform/terminal/Columns.h"

#include <gtest/gtest.h>

namespace norvo {
namespace {

TEST(DisplayColumns, AreTheLettersOfMostScripts) {
  EXPECT_EQ(display_columns(u""), 0U);
  EXPECT_EQ(display_columns(u"CARD 1"), 6U);
  EXPECT_EQ(display_columns(u"\u00C4\u0416\u03A9\u05D0\u0639\uFFFD"), 6U);
  EXPECT_EQ(display_columns(u"\uFF71\uFFDC\u4DC0\U0001F700"), 4U) << "narrow among wide ones";
}

TEST(DisplayColumns, AreTwoForALetterOfEastAsia) {
  EXPECT_EQ(display_columns(u"\u5199"), 2U);
  EXPECT_EQ(display_columns(u"\u3042\u30A2\uAC00\u3400\uF900\uFF21\u3000"), 14U);
  EXPECT_EQ(display_columns(u"\U00020000\U0003FFFD"), 4U);
}

TEST(DisplayColumns, AreTwoForAPicture) {
  EXPECT_EQ(display_columns(u"\U0001F4F7\U0001F680\U0001F9ED"), 6U);
}

TEST(DisplayColumns, AreNoneForAMarkOnALetter) {
  EXPECT_EQ(display_columns(u"o\u0308"), 1U);
  EXPECT_EQ(display_columns(u"\u304B\u3099"), 2U);
  EXPECT_EQ(display_columns(u"\u0E01\u0E34\u200D\uFE0F\U000E0100"), 1U);
}

TEST(DisplayColumns, AreOneForHalfAPair) {
  EXPECT_EQ(display_columns(Text{u'a', char16_t{0xD83D}, u'b', char16_t{0xDCF7}}), 4U);
  EXPECT_EQ(display_columns(Text{char16_t{0xD83D}}), 1U);
  EXPECT_EQ(display_columns(Text{char16_t{0xD83D}, char16_t{0xD83D}, char16_t{0xDCF7}}), 3U);
}

TEST(Columns, AreFilledWithBlanks) {
  EXPECT_EQ(filled_behind(u"\u5199", 4), "\xE5\x86\x99  ");
  EXPECT_EQ(filled_in_front(u"\u5199", 4), "  \xE5\x86\x99");
  EXPECT_EQ(filled_behind(u"abc", 3), "abc");
  EXPECT_EQ(filled_in_front(u"abcd", 3), "abcd");
}

}  // namespace
}  // namespace norvo
