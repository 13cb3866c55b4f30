// Fills the window with states that people see in one edition, "Norvo Spruce", through the
// interfaces of the wizard only.
#pragma once

#include <QString>
#include <filesystem>
#include <vector>

#include "app/EditionProfile.h"
#include "platform/qt/DecoderThumbnails.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/MovieView.h"
#include "platform/qt/QtMainThread.h"
#include "results/FoundFilesTable.h"
#include "results/Gallery.h"
#include "results/PreviewPane.h"
#include "sigdb/FileTypeCheckList.h"
#include "sigdb/SignatureTables.h"
#include "storage/DriveList.h"
#include "wizard/Screens.h"

namespace norvo {

// Two cards, a stick and a volume of the built-in disk, while they are connected.
class ShowcaseDrives final : public DiskUtility {
 public:
  std::vector<std::filesystem::path> mountedRemovableMedia() override { return {}; }
  std::vector<std::filesystem::path> mountedLocalVolumePaths() override;
  std::optional<DiskReport> info(const std::filesystem::path& path) override;

  bool connected = true;
};

// The movie that is shown stays.
class ShowcasePreview final : public PreviewPane {
 public:
  void clear() override {}
  void CreateFile_QuickLook_Preview(const std::filesystem::path&) override {}
};

class WindowShowcase {
 public:
  // Photos for the gallery are taken from `pictures` and read by `decoder`, a norvo-decoder; the
  // file types from `signatures`, the folder of the masters of the signature files.
  WindowShowcase(const std::filesystem::path& pictures, const std::filesystem::path& decoder,
                 const std::filesystem::path& signatures);

  MainWindow& window() { return *window_; }
  const EditionProfile& edition() const { return profile_; }

  // Where the results of the photo search lie.
  std::filesystem::path results_folder() const;

  // One of names(); everything of the state before is hidden first.
  void show(const QString& state);
  static std::vector<QString> names();

 private:
  WindowContent content();
  void select(Control list, const std::vector<int>& rows);
  void show_group(const std::vector<Control>& controls);
  void show_drives(bool any);
  void show_settings(bool range);
  void show_drive(const MyDataObject& drive);
  void show_check_list();
  void show_gallery(const QString& state);
  void add_photos(int count, std::uint64_t first_number);
  void show_found_files(bool ended);
  void add_found_files();
  void show_movie(TextView name);
  void show_progress(const char16_t* left);
  void end_search();

  std::filesystem::path pictures_;
  const EditionProfile profile_ = select_edition(u"Norvo Spruce");
  const EditionPresentation presentation_;
  ShowcaseDrives disks_;
  DriveList drives_;
  WizardState state_;
  Gallery gallery_;
  FoundFilesTable found_files_;
  SignatureTables tables_;
  FileTypeCheckList check_list_;
  QtMainThread main_thread_;
  DecoderThumbnails thumbnails_;
  std::unique_ptr<MainWindow> window_;
  ShowcasePreview preview_;
  std::unique_ptr<Screens> screens_;
  MovieView* movie_view_;  // belongs to the window
};

}  // namespace norvo
