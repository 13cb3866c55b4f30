#include "platform/linux/Person.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace norvo {
namespace {

TEST(WhoAsked, IsWhoUsedPkexecAndElseWhoUsedSudo) {
  EXPECT_EQ(who_asked("1000", std::nullopt), "1000");
  EXPECT_EQ(who_asked("1000", "1001"), "1000");
  EXPECT_EQ(who_asked(std::nullopt, "1001"), "1001");
  EXPECT_EQ(who_asked(std::nullopt, std::nullopt), std::nullopt);
}

// What is no number of a person is refused later, and never taken for nobody.
TEST(WhoAsked, IsNobodyWhenRootUsedSudo) {
  EXPECT_EQ(who_asked(std::nullopt, "0"), std::nullopt);
  EXPECT_EQ(who_asked("0", std::nullopt), "0");
  for (const char* text : {"", "00", "-1", "x"}) EXPECT_EQ(who_asked(std::nullopt, text), text);
}

TEST(PersonNumber, IsADecimalNumberOfAnAccount) {
  EXPECT_EQ(person_number("1"), 1U);
  EXPECT_EQ(person_number("1000"), 1000U);
  EXPECT_EQ(person_number("4294967294"), 4294967294U);
}

TEST(PersonNumber, IsNeverRoot) {
  EXPECT_EQ(person_number("0"), std::nullopt);
  EXPECT_EQ(person_number("00"), std::nullopt);
  EXPECT_EQ(person_number("-0"), std::nullopt);
}

TEST(PersonNumber, IsNotReadFromAnythingElse) {
  for (const std::string_view text :
       {"", " ", "-1", "+1000", " 1000", "1000 ", "1000\n", "01000", "0x3e8", "1e3", "1000x",
        "root", "1000,0", "4294967295", "4294967296", "8589935592", "18446744073709551617"}) {
    EXPECT_EQ(person_number(text), std::nullopt) << text;
  }
  EXPECT_EQ(person_number(std::string_view("1000\0", 5)), std::nullopt);
}

TEST(PersonWithNumber, IsTheAccountOfTheSystem) {
  const passwd* const entry = getpwuid(getuid());
  ASSERT_NE(entry, nullptr);
  const std::optional<Person> person = person_with_number(getuid());
  ASSERT_TRUE(person);
  EXPECT_EQ(person->uid, getuid());
  EXPECT_EQ(person->gid, entry->pw_gid);
  EXPECT_EQ(person->name, entry->pw_name);
  EXPECT_EQ(person->home, entry->pw_dir);
  EXPECT_TRUE(person->shell.starts_with('/'));
}

TEST(PersonWithNumber, IsNobodyForANumberWithoutAnAccount) {
  uid_t unused = 3'999'999'999;
  while (getpwuid(unused) != nullptr) --unused;
  EXPECT_EQ(person_with_number(unused), std::nullopt);
}

}  // namespace
}  // namespace norvo
