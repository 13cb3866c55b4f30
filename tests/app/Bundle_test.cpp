#include "app/Bundle.h"

#include <gtest/gtest.h>

namespace norvo {
namespace {

std::string relaunched(std::string_view bundle) {
  return delete_path_extension(named_executable(bundle));
}

TEST(Bundle, TheExecutableBearsTheNameOfTheBundleWithoutItsExtension) {
  EXPECT_EQ(named_executable("/Applications/Some App.app"),
            "/Applications/Some App.app/Contents/MacOS/Some App.app");
  EXPECT_EQ(relaunched("/Applications/Some App.app"),
            "/Applications/Some App.app/Contents/MacOS/Some App");
  EXPECT_EQ(relaunched("/Applications/Some App.app/"),
            "/Applications/Some App.app/Contents/MacOS/Some App");
}

TEST(Bundle, ABundleUnderAnotherNameLeadsToAnotherExecutable) {
  EXPECT_EQ(relaunched("/home/me/Copy.app"), "/home/me/Copy.app/Contents/MacOS/Copy");
  EXPECT_EQ(relaunched("/home/me/Copy"), "/home/me/Copy/Contents/MacOS/Copy");
  EXPECT_EQ(relaunched("/home/me/1.0.app"), "/home/me/1.0.app/Contents/MacOS/1.0");
  EXPECT_EQ(relaunched("/home/me/.app"), "/home/me/.app/Contents/MacOS/.app");
  EXPECT_EQ(relaunched("/b\xC3\xBC\xFF.app"), "/b\xC3\xBC\xFF.app/Contents/MacOS/b\xC3\xBC\xFF");
}

TEST(Bundle, OnlyTheLastComponentLosesAnExtension) {
  EXPECT_EQ(delete_path_extension("/a.b/c"), "/a.b/c");
  EXPECT_EQ(delete_path_extension("/a.b/c.d"), "/a.b/c");
  EXPECT_EQ(delete_path_extension("/a.b/c.d/"), "/a.b/c");
  EXPECT_EQ(delete_path_extension("c.d.e"), "c.d");
  EXPECT_EQ(delete_path_extension("/a/c."), "/a/c");
  EXPECT_EQ(delete_path_extension("/"), "/");
  EXPECT_EQ(delete_path_extension(""), "");
}

TEST(Bundle, TheLastComponentIsWhatStandsAfterTheLastSlash) {
  EXPECT_EQ(last_path_component("/a/b c.app"), "b c.app");
  EXPECT_EQ(last_path_component("/a/b///"), "b");
  EXPECT_EQ(last_path_component("b"), "b");
  EXPECT_EQ(last_path_component("/b"), "b");
  EXPECT_EQ(last_path_component("///"), "/");
  EXPECT_EQ(last_path_component(""), "");
}

TEST(Bundle, ComponentsAreJoinedByOneSlash) {
  EXPECT_EQ(append_path_component("/a", "b/"), "/a/b");
  EXPECT_EQ(append_path_component("/a//", "/b"), "/a/b");
  EXPECT_EQ(append_path_component("/", "b"), "/b");
  EXPECT_EQ(append_path_component("", "b"), "b");
}

TEST(Bundle, IsTheFolderAboveItsExecutables) {
  EXPECT_EQ(main_bundle_path("/opt/norvo/X.app/Contents/MacOS"), "/opt/norvo/X.app");
  EXPECT_EQ(main_bundle_path("/opt/norvo/X.app/Contents/MacOS/"), "/opt/norvo/X.app");
}

TEST(Bundle, OfAnExecutableOutsideOfBundlesIsTheExecutablesFolder) {
  EXPECT_EQ(main_bundle_path("/usr/bin"), "/usr/bin");
  EXPECT_EQ(main_bundle_path("/opt/MacOS"), "/opt/MacOS");
  EXPECT_EQ(main_bundle_path("/opt/NoContents/MacOS"), "/opt/NoContents/MacOS");
  EXPECT_EQ(main_bundle_path("/opt/Contents/MacOS/x"), "/opt/Contents/MacOS/x");
  EXPECT_EQ(main_bundle_path("/Contents/MacOS"), "/Contents/MacOS");
}

}  // namespace
}  // namespace norvo
