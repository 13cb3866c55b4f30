#include "platform/linux/LsblkReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/LsblkSample.h"

namespace norvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LsblkReport laptop() {
  return *LsblkReport::parse(test::laptop_lsblk);
}

// The report of a list of devices in JSON, without their brackets.
LsblkReport report_of(const std::string& devices) {
  return LsblkReport::parse("{\"blockdevices\":[" + devices + "]}").value();
}

TEST(LsblkReport, ListsMountPathsInLsblksOrder) {
  EXPECT_THAT(laptop().mount_paths(),
              ElementsAre("/snap/core/1", "/boot/efi", "/", "/srv/bound", "/media/ann/HOLIDAY",
                          "/media/ann/ALBUM", "/media/ann/9", "/media/ann/MEDIA"));
}

TEST(LsblkReport, RemovableVolumesLieOnDisksThatCanBeTakenOut) {
  EXPECT_THAT(laptop().removable_mount_paths(),
              ElementsAre("/media/ann/HOLIDAY", "/media/ann/ALBUM", "/media/ann/9"));
}

TEST(LsblkReport, APartitionIsReportedWithItsDisksBusAndName) {
  DiskReport expected;
  expected.set("DeviceIdentifier", u"sdb1");
  expected.set("VolumeName", u"HOLIDAY");
  expected.set("FilesystemUserVisibleName", u"ExFAT");
  expected.set("IOKitSize", std::uint64_t{16007561216});
  expected.set("ParentWholeDisk", u"sdb");
  expected.set("BusProtocol", u"USB");
  expected.set("MediaName", u"Generic Flash Disk");
  EXPECT_EQ(laptop().info("/media/ann/HOLIDAY"), expected);
}

TEST(LsblkReport, AWholeDiskIsReportedByNameAndByNode) {
  const auto disk = laptop().info("sdb");
  ASSERT_TRUE(disk);
  EXPECT_EQ(disk->text("DeviceIdentifier"), u"sdb");
  EXPECT_EQ(disk->text("ParentWholeDisk"), u"sdb");
  EXPECT_EQ(disk->number("IOKitSize"), 16008609792U);
  EXPECT_EQ(laptop().info("/dev/sdb"), disk);
  EXPECT_EQ(laptop().info("/dev/mapper/root"), laptop().info("dm-0"));
  EXPECT_EQ(laptop().info("/dev/dm-0"), laptop().info("dm-0"));
}

TEST(LsblkReport, AMappingsWholeDiskIsTheDiskBelowAllLayers) {
  const auto root = laptop().info("/");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->text("DeviceIdentifier"), u"dm-0");
  EXPECT_EQ(root->text("ParentWholeDisk"), u"sda");
  EXPECT_EQ(root->text("BusProtocol"), u"SATA");
  EXPECT_EQ(root->text("FilesystemUserVisibleName"), u"ext4");
}

TEST(LsblkReport, AVolumeOfAVolumeGroupIsAsRemovableAsTheDiskBelowIt) {
  const LsblkReport report = report_of(
      R"({"kname":"sdb","type":"disk","rm":false,"hotplug":true,"tran":"usb","children":
          [{"kname":"sdb1","pkname":"sdb","type":"part","fstype":"LVM2_member","children":
            [{"path":"/dev/mapper/photos-2024","kname":"dm-4","pkname":"sdb1","type":"lvm",
              "rm":false,"hotplug":false,"tran":null,"size":1073741824,"fstype":"ext4",
              "mountpoints":["/media/photos"]}]}]})");
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/media/photos"));
  const auto volume = report.info("/media/photos");
  ASSERT_TRUE(volume);
  EXPECT_EQ(volume->text("DeviceIdentifier"), u"dm-4");
  EXPECT_EQ(volume->text("ParentWholeDisk"), u"sdb");
  EXPECT_EQ(volume->text("BusProtocol"), u"USB");
  EXPECT_EQ(volume->number("IOKitSize"), 1073741824U);
}

TEST(LsblkReport, AVolumeMountedAtSeveralPlacesIsTheSameAtEach) {
  EXPECT_EQ(laptop().info("/srv/bound"), laptop().info("/"));
}

TEST(LsblkReport, ALoopDeviceIsADiskImage) {
  EXPECT_EQ(laptop().info("/snap/core/1")->text("BusProtocol"), u"Disk Image");
  const LsblkReport layered = report_of(
      R"({"kname":"loop7","type":"loop","children":[{"kname":"loop7p1","type":"part","children":
          [{"kname":"dm-3","type":"crypt","mountpoints":["/mnt"]}]}]})");
  EXPECT_EQ(layered.info("/mnt")->text("BusProtocol"), u"Disk Image");
  EXPECT_EQ(layered.info("/mnt")->text("ParentWholeDisk"), u"loop7");
}

TEST(LsblkReport, AnOpticalDriveIsACd) {
  EXPECT_EQ(laptop().info("/media/ann/ALBUM")->text("OpticalDeviceType"), u"CD-ROM");
  EXPECT_EQ(laptop().info("/media/ann/HOLIDAY")->text("OpticalDeviceType"), std::nullopt);
}

TEST(LsblkReport, AVolumeWithoutALabelHasAnEmptyName) {
  EXPECT_EQ(laptop().info("/media/ann/9")->text("VolumeName"), u"");
}

TEST(LsblkReport, WithoutTheColumnTheNameIsAbsent) {
  const LsblkReport report = report_of(R"({"kname":"sdb1","mountpoints":["/mnt"]})");
  EXPECT_EQ(report.info("/mnt")->text("VolumeName"), std::nullopt);
  EXPECT_EQ(report.info("/mnt")->number("IOKitSize"), std::nullopt);
  EXPECT_EQ(report.info("/mnt")->text("FilesystemUserVisibleName"), std::nullopt);
  EXPECT_EQ(report.info("/mnt")->text("BusProtocol"), std::nullopt);
  EXPECT_EQ(report.info("/mnt")->text("MediaName"), std::nullopt);
}

TEST(LsblkReport, ACardReaderOfItsOwnIsSecureDigital) {
  const auto card = laptop().info("/media/ann/9");
  EXPECT_EQ(card->text("BusProtocol"), u"Secure Digital");
  EXPECT_EQ(card->text("FilesystemUserVisibleName"), u"MS-DOS (FAT16)");
  EXPECT_EQ(card->text("ParentWholeDisk"), u"mmcblk0");
}

TEST(LsblkReport, SolderedMemoryIsNoCard) {
  const LsblkReport report = report_of(
      R"({"kname":"mmcblk0","type":"disk","rm":false,"hotplug":true,"children":
          [{"kname":"mmcblk0p1","type":"part","mountpoints":["/data"]}]},
         {"kname":"mmcblk0boot0","type":"disk","mountpoints":[null]},
         {"kname":"mmcblk1","type":"disk","rm":false,"hotplug":true,"mountpoints":["/card"]})");
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/card"));
  EXPECT_THAT(report.mount_paths(), ElementsAre("/data", "/card"));
}

TEST(LsblkReport, OneSignOfBeingRemovableIsEnough) {
  const LsblkReport report = report_of(
      R"({"kname":"sda","rm":true,"mountpoints":["/removable"]},
         {"kname":"sdb","hotplug":true,"mountpoints":["/hotplug"]},
         {"kname":"sdc","tran":"usb","mountpoints":["/usb"]},
         {"kname":"sdd","tran":"sata","rm":false,"hotplug":false,"mountpoints":["/fixed"]})");
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/removable", "/hotplug", "/usb"));
}

// A partition does not tell; its disk does.
TEST(LsblkReport, TheDiskDecidesWhetherItsPartitionIsRemovable) {
  const LsblkReport report = report_of(
      R"({"kname":"sda","tran":"sata","children":[{"kname":"sda1","rm":true,"mountpoints":["/a"]}]},
         {"kname":"sdb","tran":"usb","children":[{"kname":"sdb1","rm":false,"mountpoints":["/b"]}]})");
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/b"));
}

TEST(LsblkReport, AFileSystemWithoutATableLiesOnTheDiskItself) {
  const LsblkReport report = report_of(
      R"({"kname":"sdb","type":"disk","size":1000,"tran":"usb","label":"RAW","fstype":"vfat",
          "mountpoints":["/media/RAW"]})");
  EXPECT_EQ(report.info("/media/RAW")->text("DeviceIdentifier"), u"sdb");
  EXPECT_EQ(report.info("/media/RAW")->text("ParentWholeDisk"), u"sdb");
  EXPECT_EQ(report.info("/media/RAW")->text("FilesystemUserVisibleName"), u"MS-DOS (FAT)");
}

TEST(LsblkReport, AnArrayIsListedOnceAndBelongsToItsFirstDisk) {
  const std::string array = R"([{"kname":"md0","type":"raid1","mountpoints":["/array"]}])";
  const LsblkReport report =
      report_of(R"({"kname":"sda","type":"disk","tran":"sata","children":)" + array +
                R"(},{"kname":"sdb","type":"disk","tran":"usb","children":)" + array + "}");
  EXPECT_THAT(report.mount_paths(), ElementsAre("/array"));
  EXPECT_THAT(report.removable_mount_paths(), IsEmpty());
  EXPECT_EQ(report.info("/array")->text("ParentWholeDisk"), u"sda");
}

TEST(LsblkReport, AFlatListNamesTheParentsInAColumn) {
  const LsblkReport report = report_of(
      R"({"kname":"sdb","pkname":null,"type":"disk","tran":"usb"},
         {"kname":"sdb1","pkname":"sdb","type":"part","mountpoints":["/a"]},
         {"kname":"dm-1","pkname":"sdb1","type":"crypt","mountpoints":["/b"]})");
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/a", "/b"));
  EXPECT_EQ(report.info("/b")->text("ParentWholeDisk"), u"sdb");
}

TEST(LsblkReport, OlderVersionsWriteNumbersAsTextsAndOneMountPoint) {
  const LsblkReport report = report_of(
      R"({"kname":"sdb","type":"disk","size":"2000","rm":"1","hotplug":"0","mountpoint":null,
          "children":[{"kname":"sdb1","size":"1000","rm":"0","mountpoint":"/a"},
                      {"kname":"sdb2","size":"99","mountpoint":"[SWAP]"}]},
         {"kname":"sdc","size":"12x","rm":"0","mountpoint":"/c"})");
  EXPECT_THAT(report.mount_paths(), ElementsAre("/a", "/c"));
  EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/a"));
  EXPECT_EQ(report.info("/a")->number("IOKitSize"), 1000U);
  EXPECT_EQ(report.info("/c")->number("IOKitSize"), std::nullopt);
}

// A fixed disk and a stick that are mounted at one place, and the stick at another one, too.
constexpr const char* over_each_other =
    R"({"kname":"sda1","maj:min":"8:1","tran":"sata","mountpoints":["/mnt"]},
       {"kname":"sdb1","maj:min":" 8:17 ","tran":"usb","mountpoints":["/media/stick","/mnt"]},
       {"kname":"sdc1","maj:min":"8:33","tran":"sata","mountpoints":["/"]})";

TEST(LsblkReport, OfVolumesMountedOverEachOtherTheOneThatIsSeenIsListed) {
  const std::string text = std::string(R"({"blockdevices":[)") + over_each_other + "]}";
  const auto stick = LsblkReport::parse(text, {{"/mnt", {u"vfat", "8:17"}}}).value();
  EXPECT_THAT(stick.removable_mount_paths(), ElementsAre("/media/stick", "/mnt"));
  EXPECT_THAT(stick.mount_paths(), ElementsAre("/media/stick", "/mnt", "/"));
  EXPECT_EQ(stick.info("/mnt")->text("DeviceIdentifier"), u"sdb1");
  const auto disk = LsblkReport::parse(text, {{"/mnt", {u"ext4", "8:1"}}}).value();
  EXPECT_THAT(disk.removable_mount_paths(), ElementsAre("/media/stick"));
  EXPECT_THAT(disk.mount_paths(), ElementsAre("/mnt", "/media/stick", "/"));
  EXPECT_EQ(disk.info("/mnt")->text("DeviceIdentifier"), u"sda1");
}

// Some file systems have a number there that is no device's.
TEST(LsblkReport, WithoutAWordOfTheMountTableTheLastVolumeIsSeen) {
  const std::string text = std::string(R"({"blockdevices":[)") + over_each_other + "]}";
  for (const MountTable& mounts : {MountTable(), MountTable{{"/mnt", {u"btrfs", "0:31"}}}}) {
    const auto report = LsblkReport::parse(text, mounts).value();
    EXPECT_THAT(report.removable_mount_paths(), ElementsAre("/media/stick", "/mnt"));
    EXPECT_EQ(report.info("/mnt")->text("DeviceIdentifier"), u"sdb1");
  }
}

TEST(LsblkReport, AVolumeThatIsMountedTwiceAtOnePlaceIsSeenThereOnce) {
  const LsblkReport report =
      report_of(R"({"kname":"sdb1","tran":"usb","mountpoints":["/a","/b","/a"]})");
  EXPECT_THAT(report.mount_paths(), ElementsAre("/a", "/b"));
}

TEST(LsblkReport, NothingIsKnownOfOtherPaths) {
  for (const char* path : {"", "/nowhere", "sdz", "/dev/", "/dev/sdz", "[SWAP]", "null"}) {
    EXPECT_EQ(laptop().info(path), std::nullopt) << path;
  }
}

TEST(LsblkReport, BusesHaveTheNamesThatPeopleKnow) {
  const LsblkReport report = report_of(
      R"({"kname":"sda","tran":"ata"},{"kname":"sdb","tran":"sas"},{"kname":"sdc","tran":"sbp"},
         {"kname":"sdd","tran":"spi"},{"kname":"nvme1n1"},{"kname":"vda"},
         {"kname":"sde","tran":"new bus"})");
  EXPECT_EQ(report.info("sda")->text("BusProtocol"), u"ATA");
  EXPECT_EQ(report.info("sdb")->text("BusProtocol"), u"SAS");
  EXPECT_EQ(report.info("sdc")->text("BusProtocol"), u"FireWire");
  EXPECT_EQ(report.info("sdd")->text("BusProtocol"), u"SCSI");
  EXPECT_EQ(report.info("nvme1n1")->text("BusProtocol"), u"NVMe");
  EXPECT_EQ(report.info("vda")->text("BusProtocol"), u"Virtio");
  EXPECT_EQ(report.info("sde")->text("BusProtocol"), u"new bus");
}

TEST(LsblkReport, AVendorThatIsOnlyANumberIsNotPartOfTheName) {
  const LsblkReport report = report_of(R"({"kname":"vda","vendor":"0x1af4","model":null},
                                         {"kname":"vdb","vendor":"0x1af4","model":"Disk"})");
  EXPECT_EQ(report.info("vda")->text("MediaName"), std::nullopt);
  EXPECT_EQ(report.info("vdb")->text("MediaName"), u"Disk");
}

TEST(FileSystemName, IsTheNameThatPeopleKnow) {
  EXPECT_EQ(file_system_name(u"vfat", u"FAT32"), u"MS-DOS (FAT32)");
  EXPECT_EQ(file_system_name(u"vfat", u"FAT12"), u"MS-DOS (FAT12)");
  EXPECT_EQ(file_system_name(u"vfat", u""), u"MS-DOS (FAT)");
  EXPECT_EQ(file_system_name(u"exfat", u"1.0"), u"ExFAT");
  EXPECT_EQ(file_system_name(u"ntfs", u""), u"NTFS");
  EXPECT_EQ(file_system_name(u"ext4", u"1.0"), u"ext4");
  EXPECT_EQ(file_system_name(u"hfsplus", u""), u"Mac OS Extended");
  EXPECT_EQ(file_system_name(u"iso9660", u"Joliet Extension"), u"ISO 9660");
  EXPECT_EQ(file_system_name(u"udf", u"1.02"), u"UDF");
  EXPECT_EQ(file_system_name(u"btrfs", u""), u"Btrfs");
  EXPECT_EQ(file_system_name(u"xfs", u""), u"XFS");
  EXPECT_EQ(file_system_name(u"of the future", u"7"), u"of the future");
}

}  // namespace
}  // namespace norvo
