// What the person sees while the program starts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QWindow>

#include "window/flow/WindowFlow.h"

namespace norvo {
namespace {

QWidget* find_widget(const QString& name) {
  for (QWidget* const widget : QApplication::allWidgets()) {
    if (widget->objectName() == name) return widget;
  }
  return nullptr;
}

TEST(Start, TheNoticeIsSeenWhileDrivesAreLookedForTheFirstTime) {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(1);
  int looks = 0;
  bool seen = false;
  test::WindowFlow flow(medium, u"Norvo Spruce", [&] {
    ++looks;
    const QWidget* const notice = find_widget(QStringLiteral("LoadDrive_Modeless"));
    ASSERT_NE(notice, nullptr);
    seen = notice->isVisible() && notice->window()->windowHandle()->isExposed();
  });
  EXPECT_EQ(looks, 1);
  EXPECT_TRUE(seen);
  EXPECT_FALSE(find_widget(QStringLiteral("LoadDrive_Modeless"))->isVisible());
  EXPECT_TRUE(flow.is_visible(Control::idTableView));
}

TEST(Start, TheDriveListHasTheKeyboard) {
  test::FakeMedium medium;
  medium.bytes = test::card_with_photos(1);
  test::WindowFlow flow(medium);
  EXPECT_TRUE(flow.wait_until(
      [&] { return flow.program().window().focusWidget() == &flow.widget(Control::idTableView); }));
}

}  // namespace
}  // namespace norvo
