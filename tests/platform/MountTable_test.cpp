#include "platform/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace norvo {
namespace {

using testing::IsEmpty;
using Types = std::map<std::filesystem::path, Text>;

TEST(MountTable, NamesTheTypeAtEachMountPath) {
  EXPECT_EQ(mounted_file_systems("22 27 0:21 / /proc rw,relatime - proc proc rw\n"
                                 "27 1 254:0 / / rw,relatime shared:1 master:2 - ext4 /dev/vda rw\n"
                                 "36 27 8:17 /sub /media/A rw - vfat /dev/sdb1 rw,utf8"),
            (Types{{"/proc", u"proc"}, {"/", u"ext4"}, {"/media/A", u"vfat"}}));
}

TEST(MountTable, PathsAreUnescaped) {
  EXPECT_EQ(mounted_file_systems("1 2 8:1 / /a\\040b\\011c\\012d\\134e rw - xfs /dev/x rw\n"
                                 "1 2 8:1 / /odd\\0\\9999\\ rw - xfs /dev/x rw\n"),
            (Types{{"/a b\tc\nd\\e", u"xfs"}, {"/odd\\0\\9999\\", u"xfs"}}));
}

TEST(MountTable, OfFileSystemsOverEachOtherTheLastIsSeen) {
  EXPECT_EQ(mounted_file_systems("1 2 8:1 / /m rw - ext4 /dev/a rw\n"
                                 "3 1 8:2 / /m rw - vfat /dev/b rw\n"),
            (Types{{"/m", u"vfat"}}));
}

TEST(MountTable, TypesServedByAProgramSayNothing) {
  EXPECT_THAT(mounted_file_systems("1 2 8:1 / /m rw - fuseblk /dev/a rw\n"
                                   "1 2 8:1 / /n rw - fuse.sshfs host rw\n"),
              IsEmpty());
}

TEST(MountTable, OtherLinesArePassedOver) {
  EXPECT_EQ(mounted_file_systems("\n\nnonsense\n - \n1 2 3 4\n1 2 8:1 / relative rw - ext4 d rw\n"
                                 "1 2 8:1 / /no/type rw\n1 2 8:1 / /m rw - ext4\n"),
            (Types{{"/m", u"ext4"}}));
  EXPECT_THAT(mounted_file_systems(""), IsEmpty());
}

}  // namespace
}  // namespace norvo
