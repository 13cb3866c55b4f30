// Every screen in the smallest window: nothing lies outside it, and nothing is squeezed.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLayout>
#include <QScrollArea>
#include <QTest>

#include "support/TemporaryFolder.h"
#include "window/WindowShowcase.h"

namespace norvo {
namespace {

class SmallestScreens : public testing::Test {
 protected:
  SmallestScreens() {
    QImage photo(60, 40, QImage::Format_RGB32);
    photo.fill(Qt::darkGreen);
    for (const char* const name : {"01.jpg", "02.jpg"}) {
      EXPECT_TRUE(photo.save(QString::fromStdString((folder_.path() / name).string())));
    }
  }

  static const QScrollArea* scrolled_in(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
      const auto* const area = qobject_cast<const QScrollArea*>(widget);
      if (area != nullptr) return area;
    }
    return nullptr;
  }

  // What is wrong with the place of a visible control; empty if nothing is.
  static std::string fault_of(const QWidget& window, const QWidget& widget) {
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    const QScrollArea* const area = scrolled_in(&widget);
    const QRect room =
        area == nullptr ? window.rect() : QRect(area->mapTo(&window, QPoint()), area->size());
    if (place.left() < room.left() || place.right() > room.right()) return "beyond the sides";
    const bool high = place.top() < room.top() || place.bottom() > room.bottom();
    if (area == nullptr && high) return "above or below";
    QSize least = widget.minimumSizeHint();
    // Texts are the lower the wider they are.
    if (const QLayout* const layout = widget.layout(); layout && layout->hasHeightForWidth()) {
      least.setHeight(layout->minimumHeightForWidth(widget.width()));
    }
    if (place.width() < least.width()) return "too narrow";
    if (place.height() < least.height()) return "too low";
    return {};
  }

  test::TemporaryFolder folder_;
  WindowShowcase showcase_{folder_.path(), NORVO_DECODER, NORVO_SIGNATURE_MASTERS};
};

TEST_F(SmallestScreens, HaveAllOfTheirControlsInTheWindow) {
  MainWindow& window = showcase_.window();
  ASSERT_EQ(window.minimumSize(), QSize(900, 600));
  window.resize(window.minimumSize());
  window.show();
  for (const QString& state : WindowShowcase::names()) {
    showcase_.show(state);
    QTest::qWait(150);
    EXPECT_EQ(window.size(), QSize(900, 600)) << state.toStdString();
    int seen = 0;
    for (std::size_t i = 0; i < control_count; ++i) {
      const auto control = static_cast<Control>(i);
      const QWidget& widget = window.widget(control);
      if (!widget.isVisible()) continue;
      ++seen;
      EXPECT_EQ(fault_of(window, widget), "")
          << state.toStdString() << ' ' << control_name(control);
    }
    EXPECT_GT(seen, 9) << state.toStdString();
  }
}

}  // namespace
}  // namespace norvo
