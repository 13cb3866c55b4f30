#include "wizard/Screens.h"

#include <array>

#include "wizard/SearchTypes.h"

namespace norvo {
namespace {

constexpr std::array drive_controls{Control::idTableView, Control::refresh_btn,
                                    Control::refresh_Box, Control::refresh_label,
                                    Control::open_image_btn};

constexpr std::array disk_captions{
    Control::disk,     Control::vol_name,     Control::file_system,     Control::size,
    Control::disk_val, Control::vol_name_val, Control::file_system_val, Control::size_val};

constexpr std::array entire_disk_captions{Control::start_sector_entire, Control::end_sector_entire,
                                          Control::start_sector_entire_val,
                                          Control::end_sector_entire_val};

constexpr std::array range_controls{
    Control::Sector_Range_Info, Control::Start_Sec_Box,     Control::End_Sec_Box,
    Control::Start_Sec_Min,     Control::Start_Sec_Max,     Control::End_Sec_Min,
    Control::End_Sec_Max,       Control::Start_Sec_curr,    Control::End_Sec_curr,
    Control::Start_Sec_Min_val, Control::Start_Sec_Max_val, Control::End_Sec_Min_val,
    Control::End_Sec_Max_val,   Control::Start_Slider,      Control::End_Slider,
    Control::Start_slider_val,  Control::End_slider_val};

constexpr std::array settings_controls{Control::Disk_Info_Box,
                                       Control::Criteria_Box,
                                       Control::entire_disk_rd,
                                       Control::sector_range_rd,
                                       Control::Destination_Box,
                                       Control::path_label,
                                       Control::path,
                                       Control::browse_path};

constexpr std::array thorough_controls{Control::Thro_Mode_Chk, Control::Thro_Mode_Chk_Label,
                                       Control::Thro_Mode_Info};

constexpr std::array progress_controls{Control::Progress_Horz, Control::sector_label,
                                       Control::Mode_label, Control::stop_scan};

constexpr std::array check_list_controls{Control::idCheckTableView, Control::select_unselect_Chk,
                                         Control::Thro_Mode_Chk_SIG};

constexpr std::array found_files_controls{Control::idSigTableView, Control::imageBrowser_2,
                                          Control::QuickLook_View_Box, Control::open_folder_Sig};

template <typename Group>
void set_page_hidden(WizardView& view, SettingsPage page, const Group& controls, bool hidden) {
  for (const Control control : controls) view.set_hidden(on_page(control, page), hidden);
}

}  // namespace

template <typename Group>
void Screens::set_hidden(const Group& controls, bool hidden) {
  for (const Control control : controls) view_.set_hidden(control, hidden);
}

void Screens::enable_navigation(bool enabled) {
  view_.set_enabled(Control::next_btn, enabled);
  view_.set_enabled(Control::back_btn, enabled);
}

void Screens::show_hide_1_screen(Screen flag) {
  const bool hide = flag == Screen::hide;
  set_hidden(drive_controls, hide);
  const bool hide_types = hide || edition_.hides_search_types;
  const SignatureFileNames& names = edition_.signature_files;
  view_.set_hidden(Control::rec_mode_Box, hide_types);
  view_.set_hidden(Control::rec_mode_Photo, hide_types);
  view_.set_hidden(Control::rec_mode_Video, hide_types || !names_a_signature_file(names.video_dll));
  view_.set_hidden(Control::rec_mode_RawFile, hide_types || !names_a_signature_file(names.raw_dll));
  view_.set_hidden(Control::rec_mode_Audio, hide_types || !names_a_signature_file(names.audio_dll));
  Text title = edition_.APP_LONG_NAME;
  if (hide) title += u" - " + Text(search_type(state_.Recovery_MODE).title_suffix);
  view_.set_title(title);
}

void show_disk_information(WizardView& view, SettingsPage page, bool shown) {
  set_page_hidden(view, page, disk_captions, !shown);
  set_page_hidden(view, page, entire_disk_captions, !shown);
}

void show_range_controls(WizardView& view, SettingsPage page, bool shown) {
  set_page_hidden(view, page, range_controls, !shown);
}

void Screens::show_settings(SettingsPage page) {
  set_page_hidden(view_, page, settings_controls, false);
  const Control hint = on_page(Control::destination_hint, page);
  view_.set_hidden(hint, view_.text(hint).empty());
  set_page_hidden(view_, page, disk_captions, false);
  const bool entire_disk = view_.is_on(on_page(Control::entire_disk_rd, page));
  const bool sector_range = view_.is_on(on_page(Control::sector_range_rd, page));
  set_page_hidden(view_, page, entire_disk_captions, sector_range && !entire_disk);
  set_page_hidden(view_, page, range_controls, !sector_range || entire_disk);
}

void Screens::show_hide_2_screen(Screen flag) {
  const SettingsPage page = settings_page(state_.Recovery_MODE);
  if (flag == Screen::show) {
    show_settings(page);
  } else {
    set_page_hidden(view_, page, settings_controls, true);
    show_disk_information(view_, page, false);
    show_range_controls(view_, page, false);
    view_.set_hidden(on_page(Control::destination_hint, page), true);
  }
  if (page == SettingsPage::photo) set_hidden(thorough_controls, flag == Screen::hide);
}

void Screens::show_hide_3_screen_Photo(Screen flag) {
  const bool hide = flag == Screen::hide;
  view_.set_hidden(Control::imageBrowser, hide);
  set_hidden(progress_controls, hide);
  view_.set_hidden(Control::time_left, true);
  enable_navigation(hide);
}

void Screens::show_hide_3_screen_RawFile(Screen flag) {
  set_hidden(check_list_controls, flag == Screen::hide);
}

void Screens::show_hide_4_screen_RawFile(Screen flag) {
  const bool hide = flag == Screen::hide;
  set_hidden(found_files_controls, hide);
  view_.set_hidden(Control::QuickLook_View, hide);
  view_.set_hidden(Control::mMovieView, true);
  set_hidden(progress_controls, hide);
  view_.set_hidden(Control::time_left, true);
  enable_navigation(hide);
  if (hide) preview_.clear();
}

void Screens::hide_open_folder_buttons() {
  view_.set_hidden(Control::open_folder, true);
  view_.set_hidden(Control::open_folder_Sig, true);
}

}  // namespace norvo
