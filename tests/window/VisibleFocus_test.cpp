// Whoever works with the keyboard sees where it is.
#include <QTest>

#include "window/WindowTest.h"

namespace norvo {
namespace {

constexpr int edge = 4;

// The picture without its middle, where a blinking cursor would be a difference too.
QImage frame_of(QWidget& widget) {
  QImage picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
  const int width = static_cast<int>(edge * picture.devicePixelRatio());
  for (int y = width; y < picture.height() - width; ++y) {
    for (int x = width; x < picture.width() - width; ++x) picture.setPixel(x, y, 0);
  }
  return picture;
}

class VisibleFocusTest : public WindowTest {};

TEST_F(VisibleFocusTest, each_control_that_takes_keys_has_another_edge_with_the_focus) {
  drives.resize(2, std::vector<Text>(6));
  window->reload(Control::idTableView);
  int focused = 0;
  // The screens one by one: all together would leave each other no room.
  for (const auto& screen : std::vector<std::vector<Control>>{
           {Control::idTableView, Control::refresh_Box, Control::refresh_btn,
            Control::open_image_btn, Control::rec_mode_Box, Control::rec_mode_Photo,
            Control::rec_mode_Video, Control::rec_mode_RawFile, Control::rec_mode_Audio},
           {Control::Criteria_Box, Control::entire_disk_rd, Control::sector_range_rd,
            Control::Disk_Info_Box, Control::Start_Sec_Box, Control::Start_slider_val,
            Control::Start_Slider, Control::Destination_Box, Control::path, Control::browse_path,
            Control::Thro_Mode_Chk},
           {Control::idCheckTableView, Control::select_unselect_Chk, Control::Thro_Mode_Chk_SIG},
           {Control::imageBrowser, Control::open_folder, Control::zoom_slider, Control::stop_scan},
           {Control::idSigTableView, Control::imageBrowser_2, Control::open_folder_Sig},
           {Control::next_btn, Control::back_btn, Control::exit_btn, Control::help_btn,
            Control::contact_btn}}) {
    show(screen);
    QCoreApplication::processEvents();
    for (const Control control : screen) {
      QWidget& widget = find<QWidget>(control);
      if ((widget.focusPolicy() & Qt::TabFocus) == 0) continue;
      window->focus(control == Control::next_btn ? Control::back_btn : Control::next_btn);
      const QImage without = frame_of(widget);
      window->focus(control);
      ASSERT_TRUE(widget.hasFocus()) << control_name(control);
      EXPECT_NE(frame_of(widget), without) << control_name(control);
      ++focused;
    }
    for (const Control control : screen) window->set_hidden(control, true);
    for (const Control control : {Control::next_btn, Control::back_btn}) {
      window->set_hidden(control, false);
    }
  }
  EXPECT_EQ(focused, 29);
}

}  // namespace
}  // namespace norvo
