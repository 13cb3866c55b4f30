#include "window/WindowShowcase.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

#include "engine/OutputFolders.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

constexpr std::array<std::array<const char16_t*, 6>, 4> drives{{
    {u"sdb1", u"HOLIDAYS", u"FAT32", u"29.72  GB ", u"sdb", u"62333952"},
    {u"sdc1", u"Holiday in the mountains, summer and autumn, second card of the small camera",
     u"exFAT", u"119.38  GB ", u"sdc", u"250347520"},
    {u"sdd1", u"Untitled", u"MS-DOS (FAT16)", u"488.28  MB ", u"sdd", u"1000000"},
    {u"nvme0n1p2", u"Archive", u"ext4", u"931.51  GB ", u"nvme0n1", u"1953523712"},
}};

std::optional<Text> drive_value(std::string_view column, std::size_t row) {
  const auto index = static_cast<std::size_t>(column.back() - '1');
  if (row >= drives.size() || index >= 6) return std::nullopt;
  return Text(drives[row][index]);
}

std::optional<Text> type_value(const FileTypeCheckList& list, std::string_view column,
                               std::size_t row) {
  if (row >= list.rows().size()) return std::nullopt;
  const FileTypeEntry& entry = list.rows()[row];
  if (column == "Extension") return entry.Extension;
  return column == "Description" ? entry.Description : entry.Thoro;
}

std::optional<Text> found_value(const FoundFilesTable& table, std::string_view column,
                                std::size_t row) {
  const FoundFilesRow found = table.row(row);
  if (column == "FileTypes") return found.FileTypes;
  if (column == "NoOfFile") return found.NoOfFile;
  if (column == "FileName") return found.FileName;
  return text_from_utf8_lossy(found.FilePath.string());
}

const std::vector<Control> settings_group{Control::Disk_Info_Box,
                                          Control::Criteria_Box,
                                          Control::entire_disk_rd,
                                          Control::sector_range_rd,
                                          Control::Destination_Box,
                                          Control::path_label,
                                          Control::path,
                                          Control::browse_path,
                                          Control::destination_hint};
const std::vector<Control> disk_group{Control::disk,
                                      Control::vol_name,
                                      Control::file_system,
                                      Control::size,
                                      Control::start_sector_entire,
                                      Control::end_sector_entire,
                                      Control::disk_val,
                                      Control::vol_name_val,
                                      Control::file_system_val,
                                      Control::size_val,
                                      Control::start_sector_entire_val,
                                      Control::end_sector_entire_val};
const std::vector<Control> range_group{
    Control::Sector_Range_Info, Control::Start_Sec_Box,     Control::End_Sec_Box,
    Control::Start_Sec_Min,     Control::Start_Sec_Max,     Control::End_Sec_Min,
    Control::End_Sec_Max,       Control::Start_Sec_curr,    Control::End_Sec_curr,
    Control::Start_Sec_Min_val, Control::Start_Sec_Max_val, Control::End_Sec_Min_val,
    Control::End_Sec_Max_val,   Control::Start_Slider,      Control::End_Slider,
    Control::Start_slider_val,  Control::End_slider_val};

}  // namespace

WindowShowcase::WindowShowcase(const std::filesystem::path& pictures,
                               const std::filesystem::path& decoder)
    : pictures_(pictures), thumbnails_(main_thread_, decoder) {
  window_ = std::make_unique<MainWindow>(content());
  window_->set_title(u"Norvo Recovery for Memory Cards");
  movie_view_ = new MovieView({.play = [] {}, .pause = [] {}, .seek = [](auto) {}});
  auto* layout = new QVBoxLayout(&window_->widget(Control::mMovieView));
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(movie_view_);
}

WindowContent WindowShowcase::content() {
  return {
      .drives = {.rows = [this] { return has_drives_ ? drives.size() : 0; }, .value = drive_value},
      .check_list = {
          .rows = [this] { return check_list_.rows().size(); },
          .value = [this](std::string_view column,
                          std::size_t row) { return type_value(check_list_, column, row); },
          .ticked = [this](std::size_t row) { return check_list_.rows()[row].State; }},
      .found_files = {
          .rows = [this] { return found_files_.size(); },
          .value = [this](std::string_view column,
                          std::size_t row) { return found_value(found_files_, column, row); }},
      .gallery = gallery_,
      .thumbnails = thumbnails_,
      .mark_no_preview = {},
  };
}

void WindowShowcase::select(Control list, const std::vector<int>& rows) {
  auto& view = dynamic_cast<QAbstractItemView&>(window_->widget(list));
  QApplication::processEvents(QEventLoop::AllEvents, 200);
  for (const int row : rows) {
    view.selectionModel()->select(view.model()->index(row, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
}

std::vector<QString> WindowShowcase::names() {
  return {u"drives"_s,         u"no_drives"_s,  u"settings"_s,   u"settings_range"_s,
          u"settings_other"_s, u"file_types"_s, u"no_photos"_s,  u"photos"_s,
          u"photos_ended"_s,   u"files"_s,      u"files_ended"_s};
}

void WindowShowcase::show_group(const std::vector<Control>& controls) {
  for (const Control control : controls) window_->set_hidden(control, false);
}

void WindowShowcase::show(const QString& state) {
  for (std::size_t i = 0; i < control_count; ++i) {
    window_->set_hidden(static_cast<Control>(i), true);
  }
  show_group({Control::next_btn, Control::back_btn, Control::exit_btn, Control::help_btn,
              Control::contact_btn, Control::help_info});
  const bool photos = state != u"settings_other"_s && !state.startsWith(u"file");
  window_->set_on(Control::rec_mode_Photo, photos);
  window_->set_on(Control::rec_mode_Video, !photos);
  window_->set_text(Control::Search_Type,
                    photos ? u"Search Type : Recover Photo" : u"Search Type : Recover Video");
  const bool searching = state.contains(u"photos"_s) || state.startsWith(u"files");
  window_->set_enabled(Control::next_btn, !searching);
  window_->set_enabled(Control::back_btn, !searching && !state.contains(u"drives"_s));
  if (!state.contains(u"drives"_s)) show_group({Control::Search_Type});
  if (state.contains(u"drives"_s)) show_drives(state == u"drives"_s);
  if (state == u"settings"_s) show_settings(SettingsPage::photo, false);
  if (state == u"settings_range"_s) show_settings(SettingsPage::photo, true);
  if (state == u"settings_other"_s) show_settings(SettingsPage::signature, false);
  if (state == u"file_types"_s) show_check_list();
  if (state.contains(u"photos"_s)) show_gallery(state != u"no_photos"_s, state.endsWith(u"ended"));
  if (state.startsWith(u"files")) show_found_files(state.endsWith(u"ended"));
}

void WindowShowcase::show_drives(bool any) {
  has_drives_ = any;
  window_->reload(Control::idTableView);
  window_->set_text(Control::help_info,
                    u"\nSelect the storage media from List from which you want to recover Data. "
                    u"Press ‘Next’ button to continue... ");
  if (any) select(Control::idTableView, {1});
  show_group({Control::idTableView, Control::refresh_Box, Control::refresh_btn,
              Control::refresh_label, Control::open_image_btn, Control::rec_mode_Box,
              Control::rec_mode_Photo, Control::rec_mode_Video, Control::rec_mode_RawFile,
              Control::rec_mode_Audio});
}

void WindowShowcase::show_settings(SettingsPage page, bool range) {
  const auto named = [page](Control control) { return on_page(control, page); };
  const auto shown = [&](const std::vector<Control>& group) {
    for (const Control control : group) window_->set_hidden(named(control), false);
  };
  shown(settings_group);
  shown(range ? range_group : disk_group);
  if (page == SettingsPage::photo) {
    show_group({Control::Thro_Mode_Chk, Control::Thro_Mode_Chk_Label, Control::Thro_Mode_Info});
    window_->set_on(Control::Thro_Mode_Chk, true);
  }
  const std::array<std::pair<Control, const char16_t*>, 12> texts{{
      {Control::disk_val, drives[1][0]},
      {Control::vol_name_val, drives[1][1]},
      {Control::file_system_val, drives[1][2]},
      {Control::size_val, drives[1][3]},
      {Control::start_sector_entire_val, u"0"},
      {Control::end_sector_entire_val, drives[1][5]},
      {Control::Start_Sec_Min_val, u"0"},
      {Control::Start_Sec_Max_val, drives[1][5]},
      {Control::End_Sec_Min_val, u"0"},
      {Control::End_Sec_Max_val, drives[1][5]},
      {Control::Start_slider_val, u"62586880"},
      {Control::End_slider_val, drives[1][5]},
  }};
  for (const auto& [control, text] : texts) window_->set_text(named(control), text);
  window_->set_text(named(Control::path), range ? u"" : u"/home/anna/Pictures/Recovered");
  window_->set_text(named(Control::destination_hint), u"");
  for (const Control slider : {Control::Start_Slider, Control::End_Slider}) {
    window_->set_range(named(slider), 0, 250347520);
  }
  window_->set_value(named(Control::Start_Slider), 62586880);
  window_->set_value(named(Control::End_Slider), 250347520);
  window_->set_on(named(Control::entire_disk_rd), !range);
  window_->set_on(named(Control::sector_range_rd), range);
  window_->set_text(
      Control::help_info,
      range ? u"‘Sector Range’ option provides facility to specify the range of start and end "
              u"sector of storage media within which you want to perform searching for lost data. "
              u"Please drag knob of Slider to enter sector range or you can also enter these "
              u"values in Start Sector and End Sector fields manually."
            : u"If ‘Entire Disk’ option is selected, Norvo Recovery searches lost data in the "
              u"entire storage of selected disk. If you want to perform within a specific sector "
              u"range or in specific partition, please select other searching criteria. Else "
              u"press ‘Next’ button to start searching data in Entire disk.");
}

void WindowShowcase::show_check_list() {
  check_list_ = {};
  for (const auto& [extension, description] : {std::pair{u"3GP", u"Video of a mobile phone"},
                                               {u"AVI", u"Audio Video Interleave"},
                                               {u"M4V", u"MPEG-4 video"},
                                               {u"MKV", u"Matroska video"},
                                               {u"MOV", u"QuickTime movie"},
                                               {u"MP4", u"MPEG-4 video"},
                                               {u"MPG", u"MPEG video"},
                                               {u"MTS", u"High-definition camcorder"},
                                               {u"WMV", u"Windows Media video"}}) {
    const Text name(extension);
    check_list_.createExtensionListTableRecord(name, name != u"MKV", description,
                                               name == u"WMV" ? u"YES" : u"");
  }
  window_->reload(Control::idCheckTableView);
  window_->set_on(Control::Thro_Mode_Chk_SIG, true);
  window_->set_text(Control::help_info,
                    u"\nPlease select the required extension type for recovery process. Press "
                    u"‘Next’ button to continue... ");
  show_group({Control::idCheckTableView, Control::select_unselect_Chk, Control::Thro_Mode_Chk_SIG});
}

void WindowShowcase::show_progress(const char16_t* mode, const char16_t* sectors,
                                   const char16_t* left) {
  window_->set_range(Control::Progress_Horz, 0, 100);
  window_->set_value(Control::Progress_Horz, 43);
  window_->set_text(Control::Mode_label, mode);
  window_->set_text(Control::sector_label, sectors);
  window_->set_text(Control::time_left, left);
  show_group({Control::Progress_Horz, Control::Mode_label, Control::sector_label,
              Control::time_left, Control::stop_scan});
}

void WindowShowcase::show_gallery(bool any, bool ended) {
  gallery_.empty_images();
  gallery_.reset_Shown_Item_Count();
  window_->reload(Control::imageBrowser);
  std::vector<std::filesystem::path> files;
  if (any) {
    for (const auto& entry : std::filesystem::directory_iterator(pictures_)) {
      files.push_back(entry.path());
    }
  }
  std::ranges::sort(files);
  for (int i = 0; any && i < (ended ? 60 : 40); ++i) {
    const auto& file = files[static_cast<std::size_t>(i) % files.size()];
    const auto number = static_cast<std::uint64_t>(i + 1);
    gallery_.addImageWithPath(file, Generate_File_Name(number, u"GND", u"JPG"),
                              Generate_File_UID_Num(number, false, u"JPG"));
  }
  window_->reload(Control::imageBrowser);
  window_->set_text(Control::help_info, u"");
  window_->set_range(Control::zoom_slider, 0, 1);
  window_->set_value(Control::zoom_slider, 0.5);
  show_group({Control::imageBrowser});
  if (any) show_group({Control::zoom_label, Control::zoom_slider});
  if (ended) {
    select(Control::imageBrowser, {1, 2});
    show_group({Control::open_folder});
    window_->set_enabled(Control::back_btn, true);
    return;
  }
  show_progress(u"( Currently performing Search based on: Norvo General Recovery Procedure )",
                u"Sectors 107649434 of 250347520   ( Completed 43% )",
                u"About 13 to 14 minutes left in this pass, 92 MB/s");
  if (any) {
    window_->set_text(Control::ClearThumbnail_Label,
                      u"To maintain the speed of recovery, thumbnail preview window is cleared "
                      u"after every 2000 thumbnails.");
    show_group({Control::ClearThumbnail_Label});
  }
}

void WindowShowcase::show_found_files(bool ended) {
  gallery_.empty_images();
  gallery_.reset_Shown_Item_Count();
  window_->reload(Control::imageBrowser_2);
  found_files_.clear();
  const std::array<const char16_t*, 6> types{u"MOV", u"MP4", u"AVI", u"3GP", u"MKV", u"FLV"};
  for (const auto* type : types) {
    found_files_.createSignatureListTableRecord(type, 0, u"", {}, type);
  }
  for (int i = 0; i < 46; ++i) {
    const Text type(types[static_cast<std::size_t>(i * i) % types.size()]);
    const Text name = Generate_File_Name(found_files_.NoOfFile(type).value_or(0) + 1, type, type);
    const std::filesystem::path path =
        "/home/anna/Recovered/Norvo Spruce Results/Video Search/Omitted (recovered by Thorough "
        "Scan)/" +
        utf8_from_text(type) + "/" + utf8_from_text(name);
    gallery_.addImageWithPath_2(path, name, name);
    found_files_.count_file(path, name);
  }
  window_->reload(Control::idSigTableView);
  window_->reload(Control::imageBrowser_2);
  window_->set_text(Control::help_info, u"");
  show_group({Control::idSigTableView, Control::imageBrowser_2, Control::QuickLook_View_Box,
              Control::QuickLook_View});
  if (ended) {
    select(Control::imageBrowser_2, {5});
    show_movie(gallery_.item(5)->image_Name);
    show_group({Control::open_folder_Sig});
    window_->set_enabled(Control::back_btn, true);
    return;
  }
  show_progress(u"( Currently performing Search based on: Norvo Thorough Scanning Algorithm )",
                u"Sectors 107649434 of 250347520   ( Completed 43% )",
                u"About 58 to 64 minutes left in this pass, 20 MB/s");
}

void WindowShowcase::show_movie(TextView name) {
  using namespace std::chrono_literals;
  window_->set_text(Control::QuickLook_View_Box, name);
  window_->set_hidden(Control::QuickLook_View, true);
  window_->set_hidden(Control::mMovieView, false);
  movie_view_->begin(95s, {});
  const QImage frame(QString::fromStdString((pictures_ / "02.jpg").string()));
  movie_view_->show_frame(frame.scaled(200, 160, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  movie_view_->show_position(31s);
}

}  // namespace norvo
