// The rules that hold for every signature master, see docs/signatures.md.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "MasterFile.h"

namespace shipped {
namespace {

// Headers below four bytes hit noise too often. An entry here needs a reason beside it.
const std::set<std::string> kShortHeaders = {};

// The headers that start several types on purpose. Nothing at a fixed place tells these types
// apart, and a user who ticks a single one of them gets all such files under that name.
const std::set<std::string> kSharedHeaders = {
    "1A45DFA3",          // Matroska and WebM of unusual layout
    "49492A0008000000",  // TIFF based raw files of unusual layout, little endian
    "4D4D002A00000008",  // the same, big endian
};

constexpr unsigned long long kMebibyte = 1ULL << 20;
constexpr unsigned long long kGibibyte = 1ULL << 30;

std::string place(const Record& record) {
  return record.kind + " line " + std::to_string(record.line) + " (" + record.extension + " " +
         record.header + " at " + record.offset + ")";
}

std::string pair_of(const Record& one, const Record& other) {
  return place(one) + " and " + place(other);
}

bool only_of(const std::string& text, const std::string& allowed) {
  return !text.empty() && text.find_first_not_of(allowed) == std::string::npos;
}

bool is_utf8(const std::string& text) {
  std::size_t following = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (following > 0) {
      if ((byte & 0xC0U) != 0x80U) return false;
      --following;
    } else if (byte >= 0x80U) {
      if (byte < 0xC2U || byte > 0xF4U) return false;
      following = byte < 0xE0U ? 1 : byte < 0xF0U ? 2 : 3;
    }
  }
  return following == 0;
}

class EveryMaster : public testing::TestWithParam<std::tuple<std::string, std::string>> {
 protected:
  std::string kind() const { return std::get<0>(GetParam()); }
  std::string scan() const { return std::get<1>(GetParam()); }
  std::string text() const { return read_master(kind(), scan()); }
  std::vector<Record> records() const { return records_of(kind(), scan()); }
};

// A photo header starts one file, a header of the other searches can start several.
class MasterOfSharedHeaders : public EveryMaster {};

TEST_P(EveryMaster, HoldsWholeRecordsOfSixNamedFields) {
  const std::vector<FieldLine> fields = field_lines_of(text());
  ASSERT_FALSE(fields.empty()) << master_path(kind(), scan());
  EXPECT_EQ(fields.size() % record_keys().size(), 0U);
  for (std::size_t at = 0; at < fields.size(); ++at) {
    const std::string& expected = record_keys()[at % record_keys().size()];
    ASSERT_EQ(fields[at].key, expected + " ") << "line " << fields[at].line;
  }
}

TEST_P(EveryMaster, HasTheHeaderKeyExactlyInTheThirdLineOnly) {
  std::size_t field = 0;
  for (const std::string& line : lines_of(text())) {
    if (line.find(':') == std::string::npos) continue;
    EXPECT_EQ(line.rfind("Header :", 0) == 0, field % 6 == 2) << line;
    ++field;
  }
}

TEST_P(EveryMaster, IsCleanText) {
  const std::string whole = text();
  ASSERT_FALSE(whole.empty());
  EXPECT_TRUE(is_utf8(whole));
  EXPECT_EQ(whole.back(), '\n');
  EXPECT_NE(whole.rfind("\xEF\xBB\xBF", 0), 0U) << "byte order mark";
  for (const std::string& line : lines_of(whole)) {
    EXPECT_LE(line.size(), 100U) << line;
    EXPECT_EQ(line.find_first_of("\t\r"), std::string::npos) << line;
    EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
    const bool comment_or_blank = line.empty() || line.front() == '#';
    EXPECT_EQ(line.find(':') == std::string::npos, comment_or_blank)
        << "a comment begins with # and holds no colon; anything else is a field: " << line;
  }
}

TEST_P(EveryMaster, HasNoFullStopInAnyValue) {
  for (const FieldLine& field : field_lines_of(text())) {
    EXPECT_FALSE(field.value.empty()) << "line " << field.line;
    EXPECT_EQ(field.value.find('.'), std::string::npos) << "line " << field.line;
    EXPECT_EQ(field.value.find(':'), std::string::npos) << "line " << field.line;
  }
}

TEST_P(EveryMaster, HasExtensionsOfCapitalsAndDigits) {
  for (const Record& record : records()) {
    EXPECT_TRUE(only_of(record.extension, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789")) << place(record);
    EXPECT_LE(record.extension.size(), 8U) << place(record);
    EXPECT_EQ(record.kind, kind()) << place(record);
  }
}

TEST_P(EveryMaster, HasHeadersOfAtLeastFourBytesInCapitalHexadecimal) {
  for (const Record& record : records()) {
    EXPECT_TRUE(only_of(record.header, "0123456789ABCDEF")) << place(record);
    EXPECT_EQ(record.header.size() % 2, 0U) << place(record);
    EXPECT_GE(record.header.size(), kShortHeaders.count(record.header) != 0 ? 4U : 8U)
        << place(record);
  }
}

TEST_P(EveryMaster, GatesOnTheFirstByteOfItsHeader) {
  for (const Record& record : records()) {
    const auto gate = std::stoul(record.header.substr(0, 2), nullptr, 16);
    EXPECT_EQ(gate, record.header_bytes.at(0)) << place(record);
  }
}

TEST_P(EveryMaster, HasHeadersThatAreMoreThanZeros) {
  for (const Record& record : records()) {
    const auto& bytes = record.header_bytes;
    const auto zeros = std::count(bytes.begin(), bytes.end(), 0);
    EXPECT_LT(zeros, static_cast<std::ptrdiff_t>(bytes.size())) << place(record);
  }
}

TEST_P(EveryMaster, HasPlacesWhereAHeaderCanMatch) {
  for (const Record& record : records()) {
    EXPECT_TRUE(only_of(record.offset, "0123456789")) << place(record);
    EXPECT_NE(record.offset.front(), '0') << place(record);
    EXPECT_LT(record.first_byte, 507U) << place(record);
    EXPECT_LE(record.first_byte + record.header_bytes.size(), kSectorSize) << place(record);
  }
}

TEST_P(EveryMaster, HasSizesOfWholeSectors) {
  for (const Record& record : records()) {
    ASSERT_TRUE(only_of(record.size, "0123456789")) << place(record);
    const unsigned long long size = std::stoull(record.size);
    EXPECT_EQ(size % kSectorSize, 0U) << place(record);
    EXPECT_GE(size, 4 * kMebibyte) << place(record);
    EXPECT_LE(size, 64 * kGibibyte) << place(record);
  }
}

TEST_P(EveryMaster, HasNoHeaderThatHidesALaterOne) {
  const std::vector<Record> table = records();
  for (std::size_t i = 0; i < table.size(); ++i) {
    for (std::size_t j = i + 1; j < table.size(); ++j) {
      if (!always_matches_too(table[i], table[j])) continue;
      const bool shared = kind() != "photo" && kSharedHeaders.count(table[i].header) != 0 &&
                          table[i].header == table[j].header &&
                          table[i].extension != table[j].extension;
      EXPECT_TRUE(shared) << pair_of(table[i], table[j]);
    }
  }
}

TEST_P(MasterOfSharedHeaders, StartsSeveralFilesOnlyWhereThatIsMeant) {
  const std::vector<Record> table = records();
  for (std::size_t i = 0; i < table.size(); ++i) {
    for (std::size_t j = i + 1; j < table.size(); ++j) {
      if (!starts_too(table[i], table[j])) continue;
      EXPECT_NE(table[i].extension, table[j].extension) << pair_of(table[i], table[j]);
      EXPECT_EQ(table[i].header, table[j].header) << pair_of(table[i], table[j]);
      EXPECT_EQ(kSharedHeaders.count(table[i].header), 1U) << pair_of(table[i], table[j]);
    }
  }
}

TEST_P(EveryMaster, NeverMatchesNoiseOrZeros) {
  const std::vector<Record> table = records();
  std::mt19937 random(20240229);
  Sector sector(kSectorSize, 0);
  EXPECT_EQ(first_match(table, sector), table.size());
  for (int round = 0; round < 20000; ++round) {
    for (auto& byte : sector) byte = static_cast<std::uint8_t>(random() & 0xFFU);
    ASSERT_EQ(first_match(table, sector), table.size()) << place(table[first_match(table, sector)]);
  }
}

std::string name_of(const testing::TestParamInfo<std::tuple<std::string, std::string>>& instance) {
  return std::get<0>(instance.param) + "_" + std::get<1>(instance.param);
}

INSTANTIATE_TEST_SUITE_P(Shipped, EveryMaster,
                         testing::Combine(testing::Values("photo", "video", "raw", "audio"),
                                          testing::Values("general", "thorough")),
                         name_of);

INSTANTIATE_TEST_SUITE_P(Shipped, MasterOfSharedHeaders,
                         testing::Combine(testing::Values("video", "raw", "audio"),
                                          testing::Values("general", "thorough")),
                         name_of);

class EveryKind : public testing::TestWithParam<std::string> {};

TEST_P(EveryKind, HasNoHeaderOfTheGeneralScanInTheThoroughScan) {
  for (const Record& general : records_of(GetParam(), "general")) {
    for (const Record& thorough : records_of(GetParam(), "thorough")) {
      EXPECT_FALSE(always_matches_too(general, thorough)) << pair_of(general, thorough);
      EXPECT_FALSE(always_matches_too(thorough, general)) << pair_of(general, thorough);
    }
  }
}

TEST_P(EveryKind, DescribesAnExtensionOnceForEachHeader) {
  for (const std::string scan : {"general", "thorough"}) {
    std::set<std::tuple<std::string, std::string, std::string>> seen;
    for (const Record& record : records_of(GetParam(), scan)) {
      EXPECT_TRUE(seen.insert({record.extension, record.header, record.offset}).second)
          << place(record);
    }
  }
}

// The description of an extension's first record is what a person reads in the list; those of the
// records behind it may tell them apart.
TEST_P(EveryKind, ShowsAPlainNameForEachExtension) {
  const std::vector<std::string> notes = {"version", "byte order", "layout",  "opening",
                                          "first",   "blocks of",  "bits",    "pictures ",
                                          "packed",  "clock",      "streamed"};
  std::set<std::string> seen;
  for (const std::string scan : {"general", "thorough"}) {
    for (const Record& record : records_of(GetParam(), scan)) {
      if (!seen.insert(record.extension).second) continue;
      for (const std::string& note : notes) {
        EXPECT_EQ(record.description.find(note), std::string::npos)
            << place(record) << ": " << record.description;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shipped, EveryKind, testing::Values("photo", "video", "raw", "audio"),
                         [](const auto& instance) { return instance.param; });

unsigned long long last_size(const std::string& kind, const std::string& scan) {
  const std::vector<Record> table = records_of(kind, scan);
  return table.empty() ? 0 : std::stoull(table.back().size);
}

// The size of the last record limits nearly every photo: below 150 million bytes it cuts common
// TIFF and PSD files, above 512 MiB a photo without a successor costs too much room.
TEST(PhotoLimit, OfTheGeneralScanHoldsRealPhotos) {
  EXPECT_GE(last_size("photo", "general"), 210'000'000U);
  EXPECT_LE(last_size("photo", "general"), 512 * kMebibyte);
}

// Rare pictures are small and mostly grow to the limit; a film frame of 51 million bytes must fit.
TEST(PhotoLimit, OfTheThoroughScanIsLower) {
  EXPECT_GE(last_size("photo", "thorough"), 52'000'000U);
  EXPECT_LE(last_size("photo", "thorough"), 128 * kMebibyte);
}

void expect_sizes(const std::string& kind, const std::map<std::string, unsigned long long>& least) {
  std::set<std::string> found;
  for (const Record& record : records_of(kind, "general")) {
    const auto entry = least.find(record.extension);
    if (entry == least.end()) continue;
    found.insert(record.extension);
    EXPECT_GE(std::stoull(record.size), entry->second) << place(record);
  }
  EXPECT_EQ(found.size(), least.size()) << kind;
}

TEST(SizeOfEachType, HoldsTheLongestRealFiles) {
  expect_sizes("video", {{"MP4", 32 * kGibibyte},
                         {"MOV", 32 * kGibibyte},
                         {"MXF", 32 * kGibibyte},
                         {"MTS", 32 * kGibibyte},
                         {"AVI", 4 * kGibibyte},
                         {"3GP", 4 * kGibibyte},
                         {"VOB", kGibibyte}});
  expect_sizes("raw", {{"RAF", 210'000'000},
                       {"3FR", 210'000'000},
                       {"IIQ", 210'000'000},
                       {"RW2", 350'000'000},
                       {"ARW", 130'000'000},
                       {"NEF", 100'000'000}});
  expect_sizes("audio", {{"WAV", 4 * kGibibyte}, {"FLAC", kGibibyte}, {"MP3", 430'000'000}});
}

}  // namespace
}  // namespace shipped
