// The name that a bundle's property list gives.
#include "platform/BundleInfo.h"

#include <gtest/gtest.h>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo::test {
namespace {

std::string property_list(const std::string& entries) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries +
         "</dict></plist>\n";
}

TEST(PropertyText, IsTheTextBehindItsKey) {
  const std::string list = property_list(
      "<key>Other</key><string>no</string><key>CFBundleName</key><string>Norvo &amp; B\u00E4r"
      "</string>");
  EXPECT_EQ(property_text(list, "CFBundleName"), u"Norvo & B\u00E4r");
  EXPECT_EQ(property_text(list, "Other"), u"no");
}

TEST(PropertyText, IsNothingWithoutTheEntry) {
  EXPECT_EQ(property_text(property_list(""), "CFBundleName"), std::nullopt);
  EXPECT_EQ(property_text(property_list("<key>CFBundleName</key>"), "CFBundleName"), std::nullopt);
  EXPECT_EQ(property_text(property_list("<key>CFBundleName</key><true/>"), "CFBundleName"),
            std::nullopt);
  EXPECT_EQ(property_text(property_list("<string>CFBundleName</string><string>x</string>"),
                          "CFBundleName"),
            std::nullopt);
}

TEST(PropertyText, IsNothingInWhatIsNoPropertyList) {
  EXPECT_EQ(property_text("", "CFBundleName"), std::nullopt);
  EXPECT_EQ(property_text("CFBundleName", "CFBundleName"), std::nullopt);
  EXPECT_EQ(property_text("<dict><key>CFBundleName</key><string>x</string></dict>", "CFBundleName"),
            std::nullopt);
}

TEST(BundleProperty, IsReadFromTheBundlesPropertyList) {
  const TemporaryFolder bundle;
  EXPECT_EQ(read_bundle_property(bundle.path(), "CFBundleName"), std::nullopt) << "no list";
  std::filesystem::create_directory(bundle.path() / "Contents");
  write_file(bundle.path() / "Contents/Info.plist",
             property_list("<key>CFBundleName</key><string>Norvo Birch</string>"));
  EXPECT_EQ(read_bundle_property(bundle.path(), "CFBundleName"), u"Norvo Birch");
}

}  // namespace
}  // namespace norvo::test
