#include "window/WindowShowcase.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

#include "app/WindowSession.h"
#include "engine/OutputFolders.h"
#include "wizard/GuidanceTexts.h"
#include "wizard/SearchTypes.h"

namespace norvo {
namespace {

using namespace Qt::StringLiterals;

struct Volume {
  const char* path;
  const char16_t* identifier;
  const char16_t* name;
  const char16_t* file_system;
  const char16_t* disk;
  std::uint64_t sectors;
};

constexpr std::array<Volume, 4> volumes{{
    {"/media/anna/HOLIDAYS", u"sdb1", u"HOLIDAYS", u"MS-DOS (FAT32)", u"sdb", 62333952},
    {"/media/anna/MOUNTAINS", u"sdc1", u"MOUNTAINS", u"ExFAT", u"sdc", 250347520},
    {"/media/anna/0A1B-2C3D", u"sdd1", u"Untitled", u"MS-DOS (FAT16)", u"sdd", 1000000},
    {"/media/anna/Archive", u"nvme0n1p2", u"Archive of the family: photographs and films", u"Btrfs",
     u"nvme0n1", 1953523712},
}};
constexpr int searched = 1;  // of the volumes

const std::filesystem::path destination = "/home/anna/Pictures/Recovered";

constexpr TextView searching_help =
    u"\nTo stop recovery, click on ‘Stop’ Button or please wait for the process to be completed.";
constexpr TextView ended_help = u"\nTo select another disk for recovery, click on ‘Back’ Button.";

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

}  // namespace

std::vector<std::filesystem::path> ShowcaseDrives::mountedLocalVolumePaths() {
  std::vector<std::filesystem::path> paths;
  for (const Volume& volume : volumes) {
    if (connected) paths.emplace_back(volume.path);
  }
  return paths;
}

std::optional<DiskReport> ShowcaseDrives::info(const std::filesystem::path& path) {
  const auto* const volume = std::ranges::find(volumes, path, &Volume::path);
  if (volume == volumes.end()) return std::nullopt;
  DiskReport report;
  report.set("DeviceIdentifier", volume->identifier);
  report.set("VolumeName", volume->name);
  report.set("FilesystemUserVisibleName", volume->file_system);
  report.set("IOKitSize", volume->sectors * 512);
  report.set("ParentWholeDisk", volume->disk);
  return report;
}

WindowShowcase::WindowShowcase(const std::filesystem::path& pictures,
                               const std::filesystem::path& decoder,
                               const std::filesystem::path& signatures)
    : pictures_(pictures),
      presentation_(presentation_of(profile_)),
      drives_(disks_, profile_.USE_HARD_DISK),
      thumbnails_(main_thread_, {.decoder = decoder}) {
  SignatureFileNames masters;
  masters.video_dll = u"video-general.txt";
  masters.video_dll_adv = u"video-thorough.txt";
  tables_.load(signatures, masters);
  window_ = std::make_unique<MainWindow>(content());
  screens_ = std::make_unique<Screens>(*window_, state_, presentation_, preview_);
  movie_view_ = new MovieView({.play = [] {}, .pause = [] {}, .seek = [](auto) {}});
  auto* layout = new QVBoxLayout(&window_->widget(Control::mMovieView));
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(movie_view_);
}

WindowContent WindowShowcase::content() {
  return {
      .drives = {.rows = [this] { return drives_.numberOfRows(); },
                 .value =
                     [this](std::string_view column, std::size_t row) {
                       return drives_.objectValue(text_from_utf8_lossy(column), row);
                     }},
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

std::filesystem::path WindowShowcase::results_folder() const {
  return destination / search_folder(profile_.Rec_Folder_Name, 0);
}

// As clicks do, the first without a key and the others with the control key.
void WindowShowcase::select(Control list, const std::vector<int>& rows) {
  auto& view = dynamic_cast<QAbstractItemView&>(window_->widget(list));
  QApplication::processEvents(QEventLoop::AllEvents, 200);
  view.setFocus();
  view.selectionModel()->clear();
  for (const int row : rows) {
    view.selectionModel()->setCurrentIndex(view.model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
}

std::vector<QString> WindowShowcase::names() {
  return {u"drives"_s,         u"no_drives"_s,    u"settings"_s,        u"settings_range"_s,
          u"settings_other"_s, u"file_types"_s,   u"no_photos"_s,       u"photos"_s,
          u"photos_cleared"_s, u"photos_ended"_s, u"no_photos_ended"_s, u"files"_s,
          u"files_ended"_s};
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
  const bool drives = state.contains(u"drives"_s);
  const bool photos = state != u"settings_other"_s && !state.startsWith(u"file");
  state_.Recovery_MODE = photos ? 0 : 1;
  window_->set_on(Control::rec_mode_Photo, photos);
  window_->set_on(Control::rec_mode_Video, !photos);
  window_->set_text(Control::Search_Type, search_type(state_.Recovery_MODE).label);
  window_->set_hidden(Control::Search_Type, drives);
  window_->set_enabled(Control::next_btn, true);
  window_->set_enabled(Control::back_btn, !drives);
  if (drives) show_drives(state == u"drives"_s);
  if (state.startsWith(u"settings"_s)) show_settings(state == u"settings_range"_s);
  if (state == u"file_types"_s) show_check_list();
  if (state.contains(u"photos"_s)) show_gallery(state);
  if (state.startsWith(u"files")) show_found_files(state.endsWith(u"ended"));
}

void WindowShowcase::show_drives(bool any) {
  disks_.connected = any;
  drives_.Reload_Drive_list_Function();
  window_->reload(Control::idTableView);
  window_->set_text(Control::help_info, guidance::drives);
  screens_->show_hide_1_screen(Screen::show);
  if (any) select(Control::idTableView, {searched});
}

void WindowShowcase::show_settings(bool range) {
  const SettingsPage page = settings_page(state_.Recovery_MODE);
  const auto named = [page](Control control) { return on_page(control, page); };
  disks_.connected = true;
  drives_.Reload_Drive_list_Function();
  show_drive(drives_.nsMutaryOfDataObject()[searched]);
  window_->set_text(named(Control::path), range ? u"" : text_from_utf8_lossy(destination.native()));
  window_->set_on(named(Control::entire_disk_rd), !range);
  window_->set_on(named(Control::sector_range_rd), range);
  window_->set_on(Control::Thro_Mode_Chk, true);
  window_->set_text(Control::help_info, range ? guidance::sector_range : guidance::entire_disk);
  screens_->show_hide_2_screen(Screen::show);
  show_disk_information(*window_, page, !range);
  window_->focus(named(range ? Control::sector_range_rd : Control::browse_path));
}

void WindowShowcase::show_drive(const MyDataObject& drive) {
  const SettingsPage page = settings_page(state_.Recovery_MODE);
  constexpr std::uint64_t sectors = volumes[searched].sectors;
  const Text a_quarter = decimal(sectors / 4);
  const std::vector<std::pair<Control, Text>> texts{
      {Control::disk_val, drive.nsStrDiskIdentifier},
      {Control::vol_name_val, drive.nsStrVolName},
      {Control::file_system_val, drive.nsStrFileSystem},
      {Control::size_val, drive.nsStrSize},
      {Control::start_sector_entire_val, u"0"},
      {Control::end_sector_entire_val, drive.nsStrSectors},
      {Control::Start_Sec_Min_val, u"0"},
      {Control::Start_Sec_Max_val, drive.nsStrSectors},
      {Control::End_Sec_Min_val, u"0"},
      {Control::End_Sec_Max_val, drive.nsStrSectors},
      {Control::Start_slider_val, a_quarter},
      {Control::End_slider_val, drive.nsStrSectors},
  };
  for (const auto& [control, text] : texts) window_->set_text(on_page(control, page), text);
  for (const Control slider : {Control::Start_Slider, Control::End_Slider}) {
    window_->set_range(on_page(slider, page), 0, sectors);
  }
  window_->set_value(on_page(Control::Start_Slider, page), sectors / 4);
  window_->set_value(on_page(Control::End_Slider, page), sectors);
}

void WindowShowcase::show_check_list() {
  check_list_.clear();
  check_list_.build(tables_of_mode(tables_, state_.Recovery_MODE));
  window_->reload(Control::idCheckTableView);
  window_->set_on(Control::Thro_Mode_Chk_SIG, true);
  window_->set_on(Control::select_unselect_Chk, true);
  window_->set_text(Control::help_info, guidance::file_types);
  screens_->show_hide_3_screen_RawFile(Screen::show);
  window_->focus(Control::next_btn);
}

void WindowShowcase::show_progress(const char16_t* left) {
  window_->set_range(Control::Progress_Horz, 0, 100);
  window_->set_value(Control::Progress_Horz, 43);
  window_->set_text(Control::Mode_label,
                    u"( Currently performing Search based on: Norvo General Recovery Procedure )");
  window_->set_text(Control::sector_label, u"Sectors 107649434 of 250347520   ( Completed 43% )");
  window_->set_text(Control::time_left, left);
  window_->set_text(Control::help_info, searching_help);
  show_group({Control::time_left});
}

void WindowShowcase::end_search() {
  const bool photos = state_.Recovery_MODE == 0;
  for (const Control control : {Control::Mode_label, Control::Progress_Horz, Control::sector_label,
                                Control::time_left, Control::stop_scan}) {
    window_->set_hidden(control, true);
  }
  window_->set_text(Control::help_info, ended_help);
  if (photos) {
    show_group({Control::zoom_label, Control::zoom_slider, Control::open_folder});
  } else {
    show_group({Control::open_folder_Sig});
  }
  window_->set_enabled(Control::back_btn, true);
}

void WindowShowcase::show_gallery(const QString& state) {
  gallery_.empty_images();
  gallery_.reset_Shown_Item_Count();
  const bool any = !state.startsWith(u"no_"_s);
  const bool ended = state.endsWith(u"ended"_s);
  screens_->show_hide_3_screen_Photo(Screen::show);
  show_progress(u"About 13 to 14 minutes left in this pass, 92 MB/s");
  window_->set_range(Control::zoom_slider, 0, 1);
  window_->set_value(Control::zoom_slider, ended ? 0.26 : 0.5);
  window_->set_value(Control::imageBrowser, ended ? 0.26 : 0.55);
  if (state == u"photos_cleared"_s) {
    window_->set_text(Control::ClearThumbnail_Label,
                      u"To maintain the speed of recovery, thumbnail preview window is cleared "
                      u"after every 2000 thumbnails.");
    show_group({Control::ClearThumbnail_Label});
    add_photos(5, 2001);
  } else if (any) {
    add_photos(ended ? 60 : 10, 1);
  }
  window_->reload(Control::imageBrowser);
  if (!ended) return window_->focus(Control::stop_scan);
  end_search();
  window_->focus(Control::open_folder);
  if (any) select(Control::imageBrowser, {1, 2});
}

void WindowShowcase::add_photos(int count, std::uint64_t first_number) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(pictures_)) {
    files.push_back(entry.path());
  }
  std::ranges::sort(files);
  for (int i = 0; i < count; ++i) {
    const std::uint64_t number = first_number + static_cast<std::uint64_t>(i);
    gallery_.addImageWithPath(files[(number - 1) % files.size()],
                              Generate_File_Name(number, u"GND", u"JPG"),
                              Generate_File_UID_Num(number, false, u"JPG"));
  }
}

void WindowShowcase::show_found_files(bool ended) {
  add_found_files();
  screens_->show_hide_4_screen_RawFile(Screen::show);
  show_progress(u"About 58 to 64 minutes left in this pass, 20 MB/s");
  window_->reload(Control::idSigTableView);
  window_->reload(Control::imageBrowser_2);
  if (!ended) return window_->focus(Control::stop_scan);
  end_search();
  select(Control::imageBrowser_2, {5});
  show_movie(gallery_.item(5)->image_Name);
}

// A person looks for four types only.
void WindowShowcase::add_found_files() {
  gallery_.empty_images();
  gallery_.reset_Shown_Item_Count();
  found_files_.clear();
  for (const auto* type : {u"3GP", u"AVI", u"MOV", u"MP4"}) {
    found_files_.createSignatureListTableRecord(type, 0, u"", {}, type);
  }
  const std::filesystem::path folder =
      destination / pass_folder(search_folder(profile_.Rec_Folder_Name, 1), Pass::general);
  // In no order, as on a card.
  for (int i = 0; i < 46; ++i) {
    const int place = i * i % 7;
    const Text type = place == 0 ? u"AVI" : place == 1 ? u"MP4" : place == 2 ? u"MOV" : u"3GP";
    const Text name = Generate_File_Name(found_files_.NoOfFile(type).value_or(0) + 1, type, type);
    const std::filesystem::path path = joined(joined(folder, type), name);
    gallery_.addImageWithPath_2(path, name, name);
    found_files_.count_file(path, name);
  }
}

void WindowShowcase::show_movie(TextView name) {
  using namespace std::chrono_literals;
  window_->set_text(Control::QuickLook_View_Box, name);
  window_->set_hidden(Control::QuickLook_View, true);
  window_->set_hidden(Control::mMovieView, false);
  movie_view_->begin(95s, {});
  const QImage frame(QString::fromStdString((pictures_ / "02.jpg").string()));
  movie_view_->show_frame(frame.scaled(QSize(200, 160) * window_->devicePixelRatioF(),
                                       Qt::KeepAspectRatio, Qt::SmoothTransformation));
  movie_view_->show_position(31s);
}

}  // namespace norvo
