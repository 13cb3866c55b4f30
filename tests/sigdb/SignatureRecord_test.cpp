#include "sigdb/SignatureRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace norvo {
namespace {

SignatureTable two_records() {
  return {u"JPG", u"5000", u"FFD8FF", u"nn", u"any", u"JPEG image", u"255",
          u"PNG", u"7000", u"89504E", u"5",  u"",    u"PNG image",  u"137"};
}

SignatureTable record_with(std::size_t entry, const Text& value) {
  SignatureTable table = two_records();
  table.resize(SignatureRecord::stride);
  table.at(entry) = value;
  return table;
}

TEST(SignatureRecord, NamesTheEntriesOfEachRecord) {
  const SignatureTable table = two_records();
  const SignatureRecord first(table, 0);
  EXPECT_EQ(first.extension(), u"JPG");
  EXPECT_EQ(first.maximum_size(), 5000);
  EXPECT_EQ(first.header(), u"FFD8FF");
  EXPECT_EQ(first.position_rule(), u"nn");
  EXPECT_EQ(first.description(), u"JPEG image");
  EXPECT_EQ(first.gate_byte(), 255);

  const SignatureRecord second(table, 1);
  EXPECT_EQ(second.extension(), u"PNG");
  EXPECT_EQ(second.maximum_size(), 7000);
  EXPECT_EQ(second.header(), u"89504E");
  EXPECT_EQ(second.position_rule(), u"5");
  EXPECT_EQ(second.position(), 5);
  EXPECT_EQ(second.description(), u"PNG image");
  EXPECT_EQ(second.gate_byte(), 137);
}

TEST(SignatureRecord, TheMaximumSizeHas64BitsAndSticksAtTheLimits) {
  const auto maximum = [](const Text& text) {
    const SignatureTable table = record_with(1, text);
    return SignatureRecord(table, 0).maximum_size();
  };
  EXPECT_EQ(maximum(u"8589934592"), 8589934592);
  EXPECT_EQ(maximum(u"99999999999999999999"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(maximum(u"-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(maximum(u""), 0);
  EXPECT_EQ(maximum(u"large"), 0);
  EXPECT_EQ(maximum(u"10 MB"), 10);
}

TEST(SignatureRecord, ThePositionHas32BitsAndSticksAtTheLimits) {
  const auto position = [](const Text& text) {
    const SignatureTable table = record_with(3, text);
    return SignatureRecord(table, 0).position();
  };
  EXPECT_EQ(position(u"512"), 512);
  EXPECT_EQ(position(u"-3"), -3);
  EXPECT_EQ(position(u"4294967297"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(position(u"-4294967297"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(position(u"nn"), 0);
  EXPECT_EQ(position(u""), 0);
}

TEST(SignatureRecord, TheGateByteHas32BitsAndIsZeroWhenEmpty) {
  const auto gate = [](const Text& text) {
    const SignatureTable table = record_with(6, text);
    return SignatureRecord(table, 0).gate_byte();
  };
  EXPECT_EQ(gate(u"0"), 0);
  EXPECT_EQ(gate(u""), 0);
  EXPECT_EQ(gate(u"256"), 256);
  EXPECT_EQ(gate(u"-1"), -1);
  EXPECT_EQ(gate(u"4294967551"), std::numeric_limits<std::int32_t>::max());
}

TEST(SignatureRecord, AnEntryBeyondTheTableRaises) {
  SignatureTable table = two_records();
  table.resize(9);  // extension and maximum size of the second record
  const SignatureRecord broken(table, 1);
  EXPECT_EQ(broken.extension(), u"PNG");
  EXPECT_EQ(broken.maximum_size(), 7000);
  EXPECT_THROW(static_cast<void>(broken.header()), MissingEntry);
  EXPECT_THROW(static_cast<void>(broken.position_rule()), MissingEntry);
  EXPECT_THROW(static_cast<void>(broken.position()), MissingEntry);
  EXPECT_THROW(static_cast<void>(broken.description()), MissingEntry);
  EXPECT_THROW(static_cast<void>(broken.gate_byte()), MissingEntry);
}

TEST(SignatureRecord, OnlyTheGateByteIsMissingAfterSixEntries) {
  SignatureTable table = two_records();
  table.resize(6);
  const SignatureRecord broken(table, 0);
  EXPECT_EQ(broken.description(), u"JPEG image");
  EXPECT_THROW(static_cast<void>(broken.gate_byte()), MissingEntry);
}

TEST(SignatureTable, CountsStartedAndWholeRecords) {
  const auto counts = [](std::size_t entries) {
    const SignatureTable table(entries);
    return std::pair(started_records(table), whole_records(table));
  };
  EXPECT_EQ(counts(0), std::pair(std::size_t{0}, std::size_t{0}));
  EXPECT_EQ(counts(1), std::pair(std::size_t{1}, std::size_t{0}));
  EXPECT_EQ(counts(6), std::pair(std::size_t{1}, std::size_t{0}));
  EXPECT_EQ(counts(7), std::pair(std::size_t{1}, std::size_t{1}));
  EXPECT_EQ(counts(8), std::pair(std::size_t{2}, std::size_t{1}));
  EXPECT_EQ(counts(14), std::pair(std::size_t{2}, std::size_t{2}));
}

}  // namespace
}  // namespace norvo
