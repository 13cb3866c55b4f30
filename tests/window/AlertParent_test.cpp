// Before which window a message box stands.
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "platform/qt/QtAlertPanel.h"
#include "window/WindowTest.h"

namespace norvo {
namespace {

class AlertParentTest : public WindowTest {
 protected:
  // The window before which the panel's next box stands.
  const QWidget* parent_of_box() {
    const QWidget* parent = nullptr;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&parent] {
      for (QWidget* const shown : QApplication::topLevelWidgets()) {
        if (shown->objectName() != "alert" || !shown->isVisible()) continue;
        parent = shown->parentWidget();
        shown->close();
      }
    });
    look.start(5);
    QtAlertPanel(u"Norvo Recovery", window.get())
        .run({.message = u"Done.",
              .default_button = u"OK",
              .alternate_button = {},
              .other_button = {},
              .informative_text = {}});
    return parent;
  }
};

TEST_F(AlertParentTest, it_is_the_programs_window_while_another_program_has_the_keyboard) {
  show({});
  QApplication::setActiveWindow(nullptr);
  ASSERT_EQ(QApplication::activeWindow(), nullptr);
  EXPECT_EQ(parent_of_box(), window.get());
}

TEST_F(AlertParentTest, it_is_the_active_window_otherwise) {
  show({});
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_EQ(parent_of_box(), &other);
}

}  // namespace
}  // namespace norvo
