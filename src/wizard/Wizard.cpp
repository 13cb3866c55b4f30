#include "wizard/Wizard.h"

#include <array>
#include <optional>

#include "wizard/GuidanceTexts.h"
#include "wizard/SearchTypes.h"
#include "wizard/SectorRange.h"

namespace norvo {

void Wizard::set_up() {
  WizardView& view = setting_.view;
  view.set_text(Control::help_info, guidance::drives);
  if (!setting_.edition.raw_file_choice_title.empty()) {
    view.set_text(Control::rec_mode_RawFile, setting_.edition.raw_file_choice_title);
  }
  setting_.drive_screen.Photo_Mode_Radio();
  screens_.show_hide_1_screen(Screen::show);
  view.set_enabled(Control::back_btn, false);
  setting_.drive_screen.Reload_Drive_list_Function();
}

void Wizard::Next_btn() {
  const WizardState& state = setting_.state;
  if (state.screen_counter == 0) return leave_drives();
  if (state.screen_counter == 1) return leave_settings();
  if (state.screen_counter == 2 && state.Recovery_MODE != 0) return leave_check_list();
}

void Wizard::leave_drives() {
  WizardView& view = setting_.view;
  const std::optional<std::size_t> selected = view.selected_row(Control::idTableView);
  if (!selected) {
    setting_.boxes.Show_MessageBox(u"Please select a storage media from list.");
    return;
  }
  const auto& drives = setting_.drives.nsMutaryOfDataObject();
  if (*selected >= drives.size()) return;
  const MyDataObject drive = drives[*selected];
  const std::int32_t mode = setting_.state.Recovery_MODE;
  setting_.state.screen_counter = 1;
  view.set_text(Control::help_info, guidance::entire_disk);
  view.set_text(on_page(Control::path, settings_page(mode)), u"");
  view.set_text(on_page(Control::destination_hint, settings_page(mode)), u"");
  constexpr std::array pages{SettingsPage::photo, SettingsPage::signature};
  for (const SettingsPage page : pages) {
    view.set_on(on_page(Control::entire_disk_rd, page), true);
    view.set_on(on_page(Control::sector_range_rd, page), false);
  }
  show_drive(settings_page(mode), drive);
  for (const SettingsPage page : pages) setting_.range.reset_range(page, drive.nsStrSectors);
  if (mode == 0) view.set_on(Control::Thro_Mode_Chk, true);
  view.set_text(Control::Search_Type, search_type(mode).label);
  view.set_hidden(Control::Search_Type, false);
  view.set_enabled(Control::back_btn, true);
  screens_.show_hide_1_screen(Screen::hide);
  screens_.show_hide_2_screen(Screen::show);
}

void Wizard::show_drive(SettingsPage page, const MyDataObject& drive) {
  const auto set = [&](Control control, TextView text) {
    setting_.view.set_text(on_page(control, page), text);
  };
  setting_.view.set_text(Control::disk_identifier, drive.nsStrDiskIdentifier);
  set(Control::disk_val, displayable(drive.nsStrDiskIdentifier));
  setting_.view.set_text(Control::sectors_val, drive.nsStrSectors);
  set(Control::vol_name_val, displayable(drive.nsStrVolName));
  set(Control::file_system_val, displayable(drive.nsStrFileSystem));
  set(Control::size_val, drive.nsStrSize);
  set(Control::start_sector_entire_val, u"0");
  set(Control::end_sector_entire_val, drive.nsStrSectors);
}

bool Wizard::settings_are_valid(SettingsPage page) {
  WizardView& view = setting_.view;
  const auto refuse = [&](TextView message, Control control) {
    setting_.boxes.Show_MessageBox(message);
    view.focus(on_page(control, page));
    return false;
  };
  if (view.text(on_page(Control::path, page)).empty()) {
    return refuse(u"Please select valid destination path.", Control::browse_path);
  }
  const bool entire_disk = view.is_on(on_page(Control::entire_disk_rd, page));
  const bool sector_range = view.is_on(on_page(Control::sector_range_rd, page));
  if (entire_disk || !sector_range) return true;
  const auto fault = check_sector_range(view.text(on_page(Control::Start_slider_val, page)),
                                        view.text(on_page(Control::End_slider_val, page)),
                                        view.text(Control::sectors_val));
  if (!fault) return true;
  const bool start = fault->field == SectorRangeFault::Field::start;
  return refuse(fault->message, start ? Control::Start_slider_val : Control::End_slider_val);
}

void Wizard::leave_settings() {
  WizardView& view = setting_.view;
  const std::int32_t mode = setting_.state.Recovery_MODE;
  if (!settings_are_valid(settings_page(mode))) return;
  setting_.state.screen_counter = 2;
  view.set_on(Control::Thro_Mode_Chk_SIG, true);
  view.set_on(Control::select_unselect_Chk, true);
  screens_.show_hide_2_screen(Screen::hide);
  setting_.host.clear_stop_now();
  if (mode != 0) return show_check_list();
  screens_.show_hide_3_screen_Photo(Screen::show);
  start_search();
}

void Wizard::show_check_list() {
  WizardView& view = setting_.view;
  setting_.check_list.clear();
  view.reload(Control::idCheckTableView);
  setting_.check_list.build(tables_of_mode(setting_.tables, setting_.state.Recovery_MODE));
  view.set_text(Control::help_info, guidance::file_types);
  screens_.show_hide_3_screen_RawFile(Screen::show);
  view.reload(Control::idCheckTableView);
}

void Wizard::leave_check_list() {
  setting_.host.hand_over_selection();
  setting_.view.reload(Control::idSigTableView);
  if (!setting_.check_list.Check_For_One_Extension_Selection()) {
    setting_.boxes.Show_MessageBox(u"Please select atleast one extension type.");
    setting_.view.focus(Control::idCheckTableView);
    return;
  }
  setting_.state.screen_counter = 3;
  screens_.show_hide_3_screen_RawFile(Screen::hide);
  screens_.show_hide_4_screen_RawFile(Screen::show);
  start_search();
}

void Wizard::start_search() {
  const WizardView& view = setting_.view;
  const std::int32_t mode = setting_.state.Recovery_MODE;
  const SettingsPage page = settings_page(mode);
  const SearchSettings settings{
      .Recovery_MODE = mode,
      .disk_identifier = view.text(Control::disk_identifier),
      .sectors_val = view.text(Control::sectors_val),
      .entire_disk = view.is_on(on_page(Control::entire_disk_rd, page)),
      .sector_range = view.is_on(on_page(Control::sector_range_rd, page)),
      .start_slider_val = view.text(on_page(Control::Start_slider_val, page)),
      .end_slider_val = view.text(on_page(Control::End_slider_val, page)),
      .thorough = view.is_on(mode == 0 ? Control::Thro_Mode_Chk : Control::Thro_Mode_Chk_SIG),
      .destination = setting_.destination.folder(page)};
  setting_.host.Check_Have_Permissions(settings.disk_identifier);
  setting_.host.start_search(settings);
}

void Wizard::show_waiting_search() {
  WizardView& view = setting_.view;
  view.set_text(Control::help_info, guidance::waiting_search);
  view.set_text(Control::Mode_label, u"");
  view.set_text(Control::sector_label, u"");
  view.set_value(Control::Progress_Horz, std::nullopt);
}

void Wizard::Back_btn() {
  switch (setting_.state.screen_counter) {
    case 1:
      return back_to_drives();
    case 2:
      return back_to_settings();
    case 3:
      return back_to_check_list();
    default:
      return;
  }
}

void Wizard::clear_drive_labels(SettingsPage page) {
  constexpr std::array labels{Control::disk_val,
                              Control::vol_name_val,
                              Control::file_system_val,
                              Control::size_val,
                              Control::start_sector_entire_val,
                              Control::end_sector_entire_val};
  for (const Control label : labels) setting_.view.set_text(on_page(label, page), u"<None>");
}

void Wizard::back_to_drives() {
  WizardView& view = setting_.view;
  setting_.state.screen_counter = 0;
  view.set_hidden(Control::Search_Type, true);
  view.set_text(Control::help_info, guidance::drives);
  view.set_text(Control::sectors_val, u"<None>");
  view.set_text(Control::disk_identifier, u"<None>");
  clear_drive_labels(SettingsPage::photo);
  clear_drive_labels(SettingsPage::signature);
  view.set_enabled(Control::back_btn, false);
  screens_.show_hide_1_screen(Screen::show);
  screens_.show_hide_2_screen(Screen::hide);
  setting_.drive_screen.Photo_Mode_Radio();
  setting_.drive_screen.Reload_Drive_list_Function();
}

void Wizard::back_to_settings() {
  WizardView& view = setting_.view;
  const std::int32_t mode = setting_.state.Recovery_MODE;
  setting_.state.screen_counter = 1;
  setting_.range.show_guidance(settings_page(mode));
  setting_.gallery.empty_images();
  view.set_value(Control::zoom_slider, 0.5);
  view.set_value(Control::imageBrowser, 0.55);
  view.reload(Control::imageBrowser);
  view.reload(Control::imageBrowser_2);
  for (const Control control :
       {Control::ClearThumbnail_Label, Control::zoom_label, Control::zoom_slider}) {
    view.set_hidden(control, true);
  }
  screens_.show_hide_2_screen(Screen::show);
  if (mode == 0) {
    screens_.show_hide_3_screen_Photo(Screen::hide);
  } else {
    screens_.show_hide_3_screen_RawFile(Screen::hide);
  }
  screens_.hide_open_folder_buttons();
  setting_.host.clear_stop_now();
  setting_.destination.show_hint(settings_page(mode));
}

void Wizard::back_to_check_list() {
  WizardView& view = setting_.view;
  setting_.state.screen_counter = 2;
  view.set_hidden(Control::ClearThumbnail_Label, true);
  setting_.gallery.empty_images();
  view.reload(Control::imageBrowser_2);
  screens_.hide_open_folder_buttons();
  view.set_text(Control::help_info, guidance::file_types);
  screens_.show_hide_4_screen_RawFile(Screen::hide);
  screens_.show_hide_3_screen_RawFile(Screen::show);
  setting_.host.clear_stop_now();
}

void Wizard::Select_Unselect_Check_btn() {
  setting_.check_list.Select_Unselect_Check(setting_.view.is_on(Control::select_unselect_Chk));
  setting_.view.reload(Control::idCheckTableView);
}

void Wizard::tick(std::size_t row, bool on) {
  setting_.check_list.set_State(row, on);
  setting_.view.set_on(Control::select_unselect_Chk, setting_.check_list.all_selected());
}

}  // namespace norvo
