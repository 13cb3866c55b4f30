#include "platform/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace norvo {
namespace {

using testing::IsEmpty;

TEST(MountTable, NamesTypeAndDeviceAtEachMountPath) {
  EXPECT_EQ(mounted_file_systems("22 27 0:21 / /proc rw,relatime - proc proc rw\n"
                                 "27 1 254:0 / / rw,relatime shared:1 master:2 - ext4 /dev/vda rw\n"
                                 "36 27 8:17 /sub /media/A rw - vfat /dev/sdb1 rw,utf8"),
            (MountTable{{"/proc", {u"proc", "0:21"}},
                        {"/", {u"ext4", "254:0"}},
                        {"/media/A", {u"vfat", "8:17"}}}));
}

TEST(MountTable, PathsAreUnescaped) {
  EXPECT_EQ(mounted_file_systems("1 2 8:1 / /a\\040b\\011c\\012d\\134e rw - xfs /dev/x rw\n"
                                 "1 2 8:1 / /odd\\0\\9999\\ rw - xfs /dev/x rw\n"),
            (MountTable{{"/a b\tc\nd\\e", {u"xfs", "8:1"}}, {"/odd\\0\\9999\\", {u"xfs", "8:1"}}}));
}

TEST(MountTable, OfFileSystemsOverEachOtherTheLastIsSeen) {
  EXPECT_EQ(mounted_file_systems("1 2 8:1 / /m rw - ext4 /dev/a rw\n"
                                 "3 1 8:2 / /m rw - vfat /dev/b rw\n"),
            (MountTable{{"/m", {u"vfat", "8:2"}}}));
}

TEST(MountTable, TypesServedByAProgramSayNothing) {
  EXPECT_EQ(mounted_file_systems("1 2 8:1 / /m rw - fuseblk /dev/a rw\n"
                                 "1 2 0:51 / /n rw - fuse.sshfs host rw\n"),
            (MountTable{{"/m", {u"", "8:1"}}, {"/n", {u"", "0:51"}}}));
}

TEST(MountTable, OtherLinesArePassedOver) {
  EXPECT_EQ(mounted_file_systems("\n\nnonsense\n - \n1 2 3 4\n1 2 8:1 / relative rw - ext4 d rw\n"
                                 "1 2 8:1 / /no/type rw\n1 2 8:1 / /m rw - ext4\n"),
            (MountTable{{"/m", {u"ext4", "8:1"}}}));
  EXPECT_THAT(mounted_file_systems(""), IsEmpty());
}

}  // namespace
}  // namespace norvo
