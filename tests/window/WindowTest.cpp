#include "window/WindowTest.h"

#include <QDropEvent>
#include <QTest>

#include "util/Text.h"

namespace norvo {
namespace {

std::string named(const char* act, Control control) {
  return std::string(act) + " " + std::string(control_name(control));
}

std::string listed(const std::vector<std::size_t>& indexes) {
  std::string list;
  for (const std::size_t index : indexes) list += " " + std::to_string(index);
  return list;
}

}  // namespace

void RecordedEvents::clicked(Control control) {
  lines.push_back(named("clicked", control));
}

void RecordedEvents::changed(Control control) {
  lines.push_back(named("changed", control));
}

void RecordedEvents::ticked(std::size_t row, bool on) {
  lines.push_back("ticked " + std::to_string(row) + (on ? " on" : " off"));
}

void RecordedEvents::double_clicked(Control view, std::size_t index) {
  lines.push_back(named("double_clicked", view) + listed({index}));
}

void RecordedEvents::selection_changed(Control view) {
  lines.push_back(named("selection_changed", view));
}

void RecordedEvents::removed(Control view, const std::vector<std::size_t>& indexes) {
  lines.push_back(named("removed", view) + listed(indexes));
}

void RecordedEvents::moved(Control view, const std::vector<std::size_t>& indexes,
                           std::size_t destination) {
  lines.push_back(named("moved", view) + listed(indexes) + " to" + listed({destination}));
}

void RecordedEvents::disk_image_chosen(const std::filesystem::path& image) {
  lines.push_back("disk_image_chosen " + image.string());
}

void RecordedEvents::windowShouldClose() {
  lines.emplace_back("windowShouldClose");
}

void SilentThumbnails::request(const std::filesystem::path& path, const QString& image_UID,
                               int pixels) {
  requests.push_back({path, image_UID, pixels});
}

bool wait_until(const std::function<bool()>& done) {
  return QTest::qWaitFor(done, patience);
}

bool drop(QWidget& target, const QMimeData& content, const QPoint& place) {
  QDragEnterEvent enter(place, Qt::MoveAction | Qt::CopyAction, &content, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&target, &enter);
  if (!enter.isAccepted()) return false;
  QDragMoveEvent move(place, Qt::MoveAction | Qt::CopyAction, &content, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&target, &move);
  QDropEvent let_go(place, Qt::MoveAction | Qt::CopyAction, &content, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&target, &let_go);
  return let_go.isAccepted();
}

WindowTest::WindowTest() {
  TableSource drive_source{
      .rows = [this] { return drives.size(); },
      .value = [this](std::string_view column, std::size_t row) -> std::optional<Text> {
        if (row >= drives.size()) return std::nullopt;
        return drives[row].at(static_cast<std::size_t>(column.back() - '1'));
      }};
  TableSource check_list{
      .rows = [this] { return ticks.size(); },
      .value = [](std::string_view /*column*/, std::size_t row) -> std::optional<Text> {
        return decimal(row);
      },
      .ticked = [this](std::size_t row) { return static_cast<bool>(ticks[row]); }};
  TableSource found_files{
      .rows = [] { return std::size_t{2}; },
      .value = [](std::string_view column, std::size_t /*row*/) -> std::optional<Text> {
        return text_from_utf8_lossy(column);
      }};
  window = std::make_unique<MainWindow>(WindowContent{
      .drives = drive_source,
      .check_list = check_list,
      .found_files = found_files,
      .gallery = gallery,
      .thumbnails = thumbnails,
      .mark_no_preview = [this](TextView image_UID) { without_preview.emplace_back(image_UID); }});
  window->connect_to(events);
}

void WindowTest::show(const std::vector<Control>& controls) {
  for (const Control control : controls) window->set_hidden(control, false);
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));
}

void WindowTest::add_photos(std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const Text name = decimal(gallery.size() + 1);
    gallery.addImageWithPath("/nowhere/" + utf8_from_text(name) + ".jpg", name, name);
  }
  window->reload(Control::imageBrowser);
}

}  // namespace norvo
