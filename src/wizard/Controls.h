// The controls of the window, by their exact names. A control's name is the object name of its
// widget, so whoever looks for one finds it; here a leading underscore followed by a capital would
// be a reserved identifier, so the constants go without it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace norvo {

// Lists of names, a line for each group of the window.
// clang-format off

// The controls of one settings page, with the suffix S of that page.
#define NORVO_SETTINGS_CONTROLS(X, S)                                                         \
  X(Disk_Info_Box##S) X(disk##S) X(vol_name##S) X(file_system##S) X(size##S)                  \
  X(start_sector_entire##S) X(end_sector_entire##S)                                           \
  X(disk_val##S) X(vol_name_val##S) X(file_system_val##S) X(size_val##S)                      \
  X(start_sector_entire_val##S) X(end_sector_entire_val##S)                                   \
  X(Criteria_Box##S) X(entire_disk_rd##S) X(sector_range_rd##S)                               \
  X(Sector_Range_Info##S) X(Start_Sec_Box##S) X(End_Sec_Box##S)                               \
  X(Start_Sec_Min##S) X(Start_Sec_Max##S) X(End_Sec_Min##S) X(End_Sec_Max##S)                 \
  X(Start_Sec_curr##S) X(End_Sec_curr##S)                                                     \
  X(Start_Sec_Min_val##S) X(Start_Sec_Max_val##S) X(End_Sec_Min_val##S) X(End_Sec_Max_val##S) \
  X(Start_Slider##S) X(End_Slider##S) X(Start_slider_val##S) X(End_slider_val##S)             \
  X(Destination_Box##S) X(path_label##S) X(path##S) X(browse_path##S) X(destination_hint##S)

// All controls whose name has the leading underscore.
#define NORVO_UNDERSCORED_CONTROLS(X)                                                         \
  X(next_btn) X(back_btn) X(exit_btn) X(help_btn) X(contact_btn) X(help_info) X(Search_Type)  \
  X(disk_identifier) X(sectors_val)                                                           \
  X(refresh_btn) X(refresh_Box) X(refresh_label) X(open_image_btn)                            \
  X(rec_mode_Box) X(rec_mode_Photo) X(rec_mode_Video) X(rec_mode_RawFile) X(rec_mode_Audio)   \
  NORVO_SETTINGS_CONTROLS(X, )                                                                \
  NORVO_SETTINGS_CONTROLS(X, _Sig)                                                            \
  X(Thro_Mode_Chk) X(Thro_Mode_Chk_Label) X(Thro_Mode_Info)                                   \
  X(select_unselect_Chk) X(Thro_Mode_Chk_SIG)                                                 \
  X(Progress_Horz) X(sector_label) X(Mode_label) X(time_left) X(stop_scan)                    \
  X(ClearThumbnail_Label) X(zoom_label) X(zoom_slider) X(open_folder) X(open_folder_Sig)      \
  X(QuickLook_View_Box) X(QuickLook_View)

// The tables and result views, whose names stand as they are.
#define NORVO_PLAIN_CONTROLS(X)                                                               \
  X(idTableView) X(idCheckTableView) X(idSigTableView) X(imageBrowser) X(imageBrowser_2)      \
  X(mMovieView)

// clang-format on

enum class Control : std::uint8_t {
#define NORVO_ENUMERATOR(name) name,
  NORVO_UNDERSCORED_CONTROLS(NORVO_ENUMERATOR) NORVO_PLAIN_CONTROLS(NORVO_ENUMERATOR)
#undef NORVO_ENUMERATOR
};

#define NORVO_CONTROL(name) Control::name,
inline constexpr std::size_t control_count =
    std::array{NORVO_UNDERSCORED_CONTROLS(NORVO_CONTROL) NORVO_PLAIN_CONTROLS(NORVO_CONTROL)}
        .size();
#undef NORVO_CONTROL

// "_Thro_Mode_Chk", "idTableView". Any thread.
std::string_view control_name(Control control);

// The settings page of photo searches or that of all others, whose controls end in "_Sig".
enum class SettingsPage : std::uint8_t { photo, signature };

// `photo_control`, one of the photo page's, or the same control of the other page.
Control on_page(Control photo_control, SettingsPage page);

}  // namespace norvo
