// The names of the window's controls and the two settings pages.
#include "wizard/Controls.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "wizard/ScreenLists.h"

namespace norvo::test {
namespace {

TEST(Controls, EachHasANameOfItsOwn) {
  Names names;
  for (std::size_t i = 0; i < control_count; ++i) {
    const std::string name(control_name(static_cast<Control>(i)));
    EXPECT_GT(name.size(), 1U) << i;
    EXPECT_TRUE(names.insert(name).second) << name;
  }
  EXPECT_EQ(names.size(), control_count);
}

TEST(Controls, AreNamedExactlyAsTheirWidgets) {
  EXPECT_EQ(control_name(Control::next_btn), "_next_btn");
  EXPECT_EQ(control_name(Control::Thro_Mode_Chk), "_Thro_Mode_Chk");
  EXPECT_EQ(control_name(Control::Thro_Mode_Chk_SIG), "_Thro_Mode_Chk_SIG");
  EXPECT_EQ(control_name(Control::Start_slider_val_Sig), "_Start_slider_val_Sig");
  EXPECT_EQ(control_name(Control::idTableView), "idTableView");
  EXPECT_EQ(control_name(Control::imageBrowser_2), "imageBrowser_2");
  EXPECT_EQ(control_name(static_cast<Control>(control_count - 1)), "mMovieView");
}

TEST(SettingsPages, HaveTheSameControlsWithTheSuffixOnOne) {
  const Names page = settings_controls("") + drive_lines("") + entire_disk_lines("") +
                     range_lines("") + Names{"_destination_hint"};
  std::size_t mapped = 0;
  for (std::size_t i = 0; i < control_count; ++i) {
    const auto control = static_cast<Control>(i);
    const std::string name(control_name(control));
    if (!page.contains(name)) continue;
    ++mapped;
    EXPECT_EQ(on_page(control, SettingsPage::photo), control) << name;
    EXPECT_EQ(control_name(on_page(control, SettingsPage::signature)), name + "_Sig");
  }
  EXPECT_EQ(mapped, page.size());
}

}  // namespace
}  // namespace norvo::test
