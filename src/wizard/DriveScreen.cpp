#include "wizard/DriveScreen.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "wizard/SearchTypes.h"

namespace norvo {
namespace fs = std::filesystem;

void DriveScreen::Reload_Drive_list_Function() {
  notices_.show_LoadDrive();
  drives_.Reload_Drive_list_Function();
  for (const fs::path& image : images_) {
    if (std::optional<MyDataObject> row = row_of(image)) drives_.addRow(*std::move(row));
  }
  view_.reload(Control::idTableView);
  notices_.hide_LoadDrive();
}

void DriveScreen::choose(std::int32_t Recovery_MODE) {
  state_.Recovery_MODE = Recovery_MODE;
  const Control chosen = search_type(Recovery_MODE).radio;
  view_.set_on(chosen, true);
  for (const SearchType& type : search_types) {
    if (type.radio != chosen) view_.set_on(type.radio, false);
  }
}

std::optional<MyDataObject> DriveScreen::row_of(const fs::path& image) const {
  constexpr std::uintmax_t sector_size = 512;
  std::error_code error;
  if (!fs::is_regular_file(image, error)) return std::nullopt;
  const std::uintmax_t size = fs::file_size(image, error);
  if (error || size < sector_size || !std::ifstream(image, std::ios::binary)) return std::nullopt;
  return MyDataObject::initWithString1(
      text_from_utf8_lossy(image.native()), text_from_utf8_lossy(image.filename().native()),
      u"Disk Image", getMPSize(decimal(size)), u"", decimal(size / sector_size));
}

std::size_t DriveScreen::place_of(TextView identifier) const {
  const auto& rows = drives_.nsMutaryOfDataObject();
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const MyDataObject& row) {
    return row.nsStrDiskIdentifier == identifier;
  });
  return static_cast<std::size_t>(found - rows.begin());
}

bool DriveScreen::open_disk_image(const fs::path& image) {
  std::error_code error;
  const fs::path absolute = fs::absolute(image, error);
  // The row's identifier is the path as a text, which must lead back to the file.
  if (error || !text_from_utf8(absolute.native())) return false;
  const std::optional<MyDataObject> row = row_of(absolute);
  if (!row) return false;
  if (std::find(images_.begin(), images_.end(), absolute) == images_.end()) {
    images_.push_back(absolute);
  }
  // An image that could not be read at the last reload has no row, although it was opened before.
  const std::size_t place = place_of(row->nsStrDiskIdentifier);
  if (place == drives_.numberOfRows()) {
    drives_.addRow(*row);
    view_.reload(Control::idTableView);
  }
  view_.select_row(Control::idTableView, place);
  view_.focus(Control::idTableView);
  return true;
}

}  // namespace norvo
