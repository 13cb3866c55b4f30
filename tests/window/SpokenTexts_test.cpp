// What a screen reader is told of the texts that labels show.
#include <QAccessible>
#include <QLabel>
#include <utility>

#include "platform/qt/QtText.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class SpokenTextsTest : public WindowTest {
 protected:
  QString spoken(Control control) {
    return QAccessible::queryAccessibleInterface(&find<QWidget>(control))->text(QAccessible::Name);
  }
};

TEST_F(SpokenTextsTest, a_label_is_heard_with_the_text_that_it_shows) {
  const std::vector<std::pair<Control, QString>> labels{
      {Control::help_info, "What to do: Select a drive & press Next"},
      {Control::sector_label, "Searched sectors: Select a drive & press Next"},
      {Control::time_left, "Time left: Select a drive & press Next"},
      {Control::Search_Type, "Search type: Select a drive & press Next"},
      {Control::ClearThumbnail_Label, "About the shown items: Select a drive & press Next"},
      {Control::disk_val_Sig, "Disk: Select a drive & press Next"},
      {Control::End_Sec_Max_val, "Last sector: Select a drive & press Next"},
      {Control::destination_hint, "About the destination folder: Select a drive & press Next"}};
  for (const auto& [control, heard] : labels) {
    window->set_text(control, u"\nSelect a drive & press Next ");
    EXPECT_EQ(spoken(control), heard);
  }
}

TEST_F(SpokenTextsTest, an_empty_label_is_heard_by_its_name_alone) {
  window->set_text(Control::time_left, u"3 minutes");
  window->set_text(Control::time_left, u" ");
  EXPECT_EQ(spoken(Control::time_left), "Time left");
  EXPECT_EQ(spoken(Control::Mode_label), "What is running");
}

TEST_F(SpokenTextsTest, a_label_with_a_text_of_its_own_is_heard_with_it_and_a_caption_once) {
  EXPECT_EQ(spoken(Control::Thro_Mode_Chk_Label), "Thorough search: Recommended");
  EXPECT_TRUE(spoken(Control::Thro_Mode_Info).contains("takes about twice as long"));
  EXPECT_TRUE(spoken(Control::Sector_Range_Info).startsWith("About the sector range: "));
  EXPECT_EQ(spoken(Control::zoom_label), "Size");
  EXPECT_EQ(spoken(Control::path_label), "Folder");
  EXPECT_EQ(spoken(Control::disk), "Disk");
  EXPECT_EQ(spoken(Control::Start_Sec_curr), "Start sector");
}

// Two labels that may be announced and one with figures, and what was announced of them.
class AnnouncementTest : public testing::Test {
 protected:
  using Names = std::vector<std::string>;

  AnnouncementTest() {
    for (const Control control :
         {Control::help_info, Control::destination_hint, Control::sector_label}) {
      table_.add(control, new QLabel(&window_), "Name");
    }
    window_.show();
  }

  // Those since the last call.
  Names announced() { return std::exchange(announced_, {}); }

  Names announced_;
  QWidget window_;
  ControlTable table_{
      [this](QWidget& widget) { announced_.push_back(widget.objectName().toStdString()); }};
};

TEST_F(AnnouncementTest, a_warning_is_announced_when_it_comes_to_be_seen_and_when_it_changes) {
  table_.set_text(Control::destination_hint, u"on the searched card");
  EXPECT_EQ(announced(), Names{}) << "nobody sees it yet";
  table_.set_hidden(Control::destination_hint, false);
  EXPECT_EQ(announced(), Names{"_destination_hint"});
  table_.set_text(Control::destination_hint, u"on the searched card");
  table_.set_hidden(Control::destination_hint, false);
  EXPECT_EQ(announced(), Names{}) << "nothing has changed";
  table_.set_text(Control::destination_hint, u"less room");
  EXPECT_EQ(announced(), Names{"_destination_hint"});
  table_.set_hidden(Control::destination_hint, true);
  EXPECT_EQ(announced(), Names{});
}

TEST_F(AnnouncementTest, guidance_is_announced_and_figures_are_not) {
  table_.set_hidden(Control::sector_label, false);
  table_.set_hidden(Control::help_info, false);
  table_.set_text(Control::sector_label, u"Sectors 1 of 2");
  EXPECT_EQ(announced(), Names{});
  table_.set_text(Control::help_info, u"Please wait");
  EXPECT_EQ(announced(), Names{"_help_info"});
  table_.set_text(Control::help_info, u" ");
  EXPECT_EQ(announced(), Names{}) << "there is nothing to hear";
}

}  // namespace
}  // namespace norvo
