#include "platform/terminal/documents/Completions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace norvo {
namespace {

using testing::HasSubstr;

// Signs that mean something to a shell, and a value whose name nobody has described.
constexpr std::array<Option, 1> odd{
    {{"--odd", "WHATEVER", R"(it's [a] b:c \d $(e) `f`)", nullptr}}};

TEST(Completions, BashProposesNothingForAValueThatNobodyDescribed) {
  EXPECT_THAT(bash_completion(odd), HasSubstr("    --odd)\n      return\n      ;;\n"));
  EXPECT_THAT(bash_completion(odd), HasSubstr("choices=(--odd)\n"));
}

TEST(Completions, ZshTakesADescriptionAsItStands) {
  EXPECT_THAT(zsh_completion(odd),
              HasSubstr(R"('--odd=[it'\''s \[a\] b\:c \\d $(e) `f`]:WHATEVER: ')"));
}

TEST(Completions, FishTakesADescriptionAsItStands) {
  EXPECT_THAT(fish_completion(odd), HasSubstr(R"(-l odd -x -d 'it\'s [a] b:c \\d $(e) `f`')"));
}

}  // namespace
}  // namespace norvo
