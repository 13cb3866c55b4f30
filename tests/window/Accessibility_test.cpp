// What a screen reader does for the person is the person's act, and what it is told is true.
#include <QAbstractButton>
#include <QAccessible>

#include "window/WindowTest.h"

namespace norvo {
namespace {

using Lines = std::vector<std::string>;

class AccessibilityTest : public WindowTest {
 protected:
  QAccessibleInterface& accessible(Control control) {
    return *QAccessible::queryAccessibleInterface(&find<QWidget>(control));
  }
  void act(Control control, const QString& action) {
    accessible(control).actionInterface()->doAction(action);
  }
  QAccessibleValueInterface& slider(Control control) {
    return *accessible(control).valueInterface();
  }
};

const QString& toggle = QAccessibleActionInterface::toggleAction();

TEST_F(AccessibilityTest, TogglingARadioOrABoxIsToldOnceAsAClick) {
  const std::vector<Control> controls{Control::rec_mode_Photo,      Control::rec_mode_Video,
                                      Control::entire_disk_rd,      Control::sector_range_rd_Sig,
                                      Control::select_unselect_Chk, Control::Thro_Mode_Chk};
  show({});
  for (const Control control : controls) {
    window->set_on(control, false);
    act(control, toggle);
    EXPECT_TRUE(window->is_on(control)) << control_name(control);
    act(control, toggle);
    EXPECT_FALSE(window->is_on(control)) << control_name(control);
    const std::string told = "clicked " + std::string(control_name(control));
    EXPECT_EQ(events.lines, (Lines{told, told}));
    events.lines.clear();
  }
}

TEST_F(AccessibilityTest, PressingAButtonIsToldOnce) {
  show({});
  act(Control::next_btn, QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(wait_until([this] { return !events.lines.empty(); }));
  EXPECT_EQ(events.lines, Lines{"clicked _next_btn"});
}

TEST_F(AccessibilityTest, ASliderIsToldInSectors) {
  window->set_range(Control::End_Slider, 0, 2'000'000'000'000);
  window->set_value(Control::End_Slider, 123'456'789'012);
  QAccessibleValueInterface& end = slider(Control::End_Slider);
  EXPECT_EQ(accessible(Control::End_Slider).role(), QAccessible::Slider);
  EXPECT_EQ(accessible(Control::End_Slider).text(QAccessible::Name), "End sector slider");
  EXPECT_EQ(end.currentValue().toDouble(), 123'456'789'012);
  EXPECT_EQ(end.minimumValue().toDouble(), 0);
  EXPECT_EQ(end.maximumValue().toDouble(), 2'000'000'000'000);
  EXPECT_EQ(end.minimumStepSize().toDouble(), 2'000'000'000);
}

TEST_F(AccessibilityTest, ASliderThatAScreenReaderMovesIsToldAsADragIs) {
  window->set_range(Control::Start_Slider, 0, 2'000'000'000'000);
  slider(Control::Start_Slider).setCurrentValue(123'456'789'013.0);
  EXPECT_EQ(events.lines, Lines{"changed _Start_Slider"});
  EXPECT_EQ(window->value(Control::Start_Slider), 123'456'789'013);
  slider(Control::Start_Slider).setCurrentValue(3e12);
  EXPECT_EQ(window->value(Control::Start_Slider), 2'000'000'000'000);
  slider(Control::Start_Slider).setCurrentValue(-1);
  EXPECT_EQ(window->value(Control::Start_Slider), 0);
}

TEST_F(AccessibilityTest, WhatIsNoNumberMovesNoSlider) {
  window->set_value(Control::Start_Slider, 0.25);
  slider(Control::Start_Slider).setCurrentValue(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(window->value(Control::Start_Slider), 0.25);
  EXPECT_EQ(events.lines, Lines{});
}

}  // namespace
}  // namespace norvo
