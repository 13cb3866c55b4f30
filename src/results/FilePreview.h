// Which preview a recovered file gets: the movie that it is, else its picture, else the icon of its
// type. A preview that nobody would see any more is not shown. Main thread.
#pragma once

#include <filesystem>
#include <functional>

#include "results/PreviewPane.h"
#include "results/PreviewSurface.h"

namespace norvo {

class FilePreview final : public PreviewPane {
 public:
  // `surface` outlives this. `shown` is called whenever a preview that was asked for is there.
  FilePreview(PreviewSurface& surface, std::function<void()> shown);

  void clear() override;

  // An empty path is no file: nothing is shown.
  void CreateFile_QuickLook_Preview(const std::filesystem::path& path) override;

  // The surface's answers about the file. A movie can fail while it plays, too; then its picture
  // takes its place. When the box is not shown any more, the preview is cleared instead.
  void movie_opened();
  void movie_failed();
  void thumbnail_made(bool can_be_shown);

  // Whether a preview is being prepared.
  bool prev_modless_open() const { return prev_modless_open_; }

 private:
  void QuickLook_Preview_Thread(const std::filesystem::path& path);
  void setQuickLook_View(const std::filesystem::path& path);
  void Image_Preview(const std::filesystem::path& path, const std::filesystem::path& file_Name);
  bool is_wanted();
  void finish();

  PreviewSurface& surface_;
  std::function<void()> shown_;
  std::filesystem::path path_;       // empty without a preview
  std::filesystem::path file_Name_;  // of the picture that is being made
  bool prev_modless_open_ = false;
};

}  // namespace norvo
