#include "platform/terminal/FoundTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace norvo {
namespace {

TEST(FoundTable, SaysInOneSentenceThatNothingWasFound) {
  const FoundTable table;
  EXPECT_EQ(table.files(), 0U);
  EXPECT_EQ(table.text(), "  Nothing was found.\n");
}

TEST(FoundTable, AddsUpTheFilesOfEachTypeAndPass) {
  FoundTable table;
  table.add(Pass::thorough, "JPG", 5);
  table.add(Pass::general, "PNG", 700);
  table.add(Pass::general, "JPG", 1000000);
  table.add(Pass::general, "JPG", 500000);
  EXPECT_EQ(table.files(), 4U);
  EXPECT_EQ(table.text(),
            "  Search     Type             Files      Size\n"
            "  General    JPG                  2    1.5 MB\n"
            "  General    PNG                  1     700 B\n"
            "  Thorough   JPG                  1       5 B\n"
            "  Total                           4    1.5 MB\n");
}

TEST(FoundTable, KeepsTypesThatDifferInCaseApart) {
  FoundTable table;
  table.add(Pass::general, "jpg", 1);
  table.add(Pass::general, "JPG", 2);
  EXPECT_EQ(table.text(),
            "  Search     Type             Files      Size\n"
            "  General    JPG                  1       2 B\n"
            "  General    jpg                  1       1 B\n"
            "  Total                           2       3 B\n");
}

TEST(FoundTable, ATypeInLettersOfSeveralBytesTakesItsColumnsOnly) {
  FoundTable table;
  table.add(Pass::general, "\xC3\x84\xE3\x81\x82", 1);
  EXPECT_EQ(table.text(),
            "  Search     Type             Files      Size\n"
            "  General    \xC3\x84\xE3\x81\x82                  1       1 B\n"
            "  Total                           1       1 B\n");
}

TEST(FoundTable, IsTheSameHoweverOftenItIsRead) {
  FoundTable table;
  table.add(Pass::thorough, "A", 1);
  table.add(Pass::general, "B", 1);
  const std::string first = table.text();
  EXPECT_EQ(table.text(), first);
  table.add(Pass::thorough, "A", 1);
  EXPECT_EQ(table.files(), 3U);
  EXPECT_NE(table.text(), first);
}

TEST(ReadableSize, HasDecimalUnitsWithOneDigitAfterThePoint) {
  EXPECT_EQ(readable_size(0), "0 B");
  EXPECT_EQ(readable_size(812), "812 B");
  EXPECT_EQ(readable_size(999), "999 B");
  EXPECT_EQ(readable_size(1000), "1.0 KB");
  EXPECT_EQ(readable_size(1024), "1.0 KB");
  EXPECT_EQ(readable_size(4100000), "4.1 MB");
  EXPECT_EQ(readable_size(2500000000), "2.5 GB");
  EXPECT_EQ(readable_size(1000000000000), "1.0 TB");
  EXPECT_EQ(readable_size(1500000000000000), "1.5 PB");
}

TEST(ReadableSize, GoesToTheNextUnitBeforeItWouldShowAThousand) {
  EXPECT_EQ(readable_size(999900), "999.9 KB");
  EXPECT_EQ(readable_size(999999), "1.0 MB");
  EXPECT_EQ(readable_size(999999999), "1.0 GB");
}

TEST(ReadableSize, StaysInTheLargestUnit) {
  EXPECT_EQ(readable_size(std::numeric_limits<std::uint64_t>::max()), "18446.7 PB");
}

}  // namespace
}  // namespace norvo
