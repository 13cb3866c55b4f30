// What this system tells about its own drives.
#include <gtest/gtest.h>

#include "platform/System.h"

namespace norvo {
namespace {

TEST(SystemDrives, ARawNodeIsTheNodeOfItsIdentifier) {
  EXPECT_EQ(raw_node(u"sdb1"), "/dev/sdb1");
  EXPECT_EQ(raw_node(u"dm-0"), "/dev/dm-0");
}

TEST(SystemDrives, NoPermissionsAreKeptForEachProgramHere) {
  EXPECT_EQ(make_system_privacy_reset(), nullptr);
}

TEST(SystemDrives, ThePermissionAlertGainsHelpForThisSystem) {
  EXPECT_EQ(permission_help(),
            u"On Linux drives can be read with administrator rights: start the program again and "
            u"enter the password when it is asked for, or let an administrator add you to the "
            u"group \"disk\".\n");
}

TEST(SystemDrives, EveryMountedVolumeHasAReportWithItsIdentifier) {
  const auto utility = make_system_disk_utility();
  for (const std::filesystem::path& path : utility->mountedLocalVolumePaths()) {
    EXPECT_TRUE(path.is_absolute()) << path;
    const auto report = utility->info(path);
    ASSERT_TRUE(report) << path;
    EXPECT_NE(report->text("DeviceIdentifier").value_or(u""), u"") << path;
    EXPECT_NE(report->text("ParentWholeDisk").value_or(u""), u"") << path;
  }
}

TEST(SystemDrives, RemovableVolumesAreAmongTheMountedOnes) {
  const auto utility = make_system_disk_utility();
  const auto all = utility->mountedLocalVolumePaths();
  for (const std::filesystem::path& path : utility->mountedRemovableMedia()) {
    EXPECT_NE(std::find(all.begin(), all.end(), path), all.end()) << path;
  }
}

}  // namespace
}  // namespace norvo
