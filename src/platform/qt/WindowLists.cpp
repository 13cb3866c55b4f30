#include "platform/qt/WindowLists.h"

namespace norvo {
namespace {

std::optional<Text> drive_value(const DriveList& drives, std::string_view column, std::size_t row) {
  return drives.objectValue(text_from_utf8_lossy(column), row);
}

std::optional<Text> check_list_value(const FileTypeCheckList& list, std::string_view column,
                                     std::size_t row) {
  if (row >= list.rows().size()) return std::nullopt;
  const FileTypeEntry& entry = list.rows()[row];
  if (column == "Extension") return entry.Extension;
  if (column == "Description") return entry.Description;
  if (column == "Thoro") return entry.Thoro;
  return std::nullopt;
}

std::optional<Text> found_files_value(const FoundFilesTable& table, std::string_view column,
                                      std::size_t row) {
  if (row >= table.size()) return std::nullopt;
  const FoundFilesRow found = table.row(row);
  if (column == "FileTypes") return found.FileTypes;
  if (column == "NoOfFile") return found.NoOfFile;
  if (column == "FileName") return found.FileName;
  if (column == "FilePath") return text_from_utf8_lossy(found.FilePath.native());
  return std::nullopt;
}

}  // namespace

WindowContent window_content(MyTableController& controller, const DriveList& drives,
                             ThumbnailSource& thumbnails) {
  const auto ticked = [&controller](std::size_t row) {
    const auto& rows = controller.check_list().rows();
    return row < rows.size() && rows[row].State;
  };
  return {
      .drives = {.rows = [&drives] { return drives.numberOfRows(); },
                 .value = [&drives](std::string_view column,
                                    std::size_t row) { return drive_value(drives, column, row); }},
      .check_list = {.rows = [&controller] { return controller.check_list().rows().size(); },
                     .value =
                         [&controller](std::string_view column, std::size_t row) {
                           return check_list_value(controller.check_list(), column, row);
                         },
                     .ticked = ticked},
      .found_files = {.rows = [&controller] { return controller.found_files().size(); },
                      .value =
                          [&controller](std::string_view column, std::size_t row) {
                            return found_files_value(controller.found_files(), column, row);
                          }},
      .gallery = controller.gallery(),
      .thumbnails = thumbnails,
      .mark_no_preview = [&controller](TextView image_UID) {
        controller.gallery().show_placeholder(image_UID);
      }};
}

}  // namespace norvo
