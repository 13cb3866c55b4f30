// When a file is long enough: the limit in force at each sector.
#include <gtest/gtest.h>

#include "PhotoSearch.h"

namespace norvo::test {
namespace {

TEST(PhotoScan, AFileEndsWithTheSectorThatReachesItsLimit) {
  // The table's only record is the last one, too: its limit holds throughout.
  expect_found({.drawing = "aJaaaa", .table = table_of({jpeg(u"1536")})},
               {{"JPG/GND00001.JPG", "1 2 3"}});
}

TEST(PhotoScan, ALimitInsideASectorIsReachedByThatWholeSector) {
  expect_found({.drawing = "Jaaaa", .table = table_of({jpeg(u"1025")})},
               {{"JPG/GND00001.JPG", "0 1 2"}});
  expect_found({.drawing = "Jaaaa", .table = table_of({jpeg(u"1024")})},
               {{"JPG/GND00001.JPG", "0 1"}});
  expect_found({.drawing = "Jaaaa", .table = table_of({jpeg(u"1023")})},
               {{"JPG/GND00001.JPG", "0 1"}});
}

TEST(PhotoScan, AfterASearchInVainTheLimitIsThatOfTheLastRecord) {
  expect_found(
      {.drawing = "Jaaaaaa", .table = table_of({jpeg(u"1024"), gif(u"512"), png(u"2048")})},
      {{"JPG/GND00001.JPG", "0 1 2 3"}});
  expect_found(
      {.drawing = "Jaaaaaa", .table = table_of({jpeg(u"2048"), gif(u"9999"), png(u"512")})},
      {{"JPG/GND00001.JPG", "0 1"}});
}

TEST(PhotoScan, ZerosAfterAHeaderKeepTheLimitOfTheRecordThatMatched) {
  expect_found({.drawing = "Jzzzzz", .table = table_of({jpeg(u"1536"), png(u"512")})},
               {{"JPG/GND00001.JPG", "0 z z"}});
  expect_found({.drawing = "Jzzzzz", .table = table_of({jpeg(u"1024"), png(u"2560")})},
               {{"JPG/GND00001.JPG", "0 z"}});
}

TEST(PhotoScan, TheMatchedLimitHoldsUntilTheFirstSectorAfterTheZerosIsSearched) {
  // Sector 2 brings the last record's limit when 1,536 bytes stand: more than it allows.
  expect_found({.drawing = "Jzaaaa", .table = table_of({jpeg(u"4096"), png(u"1024")})},
               {{"JPG/GND00001.JPG", "0 z 2"}});
}

TEST(PhotoScan, ZerosAfterASearchInVainKeepTheLimitOfTheLastRecord) {
  expect_found({.drawing = "Jazzzz", .table = table_of({jpeg(u"1000000"), png(u"1536")})},
               {{"JPG/GND00001.JPG", "0 1 z"}});
  expect_found({.drawing = "Jazzzza", .table = table_of({jpeg(u"1536"), png(u"2560")})},
               {{"JPG/GND00001.JPG", "0 1 z z z"}});
}

TEST(PhotoScan, TheLimitIsTheMatchedRecordsAndNotTheFirstOnes) {
  expect_found({.drawing = "Pzzzzz", .table = table_of({jpeg(u"512"), png(u"1536"), gif(u"512")})},
               {{"PNG/GND00001.PNG", "0 z z"}});
}

TEST(PhotoScan, ALimitOfZeroEndsTheFileWithItsFirstSector) {
  expect_found({.drawing = "aJaa", .table = table_of({jpeg(u"0"), png()})},
               {{"JPG/GND00001.JPG", "1"}});
}

TEST(PhotoScan, ALimitOfZeroOfTheLastRecordEndsTheFileAtTheNextSearchInVain) {
  expect_found({.drawing = "Jzaa", .table = table_of({jpeg(), png(u"0")})},
               {{"JPG/GND00001.JPG", "0 z 2"}});
}

TEST(PhotoScan, AnEmptyLimitAndOneWithoutDigitsAreZero) {
  for (const Text& limit : {Text(u""), Text(u"many")}) {
    expect_found({.drawing = "Jaa", .table = table_of({jpeg(limit), png()})},
                 {{"JPG/GND00001.JPG", "0"}});
  }
}

TEST(PhotoScan, ALimitIsReadUpToItsFirstCharacterThatIsNoDigit) {
  expect_found({.drawing = "Jaaa", .table = table_of({jpeg(u" +1024 bytes")})},
               {{"JPG/GND00001.JPG", "0 1"}});
}

TEST(PhotoScan, ALimitOfOneSectorMakesFilesOfOneSectorWithoutOverlap) {
  expect_found({.drawing = "JJaJ", .table = table_of({jpeg(u"512")})},
               {{"JPG/GND00001.JPG", "0"}, {"JPG/GND00002.JPG", "1"}, {"JPG/GND00003.JPG", "3"}});
}

TEST(PhotoScan, ANegativeLimitIsTakenUnsignedAndNeverReached) {
  expect_found({.drawing = "Jaazaa", .table = table_of({jpeg(u"-1")})},
               {{"JPG/GND00001.JPG", "0 1 2 z 4 5 5"}});
  expect_found({.drawing = "Jzza", .table = table_of({jpeg(u"-1"), png(u"512")})},
               {{"JPG/GND00001.JPG", "0 z z 3"}});
  expect_found({.drawing = "Jzzaaa", .table = table_of({jpeg(u"1024"), png(u"-512")})},
               {{"JPG/GND00001.JPG", "0 z"}});
  expect_found({.drawing = "Jaaa", .table = table_of({jpeg(u"1024"), png(u"-512")})},
               {{"JPG/GND00001.JPG", "0 1 2 3 3"}});
}

TEST(PhotoScan, ALimitBeyondAllNumbersSticksAtTheLargest) {
  expect_found({.drawing = "Jaa", .table = table_of({jpeg(u"99999999999999999999999")})},
               {{"JPG/GND00001.JPG", "0 1 2 2"}});
}

TEST(PhotoScan, BytesCountFromTheNewHeaderOn) {
  // The second file takes its full limit although the first one had sectors already.
  expect_found({.drawing = "JaJaaa", .table = table_of({jpeg(u"1536")})},
               {{"JPG/GND00001.JPG", "0 1 2"}, {"JPG/GND00002.JPG", "2 3 4"}});
}

TEST(PhotoScan, ANewHeaderBringsTheLimitOfItsOwnRecord) {
  expect_found({.drawing = "JzPzz", .table = table_of({jpeg(u"2560"), png(u"1024")})},
               {{"JPG/GND00001.JPG", "0 z 2"}, {"PNG/GND00002.PNG", "2 z"}});
}

TEST(PhotoScan, AFileAfterAFinishedOneIsEndedByTheNextHeaderAgain) {
  expect_found(
      {.drawing = "JzJaJ", .table = table_of({jpeg(u"1024"), png()})},
      {{"JPG/GND00001.JPG", "0 z"}, {"JPG/GND00002.JPG", "2 3 4"}, {"JPG/GND00003.JPG", "4 4"}});
}

TEST(PhotoScan, AfterAFileIsLongEnoughItsSectorsBelongToNoFileUntilTheNextHeader) {
  expect_found({.drawing = "JaaaaPaaa", .table = table_of({jpeg(u"1024"), png(u"1024")})},
               {{"JPG/GND00001.JPG", "0 1"}, {"PNG/GND00002.PNG", "5 6"}});
}

}  // namespace
}  // namespace norvo::test
