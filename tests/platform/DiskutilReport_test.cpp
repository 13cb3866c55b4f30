#include "platform/macos/DiskutilReport.h"

#include <gtest/gtest.h>

#include <string>

namespace norvo {
namespace {

const std::string heading =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

std::string list_of(const std::string& entries) {
  return heading + "<plist version=\"1.0\">\n<dict>\n" + entries + "</dict>\n</plist>\n";
}

std::string text_entry(const std::string& key, const std::string& text) {
  return "\t<key>" + key + "</key>\n\t<string>" + text + "</string>\n";
}

std::string number_entry(const std::string& key, const std::string& number) {
  return "\t<key>" + key + "</key>\n\t<integer>" + number + "</integer>\n";
}

const std::string card = list_of(
    "\t<key>AESHardware</key>\n\t<false/>\n" + text_entry("BusProtocol", "USB") +
    text_entry("DeviceIdentifier", "disk2s1") + text_entry("DeviceNode", "/dev/disk2s1") +
    text_entry("FilesystemUserVisibleName", "MS-DOS (FAT32)") +
    number_entry("IOKitSize", "16007561216") + text_entry("MediaName", "") +
    "\t<key>OtherThings</key>\n\t<array>\n\t\t<string>DeviceIdentifier</string>\n\t\t<dict>\n"
    "\t\t\t<key>DeviceIdentifier</key>\n\t\t\t<string>disk99</string>\n\t\t</dict>\n\t</array>\n" +
    text_entry("ParentWholeDisk", "disk2") + "\t<key>RemovableMedia</key>\n\t<true/>\n" +
    text_entry("VolumeName", "Ann &amp; Bob\xC3\xA4"));

TEST(DiskutilReport, HasTheTextsAndNumbersOfARemovableCard) {
  DiskReport expected;
  expected.set("BusProtocol", u"USB");
  expected.set("DeviceIdentifier", u"disk2s1");
  expected.set("DeviceNode", u"/dev/disk2s1");
  expected.set("FilesystemUserVisibleName", u"MS-DOS (FAT32)");
  expected.set("IOKitSize", std::uint64_t{16007561216});
  expected.set("MediaName", u"");
  expected.set("ParentWholeDisk", u"disk2");
  expected.set("VolumeName", u"Ann & Bob\u00E4");
  EXPECT_EQ(read_diskutil_report(card), expected);
}

TEST(DiskutilReport, TellsADiskImageAndACd) {
  const auto report = read_diskutil_report(
      list_of(text_entry("BusProtocol", "Disk Image") +
              text_entry("OpticalDeviceType", "CD-ROM, CD-R, CD-RW, DVD-ROM")));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->text("BusProtocol"), u"Disk Image");
  EXPECT_EQ(report->text("OpticalDeviceType"), u"CD-ROM, CD-R, CD-RW, DVD-ROM");
}

TEST(DiskutilReport, AnEmptyNameIsNotAnAbsentOne) {
  EXPECT_EQ(read_diskutil_report(list_of(text_entry("VolumeName", "")))->text("VolumeName"), u"");
  EXPECT_EQ(read_diskutil_report(list_of("<key>VolumeName</key><string/>"))->text("VolumeName"),
            u"");
  const auto without = read_diskutil_report(list_of(text_entry("DeviceIdentifier", "disk2s1")));
  EXPECT_EQ(without->text("VolumeName"), std::nullopt);
  EXPECT_EQ(without->number("IOKitSize"), std::nullopt);
}

TEST(DiskutilReport, AnEmptyDictionaryIsAReport) {
  EXPECT_EQ(read_diskutil_report(list_of("")), DiskReport());
}

TEST(DiskutilReport, BlanksArePartOfAName) {
  EXPECT_EQ(read_diskutil_report(list_of(text_entry("VolumeName", "  ")))->text("VolumeName"),
            u"  ");
  EXPECT_EQ(read_diskutil_report(list_of(text_entry("VolumeName", " A ")))->text("VolumeName"),
            u" A ");
}

TEST(DiskutilReport, ANameInPiecesIsPutTogether) {
  EXPECT_EQ(read_diskutil_report(list_of(text_entry("VolumeName", "A<![CDATA[<b>]]>&lt;&#x43;")))
                ->text("VolumeName"),
            u"A<b><C");
}

TEST(DiskutilReport, NumbersThatAreNoneAreAbsent) {
  for (const char* number : {"", "-1", "+1", " 1", "1x", "0x10", "1.5", "18446744073709551616"}) {
    const auto report = read_diskutil_report(list_of(number_entry("IOKitSize", number)));
    ASSERT_TRUE(report) << number;
    EXPECT_EQ(report->number("IOKitSize"), std::nullopt) << number;
  }
  EXPECT_EQ(read_diskutil_report(list_of(number_entry("IOKitSize", "18446744073709551615")))
                ->number("IOKitSize"),
            18446744073709551615U);
}

TEST(DiskutilReport, OfEqualKeysTheFirstCounts) {
  EXPECT_EQ(
      read_diskutil_report(list_of(text_entry("VolumeName", "A") + number_entry("VolumeName", "1") +
                                   text_entry("VolumeName", "B")))
          ->text("VolumeName"),
      u"A");
}

TEST(DiskutilReport, OutputThatIsNoPropertyListIsRefused) {
  for (const std::string& text :
       {std::string(), std::string("Could not find disk: disk9\n"), heading,
        heading + "<plist version=\"1.0\"/>", heading + "<plist><array/></plist>",
        heading + "<plist><string>x</string></plist>", heading + "<dict></dict>",
        list_of("<key>VolumeName</key>"), list_of("<string>CARD</string>"),
        list_of("<key>A</key><key>B</key><string>C</string>"),
        list_of("<key>A</key><string>C</string><true/>"), list_of("<key>A</key><string>C")}) {
    EXPECT_EQ(read_diskutil_report(text), std::nullopt) << text;
  }
}

TEST(DiskutilReport, ABinaryPropertyListIsRefused) {
  const std::string binary(
      "bplist00\xD1\x01\x02\x5AVolumeName\x54"
      "CARD\x08\x0B\x16\0\0\0\0",
      32);
  EXPECT_EQ(read_diskutil_report(binary), std::nullopt);
}

TEST(DiskutilReport, EveryCutReportIsRefused) {
  const std::size_t end = card.find("</plist>") + std::string("</plist>").size();
  for (std::size_t size = 0; size < end; ++size) {
    ASSERT_EQ(read_diskutil_report(card.substr(0, size)), std::nullopt) << size;
  }
  EXPECT_TRUE(read_diskutil_report(card.substr(0, end)));
}

TEST(DiskutilReport, EntitiesOfItsOwnAreNotReplaced) {
  std::string bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE plist [\n<!ENTITY a \"aaaaaaaaaa\">\n";
  for (char name = 'b'; name <= 'z'; ++name) {
    bomb += std::string("<!ENTITY ") + name + " \"";
    for (int i = 0; i < 10; ++i) bomb += std::string("&") + static_cast<char>(name - 1) + ";";
    bomb += "\">\n";
  }
  bomb += "<!ENTITY file SYSTEM \"file:///etc/passwd\">\n]>\n<plist><dict>" +
          text_entry("VolumeName", "&z;") + text_entry("MediaName", "&file;") + "</dict></plist>";
  const auto report = read_diskutil_report(bomb);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->text("VolumeName"), u"&z;");
  EXPECT_EQ(report->text("MediaName"), u"&file;");
}

TEST(DiskutilReport, DeepNestingIsHarmless) {
  std::string deep;
  for (int i = 0; i < 30000; ++i) deep += "<array>";
  for (int i = 0; i < 30000; ++i) deep += "</array>";
  const auto report =
      read_diskutil_report(list_of("<key>Deep</key>" + deep + text_entry("VolumeName", "A")));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->text("VolumeName"), u"A");
}

TEST(DiskutilReport, TooLongAReportIsRefused) {
  std::string text = card;
  text.resize(diskutil_output_limit, ' ');
  EXPECT_TRUE(read_diskutil_report(text));
  text += ' ';
  EXPECT_EQ(read_diskutil_report(text), std::nullopt);
}

TEST(DiskutilReport, BytesInAnotherEncodingAreReplaced) {
  EXPECT_EQ(read_diskutil_report(list_of(text_entry("VolumeName", "K\xE4se")))->text("VolumeName"),
            u"K\uFFFDse");
}

TEST(RawDiskNode, IsTheRawOneOfTheIdentifier) {
  EXPECT_EQ(raw_disk_node(u"disk2s1"), "/dev/rdisk2s1");
}

}  // namespace
}  // namespace norvo
