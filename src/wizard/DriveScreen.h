// The drive list and the choice of the search type. Main thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "storage/DriveList.h"
#include "wizard/Notices.h"
#include "wizard/WizardState.h"
#include "wizard/WizardView.h"

namespace norvo {

class DriveScreen {
 public:
  // What is referred to outlives the screen.
  DriveScreen(WizardView& view, WizardState& state, Notices& notices, DriveList& drives)
      : view_(view), state_(state), notices_(notices), drives_(drives) {}

  // Rebuilds the drive list while the loading notice is shown. Disk images that the person opened
  // follow the drives for as long as they can be read.
  void Reload_Drive_list_Function();

  // The refresh button.
  void rebresh_drives() { Reload_Drive_list_Function(); }

  // The search types' radios.
  void Photo_Mode_Radio() { choose(0); }
  void Video_Mode_Radio() { choose(1); }
  void RawFile_Mode_Radio() { choose(2); }
  void Audio_Mode_Radio() { choose(3); }

  // Adds a row for a disk image, unless it has one, and selects it. False when it cannot be read as
  // one: it is no regular file, holds no whole sector, or the person may not read it.
  bool open_disk_image(const std::filesystem::path& image);

 private:
  void choose(std::int32_t Recovery_MODE);
  // The index of the row, or the number of rows without one.
  std::size_t place_of(TextView identifier) const;
  std::optional<MyDataObject> row_of(const std::filesystem::path& image) const;

  WizardView& view_;
  WizardState& state_;
  Notices& notices_;
  DriveList& drives_;
  std::vector<std::filesystem::path> images_;
};

}  // namespace norvo
