// Where previews are shown: an image view and a movie view in one box, with those who open files
// for them. Main thread; nothing here calls its user back before it has returned.
#pragma once

#include <cstdint>
#include <filesystem>

namespace norvo {

class PreviewSurface {
 public:
  virtual ~PreviewSurface() = default;

  // Whether the box is shown by the screen that it belongs to.
  virtual bool is_shown() const = 0;

  // Opens the file as a movie that plays at once. FilePreview::movie_opened() or movie_failed()
  // follows, unless closemovie_Win() comes first.
  virtual void open_movie(const std::filesystem::path& path) = 0;

  // Removes the movie from the movie view and ends it.
  virtual void closemovie_Win() = 0;

  // Shows one view and hides the other.
  enum class View : std::uint8_t { image, movie };
  virtual void show_view(View view) = 0;

  // Makes a small picture of the file. FilePreview::thumbnail_made() follows, unless clear_image()
  // comes first.
  virtual void make_thumbnail(const std::filesystem::path& path) = 0;

  // What the image view has: the picture that was made last, the icon of a file of that name, or
  // nothing.
  virtual void show_thumbnail() = 0;
  virtual void show_icon(const std::filesystem::path& file_Name) = 0;
  virtual void clear_image() = 0;
};

}  // namespace norvo
