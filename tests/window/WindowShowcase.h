// Fills the window with the states that people see, through the interfaces of the wizard only.
#pragma once

#include <QString>
#include <filesystem>
#include <vector>

#include "platform/qt/DecoderThumbnails.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/MovieView.h"
#include "platform/qt/QtMainThread.h"
#include "results/FoundFilesTable.h"
#include "results/Gallery.h"
#include "sigdb/FileTypeCheckList.h"

namespace norvo {

class WindowShowcase {
 public:
  // Photos for the gallery are taken from `pictures` and read by `decoder`, a norvo-decoder.
  WindowShowcase(const std::filesystem::path& pictures, const std::filesystem::path& decoder);

  MainWindow& window() { return *window_; }

  // One of names(); everything of the state before is hidden first.
  void show(const QString& state);
  static std::vector<QString> names();

 private:
  WindowContent content();
  void select(Control list, const std::vector<int>& rows);
  void show_group(const std::vector<Control>& controls);
  void show_drives(bool any);
  void show_settings(SettingsPage page, bool range);
  void show_check_list();
  void show_gallery(bool any, bool ended);
  void show_found_files(bool ended);
  void show_movie(TextView name);
  void show_progress(const char16_t* mode, const char16_t* sectors, const char16_t* left);

  std::filesystem::path pictures_;
  bool has_drives_ = true;
  Gallery gallery_;
  FoundFilesTable found_files_;
  FileTypeCheckList check_list_;
  QtMainThread main_thread_;
  DecoderThumbnails thumbnails_;
  std::unique_ptr<MainWindow> window_;
  MovieView* movie_view_;  // belongs to the window
};

}  // namespace norvo
