#include "util/LetterCase.h"

#include <gtest/gtest.h>

#include <clocale>

namespace norvo {
namespace {

TEST(UpperCase, TurnsLettersAndLeavesTheRest) {
  EXPECT_EQ(upper_case(u"jpeg"), u"JPEG");
  EXPECT_EQ(upper_case(u"Jp2 (a/b) 09_z"), u"JP2 (A/B) 09_Z");
  EXPECT_EQ(upper_case(u"JPEG"), u"JPEG");
  EXPECT_EQ(upper_case(u""), u"");
}

TEST(UpperCase, TurnsLettersBeyondAscii) {
  EXPECT_EQ(upper_case(u"\u00E4\u00F7\u00FF\u017E\u03B1\u0446"),
            u"\u00C4\u00F7\u0178\u017D\u0391\u0426");
  EXPECT_EQ(upper_case(u"stra\u00DFe"), u"STRASSE");
}

TEST(UpperCase, LeavesSurrogatesAlone) {
  const Text face = u"a\U0001F600b";
  EXPECT_EQ(upper_case(face), u"A\U0001F600B");
}

TEST(UpperCase, IsTheSameInEveryLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
  EXPECT_EQ(upper_case(u"i\u00E4"), u"I\u00C4");
  std::setlocale(LC_ALL, before.c_str());
}

TEST(FoldCase, MakesLettersThatDifferOnlyInCaseEqual) {
  EXPECT_EQ(fold_case(u"JpEg"), fold_case(u"jPeG"));
  EXPECT_EQ(fold_case(u"\u00C4\u0426"), fold_case(u"\u00E4\u0446"));
  EXPECT_EQ(fold_case(u"\u03C3"), fold_case(u"\u03C2"));  // the two small sigmas
  EXPECT_NE(fold_case(u"a"), fold_case(u"b"));
  EXPECT_NE(fold_case(u"a"), fold_case(u"\u00E4"));
}

}  // namespace
}  // namespace norvo
