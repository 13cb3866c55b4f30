// What the shipped tables make of real openings of files, and of what stands inside files.

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "MasterFile.h"
#include "ShippedTablesSamples.h"

namespace shipped {
namespace {

using Types = std::vector<std::string>;

struct Case {
  std::string kind;
  std::string scan;
  std::span<const Sample> samples;
};

void PrintTo(const Case& tables, std::ostream* out) {
  *out << tables.kind << " " << tables.scan;
}

// Types of which the Thorough scan brings back pieces too: they repeat their header inside, and
// only the General scan asks for what is true of the beginning alone.
const std::set<std::string_view> kPieces = {"MP3", "AAC", "MTS", "M2TS"};

constexpr std::string_view kNikonRaw =
    "49492A00 08000000 1B00 FE000400 01000000 01000000 00010400 01000000 A0000000 01010400 "
    "01000000 78000000";

std::string type_of(const std::vector<Record>& table, std::string_view bytes) {
  const std::size_t at = first_match(table, sector_of(bytes));
  return at == table.size() ? "none" : table[at].extension;
}

std::string type_and_line(const Record& record) {
  return record.extension + " in line " + std::to_string(record.line);
}

Types types_of(const std::string& kind, std::string_view bytes) {
  return started_types(records_of(kind, "general"), sector_of(bytes));
}

// A photo header starts one file, whatever other headers look like.
Types files_of(const Case& tables, const std::vector<Record>& table, const Sample& sample) {
  if (tables.kind == "photo") return {type_of(table, sample.bytes)};
  return started_types(table, sector_of(sample.bytes));
}

class EveryTable : public testing::TestWithParam<Case> {};

TEST_P(EveryTable, RecognisesItsFilesAsTheRightType) {
  const std::vector<Record> table = records_of(GetParam().kind, GetParam().scan);
  for (const Sample& sample : GetParam().samples) {
    EXPECT_EQ(type_of(table, sample.bytes), sample.extension)
        << sample.origin << " " << sample.bytes;
  }
}

TEST_P(EveryTable, LeavesTheFilesOfTheOtherScanAlone) {
  const bool general = GetParam().scan == "general";
  const auto other = records_of(GetParam().kind, general ? "thorough" : "general");
  for (const Sample& sample : GetParam().samples) {
    if (general && kPieces.contains(sample.extension)) continue;
    EXPECT_EQ(type_of(other, sample.bytes), "none") << sample.bytes;
  }
}

TEST_P(EveryTable, HasASampleOfEveryType) {
  const std::vector<Record> table = records_of(GetParam().kind, GetParam().scan);
  std::set<std::string> seen;
  for (const Sample& sample : GetParam().samples) {
    const Types types = files_of(GetParam(), table, sample);
    seen.insert(types.begin(), types.end());
  }
  for (const Record& record : table)
    EXPECT_TRUE(seen.contains(record.extension)) << type_and_line(record);
}

TEST_P(EveryTable, StartsOneFileOfATypeAtMost) {
  const std::vector<Record> table = records_of(GetParam().kind, GetParam().scan);
  for (const Sample& sample : GetParam().samples) {
    const Types types = files_of(GetParam(), table, sample);
    EXPECT_EQ(std::set<std::string>(types.begin(), types.end()).size(), types.size())
        << sample.bytes;
    EXPECT_LE(types.size(), 30U) << "more files than can be open at once";
  }
}

INSTANTIATE_TEST_SUITE_P(Shipped, EveryTable,
                         testing::Values(Case{"photo", "general", photo_general_samples()},
                                         Case{"photo", "thorough", photo_thorough_samples()},
                                         Case{"video", "general", video_general_samples()},
                                         Case{"video", "thorough", video_thorough_samples()},
                                         Case{"raw", "general", raw_general_samples()},
                                         Case{"raw", "thorough", raw_thorough_samples()},
                                         Case{"audio", "general", audio_general_samples()},
                                         Case{"audio", "thorough", audio_thorough_samples()}),
                         [](const auto& instance) {
                           return instance.param.kind + "_" + instance.param.scan;
                         });

TEST(SharedOpening, OfUnusualMatroskaStartsBothTypes) {
  EXPECT_EQ(types_of("video", "1A45DFA3 8B"), (Types{"MKV", "WEBM"}));
}

TEST(SharedOpening, OfCommonMatroskaStartsOneType) {
  EXPECT_EQ(types_of("video", "1A45DFA3 9F @21 428284 'webm'"), Types{"WEBM"});
  EXPECT_EQ(types_of("video", "1A45DFA3 A3 @21 428288 'matroska'"), Types{"MKV"});
  EXPECT_EQ(types_of("video", "1A45DFA3 01 @28 428288 'matroska'"), Types{"MKV"});
  EXPECT_EQ(types_of("video", "1A45DFA3 93 428288 'matroska'"), Types{"MKV"});
}

TEST(SharedOpening, OfUnknownTiffBasedRawStartsTheWholeGroup) {
  EXPECT_EQ(types_of("raw", "49492A00 08000000 1200 0F010200"),
            (Types{"NEF", "ARW", "DNG", "PEF", "SRW", "NRW", "3FR", "GPR", "SR2", "SRF"}));
  EXPECT_EQ(types_of("raw", "4D4D002A 00000008 0012 010F0002"),
            (Types{"NEF", "DNG", "PEF", "DCR", "KDC", "ERF", "MEF", "MOS", "FFF"}));
}

TEST(SharedOpening, OfKnownRawStartsOneType) {
  EXPECT_EQ(types_of("raw", "49495500 18000000 88E774D8"), Types{"RW2"});
  EXPECT_EQ(types_of("raw", "49495500 08000000"), Types{"RAW"});
  EXPECT_EQ(types_of("raw", "49492A00 10000000 'CR' 0200"), Types{"CR2"});
  EXPECT_EQ(types_of("raw", kNikonRaw), Types{"NEF"});
  EXPECT_EQ(types_of("raw", "49492A00 08000000 3400 FE000400 01000000 00000000"), Types{"DNG"});
  EXPECT_EQ(types_of("raw", "4D4D002A 00000008 0012 01000004 00000001"), Types{"PEF"});
}

TEST(SharedOpening, IsTakenByATypeThatIsTickedAlone) {
  for (const std::string ticked : {"NEF", "ARW", "DNG", "PEF", "SRW", "NRW", "3FR", "GPR"}) {
    std::vector<Record> table = records_of("raw", "general");
    std::erase_if(table, [&](const Record& record) { return record.extension != ticked; });
    EXPECT_EQ(started_types(table, sector_of(kNikonRaw)), Types{ticked});
  }
}

// What stands on sector borders inside a file must not end that file in the General scan.
TEST(InsideAFile, NothingOfTheGeneralVideoScanMatches) {
  const std::vector<Record> table = records_of("video", "general");
  EXPECT_EQ(type_of(table, "000001BA 44002D84 1C010189 C3F80000 01E0"), "none") << "later pack";
  EXPECT_EQ(type_of(table, "000001BA 4409B01D 44010189 C3F80000 01BB0012"), "none") << "navigation";
  EXPECT_EQ(type_of(table, "060E2B34 0205 0101 0D010201 0103 0400"), "none") << "MXF body";
  EXPECT_EQ(type_of(table, "060E2B34 0205 0101 0D010201 0104 0400"), "none") << "MXF footer";
  EXPECT_EQ(type_of(table, "'RIFF' 00100000 'AVIXLIST'"), "none") << "second part of a large AVI";
  EXPECT_EQ(type_of(table, "00001000 'moov' 0000006C 'mvhd'"), "none") << "index at the end";
  EXPECT_EQ(type_of(table, "01000000 'mdat'"), "none") << "data on a cluster border";
  EXPECT_EQ(type_of(table, "47400012 0000B00D 0001C1"), "none") << "later transport table";
  EXPECT_EQ(type_of(table, "00123400 47400010 0000B011 0000C100"), "none") << "later AVCHD table";
  EXPECT_EQ(type_of(table, "1F0700BF F8787878 @80 3F07008F F0FF1304 8080C0"), "none") << "DV frame";
  EXPECT_EQ(type_of(table, "'OggS' 00 00 @28 80 'xheora'"), "none") << "Ogg page";
}

TEST(InsideAFile, NothingOfTheGeneralAudioScanMatches) {
  const std::vector<Record> table = records_of("audio", "general");
  EXPECT_EQ(type_of(table, "FFFB9064 00000000 00000000"), "none") << "MP3 frame";
  EXPECT_EQ(type_of(table, "FFF15080 2E7FFC21 1B8C"), "none") << "AAC frame";
  EXPECT_EQ(type_of(table, "'wvpk' 78270000 1004 0000 98090400 22560000 22560000"), "none");
  EXPECT_EQ(type_of(table, "'OggS' 00 00 @28 112233"), "none") << "Ogg page";
}

TEST(InsideAFile, NothingOfTheGeneralPhotoScanMatches) {
  const std::vector<Record> table = records_of("photo", "general");
  EXPECT_EQ(type_of(table, "FFD8FFC0 0011 08"), "none") << "strip of a TIFF";
  EXPECT_EQ(type_of(table, "FFD8FFC4 01A2 00"), "none") << "tile of a DNG";
  EXPECT_EQ(type_of(table, "'BM and other words'"), "none") << "text";
  EXPECT_EQ(type_of(table, "'RIFF' 00100000 'AVI LIST'"), "none") << "video";
  EXPECT_EQ(type_of(table, "00000018 'ftypmp42'"), "none") << "video";
  EXPECT_EQ(type_of(table, "'IDAT' 789C"), "none") << "chunk of a PNG";
}

}  // namespace
}  // namespace shipped
