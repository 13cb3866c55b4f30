// The small windows that the wizard and the end of a search show. Main thread only.
#pragma once

#include <filesystem>
#include <optional>

#include "util/Text.h"

namespace norvo {

// The code of a modal run that ended with the window's own button.
inline constexpr int closed_by_button = 1;

class Notices {
 public:
  virtual ~Notices() = default;

  // Before the folder chooser: choose a folder on another drive, and why. Returns when its button
  // was pressed (closed_by_button) or it was closed otherwise (0); it stays up until hidden.
  virtual int run_Browse_Info() = 0;
  virtual void hide_Browse_Info() = 0;

  // Asks for one existing folder (new ones can be made); nothing when cancelled.
  virtual std::optional<std::filesystem::path> choose_folder() = 0;

  // After a search: where the files are. As run_Browse_Info.
  virtual int run_SaveFile_Info() = 0;
  virtual void close_SaveFile_Info() = 0;

  // While the drive list is rebuilt. It is drawn before show returns.
  virtual void show_LoadDrive() = 0;
  virtual void hide_LoadDrive() = 0;

  // While the gallery is cleared of its thumbnails. Modeless: the person can do all else meanwhile.
  virtual void show_ClearPreview() = 0;
  virtual void hide_ClearPreview() = 0;

  // The contact dialog; returns when it was closed.
  virtual void run_Help_Support() = 0;
};

}  // namespace norvo
