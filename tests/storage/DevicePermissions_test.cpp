#include "storage/DevicePermissions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <sstream>
#include <vector>

#include "support/FakeProbe.h"

namespace norvo {
namespace {

using test::FakeProbe;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class RecordedReset final : public PrivacyReset {
 public:
  RecordedReset(const std::ostringstream& out, const std::ostringstream& log)
      : out_(out), log_(log) {}
  void run(TextView command) override {
    commands.emplace_back(command);
    told.push_back(out_.str() + log_.str());
  }
  std::vector<Text> commands;
  std::vector<std::string> told;  // by the output and the log, before each command

 private:
  const std::ostringstream& out_;
  const std::ostringstream& log_;
};

class FakeAddressOpener final : public AddressOpener {
 public:
  bool open(TextView address) override {
    opened.emplace_back(address);
    return opened.size() > failures;
  }
  std::size_t failures = 0;
  std::vector<Text> opened;
};

class FakePanel final : public AlertPanel {
 public:
  AlertAnswer run(const Alert& alert) override {
    shown.push_back(alert);
    return answer;
  }
  AlertAnswer answer = AlertAnswer::default_button;
  std::vector<Alert> shown;
};

class DevicePermissionsTest : public testing::Test {
 protected:
  DevicePermissions permissions(bool USE_HARD_DISK) {
    return DevicePermissions({.USE_HARD_DISK = USE_HARD_DISK,
                              .process_name = u"Norvo Birch",
                              .bundle_identifier = bundle_identifier_,
                              .platform_help = platform_help_,
                              .probe = probe_,
                              .privacy_reset = has_privacy_ ? &reset_ : nullptr,
                              .address_opener = has_privacy_ ? &opener_ : nullptr,
                              .panel = panel_,
                              .out = out_,
                              .log = log_});
  }

  Text permission_alert_text(bool USE_HARD_DISK) {
    permissions(USE_HARD_DISK).showPermissionAlertAndGuideUser();
    return panel_.shown.back().informative_text;
  }

  Text bundle_identifier_ = u"com.norvo.birch";
  Text platform_help_;
  bool has_privacy_ = true;
  FakeProbe probe_;
  FakeAddressOpener opener_;
  FakePanel panel_;
  std::ostringstream out_;
  std::ostringstream log_;
  RecordedReset reset_{out_, log_};
};

TEST_F(DevicePermissionsTest, ADeviceThatOpensIsProbedOnceAndNothingElseHappens) {
  permissions(true).Check_Have_Permissions("/dev/rdisk2s1");
  EXPECT_THAT(probe_.probed, ElementsAre("/dev/rdisk2s1"));
  EXPECT_EQ(out_.str(), "");
  EXPECT_THAT(reset_.commands, IsEmpty());
  EXPECT_THAT(panel_.shown, IsEmpty());
}

TEST_F(DevicePermissionsTest, ARefusedDeviceResetsOnlyTheRemovableVolumes) {
  probe_.error = EPERM;
  permissions(false).Check_Have_Permissions("/dev/rdisk2s1");
  EXPECT_EQ(out_.str(), "err no : 1\n");
  EXPECT_EQ(log_.str(), "Application Bundle Identifier: com.norvo.birch\n");
  EXPECT_THAT(reset_.commands,
              ElementsAre(u"tccutil reset SystemPolicyRemovableVolumes com.norvo.birch"));
}

TEST_F(DevicePermissionsTest, AnEditionForHardDisksResetsAllFilesAsWell) {
  probe_.error = EACCES;
  permissions(true).Check_Have_Permissions("/dev/rdisk2s1");
  EXPECT_EQ(out_.str(), "err no : 13\n");
  EXPECT_THAT(reset_.commands,
              ElementsAre(u"tccutil reset SystemPolicyRemovableVolumes com.norvo.birch",
                          u"tccutil reset SystemPolicyAllFiles com.norvo.birch"));
}

TEST_F(DevicePermissionsTest, ARefusalIsToldBeforeAnythingIsReset) {
  probe_.error = EACCES;
  permissions(true).Check_Have_Permissions("/dev/rdisk2s1");
  const std::string told = "err no : 13\nApplication Bundle Identifier: com.norvo.birch\n";
  EXPECT_THAT(reset_.told, ElementsAre(told, told));
}

TEST_F(DevicePermissionsTest, AnyFailureToOpenCountsAsRefused) {
  probe_.error = ENOENT;
  permissions(false).Check_Have_Permissions("/dev/rdisk9");
  EXPECT_EQ(out_.str(), "err no : 2\n");
  EXPECT_EQ(reset_.commands.size(), 1U);
}

TEST_F(DevicePermissionsTest, TheProbeShowsNothing) {
  probe_.error = EACCES;
  permissions(true).Check_Have_Permissions("/dev/rdisk2s1");
  EXPECT_THAT(panel_.shown, IsEmpty());
  EXPECT_THAT(opener_.opened, IsEmpty());
}

// A reset without an identifier would take every program's permission away.
TEST_F(DevicePermissionsTest, OnlyAPlainIdentifierReachesTheShell) {
  probe_.error = EACCES;
  for (const TextView identifier :
       {u"", u"a b", u"a;b", u"a$(b)", u"a`b`", u"a\nb", u"a'b", u"\u00E4"}) {
    bundle_identifier_ = identifier;
    permissions(true).Check_Have_Permissions("/dev/rdisk2s1");
  }
  EXPECT_THAT(reset_.commands, IsEmpty());
  bundle_identifier_ = u"com.Norvo-1.birch_2";
  permissions(false).Check_Have_Permissions("/dev/rdisk2s1");
  EXPECT_EQ(reset_.commands.size(), 1U);
}

TEST_F(DevicePermissionsTest, WithoutSuchPermissionsTheProbeOnlyOpensAndCloses) {
  has_privacy_ = false;
  probe_.error = EACCES;
  permissions(true).Check_Have_Permissions("/dev/sdb1");
  EXPECT_EQ(out_.str(), "err no : 13\n");
}

TEST_F(DevicePermissionsTest, ThePermissionAlertHasOneButton) {
  permissions(false).showPermissionAlertAndGuideUser();
  ASSERT_EQ(panel_.shown.size(), 1U);
  const Alert& alert = panel_.shown.front();
  EXPECT_EQ(alert.message, u"Permission Required");
  EXPECT_EQ(alert.default_button, u"Open System Settings");
  EXPECT_EQ(alert.alternate_button, u"");
  EXPECT_EQ(alert.other_button, u"");
}

TEST_F(DevicePermissionsTest, WithoutHardDisksTheAlertSpeaksOfRemovableVolumesOnly) {
  EXPECT_EQ(permission_alert_text(false),
            u"Norvo Birch needs permission to access files on removable volumes (like USB "
            u"drives).\n\nPlease go to System Settings > Privacy & Security > Files and "
            u"Folders,\nfind \"Norvo Birch\" in the list, and enable \"Removable Volumes\" "
            u"access.\n\n");
  EXPECT_THAT(utf8_from_text(permission_alert_text(false)), Not(HasSubstr("Full Disk Access")));
}

TEST_F(DevicePermissionsTest, WithHardDisksTheAlertSpeaksOfFullDiskAccessFirst) {
  EXPECT_EQ(permission_alert_text(true),
            u"Norvo Birch needs permission to access drive for scanning.\n\nPlease go to System "
            u"Settings > Privacy & Security > Full Disk Access,\nfind \"Norvo Birch\" in the list, "
            u"and allow access.\n\nOR\n\nPlease go to System Settings > Privacy & Security > Files "
            u"and Folders,\nfind \"Norvo Birch\" in the list, and enable \"Removable Volumes\" "
            u"access.\n\n");
}

TEST_F(DevicePermissionsTest, TheSystemsHelpFollowsTheAlertsText) {
  for (const bool USE_HARD_DISK : {false, true}) {
    platform_help_.clear();
    const Text plain = permission_alert_text(USE_HARD_DISK);
    platform_help_ = u"Ask an administrator.";
    EXPECT_EQ(permission_alert_text(USE_HARD_DISK), plain + u"Ask an administrator.");
  }
}

TEST_F(DevicePermissionsTest, ItsButtonOpensThePrivacyPane) {
  permissions(false).showPermissionAlertAndGuideUser();
  EXPECT_THAT(opener_.opened,
              ElementsAre(u"x-apple.systempreferences:com.apple.preference.security?"));
}

TEST_F(DevicePermissionsTest, AnyOtherAnswerOpensNothing) {
  panel_.answer = AlertAnswer::other_button;
  permissions(false).showPermissionAlertAndGuideUser();
  EXPECT_THAT(opener_.opened, IsEmpty());
}

TEST_F(DevicePermissionsTest, AFailureToOpenThePaneFallsBackOnce) {
  for (const std::size_t failures : {1U, 2U}) {
    opener_ = {};
    opener_.failures = failures;
    permissions(false).openSystemSettingsToPrivacyPane();
    EXPECT_THAT(opener_.opened,
                ElementsAre(u"x-apple.systempreferences:com.apple.preference.security?",
                            u"x-apple.systempreferences:com.apple.preference.security?Privacy"));
  }
}

TEST_F(DevicePermissionsTest, WhereThereIsNoPaneTheAlertIsAllThereIs) {
  has_privacy_ = false;
  permissions(true).showPermissionAlertAndGuideUser();
  EXPECT_EQ(panel_.shown.size(), 1U);
}

TEST_F(DevicePermissionsTest, TheGenericAlertTellsTheReason) {
  const std::error_code error(EIO, std::generic_category());
  permissions(false).showGenericErrorAlert(error);
  const Alert expected{
      .message = u"Device Access Error",
      .default_button = u"OK",
      .alternate_button = {},
      .other_button = {},
      .informative_text =
          u"An unexpected error occurred while trying to access the device:\n\nInput/output error"};
  EXPECT_THAT(panel_.shown, ElementsAre(expected));
  EXPECT_THAT(opener_.opened, IsEmpty());
}

}  // namespace
}  // namespace norvo
