#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <set>

#include "platform/qt/QtText.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class ControlsTest : public WindowTest {};

std::vector<Control> all_controls() {
  std::vector<Control> controls;
  for (std::size_t i = 0; i < control_count; ++i) controls.push_back(static_cast<Control>(i));
  return controls;
}

TEST_F(ControlsTest, each_control_is_one_widget_of_its_name_that_a_screen_reader_can_name) {
  for (const Control control : all_controls()) {
    const std::string name(control_name(control));
    const auto found = window->findChildren<QWidget*>(QString::fromStdString(name));
    ASSERT_EQ(found.size(), 1) << name;
    EXPECT_FALSE(found.first()->accessibleName().isEmpty()) << name;
  }
}

TEST_F(ControlsTest, only_the_footer_is_there_before_the_wizard_shows_a_screen) {
  const std::set<Control> footer{Control::next_btn, Control::back_btn,    Control::exit_btn,
                                 Control::help_btn, Control::contact_btn, Control::help_info};
  for (const Control control : all_controls()) {
    EXPECT_EQ(window->widget(control).isHidden(), !footer.contains(control))
        << control_name(control);
  }
}

TEST_F(ControlsTest, data_labels_keep_their_text_and_are_never_on_the_screen) {
  show({Control::disk_identifier, Control::sectors_val});
  for (const Control control : {Control::disk_identifier, Control::sectors_val}) {
    window->set_text(control, u"sdb1");
    EXPECT_EQ(window->text(control), u"sdb1");
    EXPECT_FALSE(window->widget(control).isVisible());
  }
}

TEST_F(ControlsTest, what_holds_controls_is_visible_while_one_of_them_is) {
  show({});
  const QWidget* const panel = window->widget(Control::stop_scan).parentWidget();
  EXPECT_FALSE(panel->isVisible());
  window->set_hidden(Control::stop_scan, false);
  window->set_hidden(Control::Mode_label, false);
  EXPECT_TRUE(panel->isVisible());
  window->set_hidden(Control::stop_scan, true);
  EXPECT_TRUE(panel->isVisible());
  window->set_hidden(Control::Mode_label, true);
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(ControlsTest, every_shown_control_can_be_seen) {
  for (const Control control : all_controls()) {
    if (control == Control::disk_identifier || control == Control::sectors_val) continue;
    window->set_hidden(control, false);
  }
  show({});
  for (const Control control : all_controls()) {
    if (control == Control::disk_identifier || control == Control::sectors_val) continue;
    EXPECT_TRUE(window->widget(control).isVisible()) << control_name(control);
  }
}

TEST_F(ControlsTest, texts_of_all_kinds_of_controls_come_back_as_they_were_set) {
  const std::vector<Text> texts{u"",          u"plain",  u"\nSelect & ‘press’... ",
                                u"  12.5 GB", u"a && b", u"Ends with &"};
  const std::vector<Control> controls{
      Control::help_info,     Control::disk_val,    Control::Mode_label,
      Control::next_btn,      Control::stop_scan,   Control::rec_mode_Video,
      Control::Thro_Mode_Chk, Control::refresh_Box, Control::QuickLook_View_Box};
  for (const Control control : controls) {
    for (const Text& text : texts) {
      window->set_text(control, text);
      EXPECT_EQ(window->text(control), text) << control_name(control);
    }
  }
  window->set_text(Control::path, u"/media/card & more");
  EXPECT_EQ(window->text(Control::path), u"/media/card & more");
  window->set_text(Control::idTableView, u"no text");
  EXPECT_EQ(window->text(Control::idTableView), u"");
}

TEST_F(ControlsTest, a_new_title_keeps_the_letter_for_the_keyboard) {
  window->set_text(Control::rec_mode_RawFile, u"Recover Raw Files");
  EXPECT_EQ(find<QAbstractButton>(Control::rec_mode_RawFile).text(), u"Recover Ra&w Files");
  window->set_text(Control::next_btn, u"Go");
  EXPECT_EQ(find<QAbstractButton>(Control::next_btn).text(), u"Go");
}

TEST_F(ControlsTest, boxes_and_radios_are_on_or_off_one_by_one) {
  for (const Control control :
       {Control::rec_mode_Photo, Control::rec_mode_Video, Control::entire_disk_rd,
        Control::sector_range_rd, Control::Thro_Mode_Chk, Control::Thro_Mode_Chk_SIG}) {
    window->set_on(control, true);
    EXPECT_TRUE(window->is_on(control)) << control_name(control);
  }
  EXPECT_TRUE(window->is_on(Control::rec_mode_Photo));
  window->set_on(Control::rec_mode_Photo, false);
  EXPECT_FALSE(window->is_on(Control::rec_mode_Photo));
  window->set_on(Control::next_btn, true);
  EXPECT_FALSE(window->is_on(Control::next_btn));
}

TEST_F(ControlsTest, other_searches_than_for_photos_have_one_step_more) {
  const auto has_step = [this](const QString& step) {
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
      if (widget->accessibleName() == step) return true;
    }
    return false;
  };
  window->set_on(Control::rec_mode_Photo, true);
  EXPECT_TRUE(has_step("Step 1 of 3: Drive"));
  window->set_on(Control::rec_mode_Photo, false);
  EXPECT_TRUE(has_step("Step 1 of 4: Drive"));
  window->set_on(Control::rec_mode_Photo, true);
  EXPECT_TRUE(has_step("Step 1 of 3: Drive"));
}

TEST_F(ControlsTest, values_come_back_exactly_and_outside_ones_move_to_the_nearer_end) {
  const double most = 9223372036854775808.0;
  for (const Control slider : {Control::Start_Slider, Control::End_Slider_Sig}) {
    window->set_range(slider, 0, most);
    for (const double value : {0.0, 1.0, 3.0, 123456789012345.0, most}) {
      window->set_value(slider, value);
      EXPECT_EQ(window->value(slider), value);
    }
    window->set_value(slider, -5);
    EXPECT_EQ(window->value(slider), 0);
    window->set_value(slider, most * 2);
    EXPECT_EQ(window->value(slider), most);
    window->set_range(slider, 0, 1000);
    EXPECT_EQ(window->value(slider), 1000);
  }
}

TEST_F(ControlsTest, an_empty_range_has_its_one_value) {
  window->set_range(Control::Start_Slider, 0, 0);
  window->set_value(Control::Start_Slider, 7);
  EXPECT_EQ(window->value(Control::Start_Slider), 0);
}

TEST_F(ControlsTest, progress_without_a_value_keeps_the_last_one) {
  window->set_range(Control::Progress_Horz, 0, 100);
  window->set_value(Control::Progress_Horz, 12.25);
  window->set_value(Control::Progress_Horz, std::nullopt);
  EXPECT_EQ(window->value(Control::Progress_Horz), 12.25);
  window->set_value(Control::Progress_Horz, 13);
  EXPECT_EQ(window->value(Control::Progress_Horz), 13);
}

TEST_F(ControlsTest, the_zoom_of_the_gallery_is_its_value) {
  EXPECT_EQ(window->value(Control::imageBrowser), 0.55);
  window->set_value(Control::imageBrowser, 1);
  EXPECT_EQ(window->value(Control::imageBrowser), 1);
}

TEST_F(ControlsTest, the_keyboard_starts_at_the_first_control_of_the_page) {
  show({});
  window->widget(Control::exit_btn).setFocus();
  for (const Control control : {Control::Destination_Box, Control::path, Control::browse_path}) {
    window->set_hidden(control, false);
  }
  EXPECT_TRUE(wait_until([this] { return window->widget(Control::path).hasFocus(); }));
}

TEST_F(ControlsTest, a_chosen_focus_stays_when_a_page_appears) {
  show({});
  window->focus(Control::next_btn);
  window->set_hidden(Control::idCheckTableView, false);
  QCoreApplication::processEvents();
  EXPECT_TRUE(window->widget(Control::next_btn).hasFocus());
}

TEST_F(ControlsTest, disabling_and_focus_reach_the_widget) {
  show({Control::idTableView, Control::Destination_Box, Control::path, Control::browse_path});
  window->set_enabled(Control::next_btn, false);
  EXPECT_FALSE(window->widget(Control::next_btn).isEnabled());
  window->focus(Control::browse_path);
  EXPECT_TRUE(window->widget(Control::browse_path).hasFocus());
}

TEST_F(ControlsTest, the_title_shows_no_steering_characters) {
  window->set_title(u"Norvo\u202E Recovery");
  EXPECT_EQ(to_text(window->windowTitle()), u"Norvo\uFFFD Recovery");
}

}  // namespace
}  // namespace norvo
