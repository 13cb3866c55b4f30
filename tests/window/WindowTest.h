// A window over small lists, and a record of what it tells.
#pragma once

#include <gtest/gtest.h>

#include <QMimeData>
#include <QPoint>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/MainWindow.h"
#include "results/Gallery.h"
#include "wizard/WizardEvents.h"

namespace norvo {

// Each act as a line, "clicked _next_btn" for example.
class RecordedEvents : public WizardEvents {
 public:
  void clicked(Control control) override;
  void changed(Control control) override;
  void ticked(std::size_t row, bool on) override;
  void double_clicked(Control view, std::size_t index) override;
  void selection_changed(Control view) override;
  void removed(Control view, const std::vector<std::size_t>& indexes) override;
  void moved(Control view, const std::vector<std::size_t>& indexes,
             std::size_t destination) override;
  void disk_image_chosen(const std::filesystem::path& image) override;
  void windowShouldClose() override;

  std::vector<std::string> lines;
};

// Answers nothing by itself.
class SilentThumbnails : public ThumbnailSource {
 public:
  void request(const std::filesystem::path& path, const QString& image_UID, int pixels) override;
  void put_first(const QString& image_UID) override { put_forward.push_back(image_UID); }
  void cancel_all() override { ++cancelled; }

  struct Request {
    std::filesystem::path path;
    QString image_UID;
    int pixels;
  };
  std::vector<Request> requests;
  std::vector<QString> put_forward;
  int cancelled = 0;
};

// How long a window may take for anything, in milliseconds: on a busy machine it is quick seldom.
constexpr int patience = 60'000;

// Lets the event loop work until `done` or out of patience; returns whether it was done.
bool wait_until(const std::function<bool()>& done);

// Drags `content` over `target` and lets it go at `place`; returns whether it was taken.
bool drop(QWidget& target, const QMimeData& content, const QPoint& place);

class WindowTest : public testing::Test {
 protected:
  WindowTest();

  // The widget named `control`, of the given type.
  template <class Widget>
  Widget& find(Control control) {
    const std::string name(control_name(control));
    auto* found = window->findChild<Widget*>(QString::fromStdString(name));
    if (found == nullptr) throw std::runtime_error("no such widget: " + name);
    return *found;
  }

  // Shows the window with these controls.
  void show(const std::vector<Control>& controls);

  // Adds items named "1", "2" and so on after those that are there, and reloads.
  void add_photos(std::size_t count);

  std::vector<std::vector<Text>> drives;
  std::vector<bool> ticks{true, false, true};
  Gallery gallery;
  SilentThumbnails thumbnails;
  std::vector<Text> without_preview;
  RecordedEvents events;
  std::unique_ptr<MainWindow> window;
};

}  // namespace norvo
