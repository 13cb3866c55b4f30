#include "results/FilePreview.h"

#include <utility>

namespace norvo {
namespace fs = std::filesystem;

FilePreview::FilePreview(PreviewSurface& surface, std::function<void()> shown)
    : surface_(surface), shown_(std::move(shown)) {
}

void FilePreview::clear() {
  path_.clear();
  prev_modless_open_ = false;
  surface_.clear_image();
  surface_.closemovie_Win();
}

void FilePreview::CreateFile_QuickLook_Preview(const fs::path& path) {
  path_ = path;
  prev_modless_open_ = true;
  QuickLook_Preview_Thread(path);
  if (path.empty()) finish();
}

void FilePreview::QuickLook_Preview_Thread(const fs::path& path) {
  setQuickLook_View(path);
}

// Whether the file is a movie is known only when its player has looked at it.
void FilePreview::setQuickLook_View(const fs::path& path) {
  if (!path.empty()) surface_.open_movie(path);
}

void FilePreview::movie_opened() {
  if (!is_wanted()) return;
  surface_.show_view(PreviewSurface::View::movie);
  finish();
}

void FilePreview::movie_failed() {
  if (!is_wanted()) return;
  surface_.show_view(PreviewSurface::View::image);
  Image_Preview(path_, path_.filename());
}

void FilePreview::Image_Preview(const fs::path& path, const fs::path& file_Name) {
  file_Name_ = file_Name;
  surface_.make_thumbnail(path);
}

void FilePreview::thumbnail_made(bool can_be_shown) {
  if (!is_wanted()) return;
  if (can_be_shown) {
    surface_.show_thumbnail();
  } else {
    surface_.show_icon(file_Name_);
  }
  finish();
}

// The person may have left the screen meanwhile; showing a view would bring its page back.
bool FilePreview::is_wanted() {
  if (path_.empty()) return false;
  if (surface_.is_shown()) return true;
  clear();
  return false;
}

void FilePreview::finish() {
  if (std::exchange(prev_modless_open_, false)) shown_();
}

}  // namespace norvo
