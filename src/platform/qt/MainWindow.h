// The program's one window: all controls, shown and hidden as the wizard asks. Main thread.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>

#include "platform/qt/ControlTable.h"
#include "platform/qt/Header.h"
#include "platform/qt/TableSource.h"
#include "platform/qt/ThumbnailSource.h"
#include "results/Gallery.h"
#include "wizard/WizardEvents.h"
#include "wizard/WizardView.h"

namespace norvo {

class DrivesScreen;
class GalleryScreen;
class CheckListScreen;
class FoundFilesScreen;
class ResultView;
class TableView;

// What the window shows. The references outlive the window; the functions are called on the main
// thread only.
struct WindowContent {
  TableSource drives;       // columns "Collumn1" to "Collumn6"
  TableSource check_list;   // columns "Extension", "Description", "Thoro"; `ticked` for "State"
  TableSource found_files;  // columns "FileTypes", "NoOfFile", "FileName", "FilePath"
  const Gallery& gallery;
  ThumbnailSource& thumbnails;
  // Hears once of each photo that cannot be shown.
  std::function<void(TextView image_UID)> mark_no_preview;
};

class MainWindow : public QWidget, public WizardView {
 public:
  // All controls of the screens are hidden; those of the footer are visible.
  explicit MainWindow(WindowContent content);

  // Reports the person's acts from now on. `events` outlives the window or is replaced.
  void connect_to(WizardEvents& events) { events_ = &events; }

  // WizardView.
  void set_text(Control control, TextView text) override;
  Text text(Control control) const override;
  void set_hidden(Control control, bool hidden) override;
  void set_enabled(Control control, bool enabled) override;
  void set_on(Control control, bool on) override;
  bool is_on(Control control) const override;
  void set_range(Control control, double minimum, double maximum) override;
  void set_value(Control control, std::optional<double> value) override;
  double value(Control control) const override;
  void focus(Control control) override;
  void reload(Control control, bool scroll_to_last = false) override;
  std::optional<std::size_t> selected_row(Control table) const override;
  void select_row(Control table, std::size_t row) override;
  void set_title(TextView title) override;

  // The widget of a control, for those who put something into it (the preview, a player).
  QWidget& widget(Control control) const { return *controls_.widget(control); }

 protected:
  // Tells the wizard; the window stays.
  void closeEvent(QCloseEvent* event) override;

 private:
  void make_pages(WindowContent content);
  void add_page(QWidget* page, Step step, const QString& title);
  void focus_first(const QWidget& page);
  void make_data_labels();
  void follow_search(bool running);
  void report_results(Control control, ResultView& view);

  ControlTable controls_;
  WizardEvents* events_ = nullptr;
  Header* header_;
  QWidget* body_;
  DrivesScreen* drives_ = nullptr;
  CheckListScreen* check_list_ = nullptr;
  GalleryScreen* gallery_ = nullptr;
  FoundFilesScreen* found_files_ = nullptr;
};

}  // namespace norvo
