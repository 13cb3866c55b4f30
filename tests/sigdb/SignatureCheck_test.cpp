#include "sigdb/SignatureCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace norvo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

auto fault(std::size_t line, const std::string& words) {
  return AllOf(Field(&SignatureFault::line, line), Field(&SignatureFault::fault, HasSubstr(words)));
}

const std::array<std::string, 6> sound_fields{"Extension : .jpg", "Maximum size : 5000000",
                                              "Header : FFD8FF",  "Position : 1",
                                              "Kind : any",       "Description : JPEG image"};

// A sound record with one field line (from 1) replaced.
std::string record_with(std::size_t line, const std::string& field) {
  std::string text;
  for (std::size_t i = 0; i < sound_fields.size(); ++i) {
    text += (i + 1 == line ? field : sound_fields[i]) + "\n";
  }
  return text;
}

std::string sound_record() {
  return record_with(0, "");
}

TEST(SignatureCheck, FindsNoFaultInASoundFile) {
  EXPECT_THAT(check_signature_file(""), IsEmpty());
  EXPECT_THAT(check_signature_file("# A heading\n\n" + sound_record() + "\n" + sound_record()),
              IsEmpty());
}

TEST(SignatureCheck, AcceptsWhateverMayStandInAField) {
  for (const char* extension : {"Ext : jpg", "Ext : .Jpeg", "Ext:JPG", "Ext : .\xC3\xA4"}) {
    EXPECT_THAT(check_signature_file(record_with(1, extension)), IsEmpty()) << extension;
  }
  EXPECT_THAT(check_signature_file(record_with(2, "Size : 1")), IsEmpty());
  EXPECT_THAT(check_signature_file(record_with(3, "Header :ffd8FF0a")), IsEmpty());
  for (const char* position : {"Pos : nn", "Pos : 2", "Pos : 507"}) {
    EXPECT_THAT(check_signature_file(record_with(4, position)), IsEmpty()) << position;
  }
  EXPECT_THAT(check_signature_file(record_with(5, "Kind :")), IsEmpty());
  EXPECT_THAT(check_signature_file(record_with(6, "Info : a:b, c/d")), IsEmpty());
}

TEST(SignatureCheck, TakesCarriageReturns) {
  std::string text;
  for (const std::string& field : sound_fields) text += field + "\r\n";
  EXPECT_THAT(check_signature_file(text), IsEmpty());
}

TEST(SignatureCheck, NamesAShortHeader) {
  EXPECT_THAT(check_signature_file(record_with(3, "Header :")),
              ElementsAre(fault(3, "fewer than two")));
  EXPECT_THAT(check_signature_file(record_with(3, "Header : F")),
              testing::Contains(fault(3, "fewer than two")));
}

TEST(SignatureCheck, NamesAnIncompleteLastRecordByItsFirstLine) {
  EXPECT_THAT(check_signature_file(sound_record() + "\nExt : .png\nSize : 7\n"),
              ElementsAre(fault(8, "incomplete")));
  const std::string five = sound_record().substr(0, sound_record().find("Description"));
  EXPECT_THAT(check_signature_file(five), ElementsAre(fault(1, "incomplete")));
}

TEST(SignatureCheck, NamesALineWithAColonThatIsNoField) {
  const std::vector<SignatureFault> faults = check_signature_file("Note: first\n" + sound_record());
  EXPECT_THAT(faults, testing::Contains(fault(7, "incomplete")));
  EXPECT_THAT(faults, testing::Contains(fault(4, "another field")));
}

TEST(SignatureCheck, NamesAFullStopThatCutsAValue) {
  EXPECT_THAT(check_signature_file(record_with(6, "Info : Photo v2.1")),
              ElementsAre(fault(6, "full stop")));
  EXPECT_THAT(check_signature_file(record_with(5, "Kind : .x")),
              ElementsAre(fault(5, "full stop")));
  EXPECT_THAT(check_signature_file(record_with(1, "Ext : .tar.gz")),
              ElementsAre(fault(1, "full stop")));
  EXPECT_THAT(check_signature_file(record_with(1, "Ext : a.jpg")),
              ElementsAre(fault(1, "full stop")));
  EXPECT_THAT(check_signature_file(record_with(2, "Size : 1.5")),
              testing::Contains(fault(2, "full stop")));
}

TEST(SignatureCheck, NamesAnEmptyExtension) {
  EXPECT_THAT(check_signature_file(record_with(1, "Ext :")),
              ElementsAre(fault(1, "extension is empty")));
}

TEST(SignatureCheck, NamesAnExtensionThatIsOnlyADot) {
  EXPECT_THAT(check_signature_file(record_with(1, "Ext : .")),
              ElementsAre(fault(1, "extension is empty")));
}

TEST(SignatureCheck, NamesASlashInAnExtension) {
  EXPECT_THAT(check_signature_file(record_with(1, "Ext : .a/b")), ElementsAre(fault(1, "slash")));
}

TEST(SignatureCheck, NamesASizeThatIsNoPositiveNumber) {
  for (const char* size : {"Size :", "Size : 0", "Size : 00", "Size : -5", "Size : +5",
                           "Size : 5 MB", "Size : many"}) {
    EXPECT_THAT(check_signature_file(record_with(2, size)), ElementsAre(fault(2, "maximum size")))
        << size;
  }
}

TEST(SignatureCheck, NamesAThirdLineThatIsNoHeaderLine) {
  for (const char* header : {"Header: FFD8", "header : FFD8", " Header : FFD8"}) {
    EXPECT_THAT(check_signature_file(record_with(3, header)), ElementsAre(fault(3, "\"Header :\"")))
        << header;
  }
}

TEST(SignatureCheck, NamesAHeaderLineInAnotherPlace) {
  EXPECT_THAT(check_signature_file(record_with(5, "Header : FF")),
              ElementsAre(fault(5, "\"Header :\"")));
}

TEST(SignatureCheck, NamesBadHeaderDigits) {
  EXPECT_THAT(check_signature_file(record_with(3, "Header : FFD")), ElementsAre(fault(3, "odd")));
  EXPECT_THAT(check_signature_file(record_with(3, "Header : FG")),
              ElementsAre(fault(3, "hexadecimal")));
  EXPECT_THAT(check_signature_file(record_with(3, "Header : FF D8 ")),
              testing::Contains(fault(3, "hexadecimal")));
  EXPECT_THAT(check_signature_file(record_with(3, "Header : 0xFF")),
              ElementsAre(fault(3, "hexadecimal")));
}

TEST(SignatureCheck, NamesAPositionThatIsNoneOrIsNeverFound) {
  for (const char* position : {"Pos :", "Pos : NN", "Pos : n", "Pos : -1", "Pos : 1 2", "Pos : 0",
                               "Pos : 508", "Pos : 512", "Pos : 99999999999999999999"}) {
    EXPECT_THAT(check_signature_file(record_with(4, position)), ElementsAre(fault(4, "position")))
        << position;
  }
}

TEST(SignatureCheck, NamesALineThatIsNotUtf8) {
  EXPECT_THAT(check_signature_file("# fine\n# \xFF\n" + sound_record()),
              ElementsAre(fault(2, "UTF-8")));
}

TEST(SignatureCheck, GivesTheFaultsInTheOrderOfTheirLines) {
  const std::vector<SignatureFault> faults =
      check_signature_file("Ext :\nSize : none\nHeader : XY\nPos : x\nKind : a.b\nInfo : c.d\n" +
                           record_with(1, "Ext : a/b") + "Ext : .png\n# \xC3\n");
  std::vector<std::size_t> lines;
  for (const SignatureFault& fault : faults) lines.push_back(fault.line);
  EXPECT_THAT(lines, ElementsAre(1, 2, 3, 4, 5, 6, 7, 13, 14));
}

TEST(SignatureCheck, SaysEachFaultInOneSentenceWithoutAFullStop) {
  const std::vector<SignatureFault> faults = check_signature_file(
      "Ext :\nSize : none\nHeader : XYZ\nPos : x\nKind : a.b\nInfo :\nExt : x\nsize \xFF");
  EXPECT_GE(faults.size(), 7U);
  for (const SignatureFault& fault : faults) {
    EXPECT_EQ(fault.fault.find('\n'), std::string::npos) << fault.fault;
    EXPECT_NE(fault.fault.back(), '.') << fault.fault;
  }
}

}  // namespace
}  // namespace norvo
