// What each screen of the wizard shows, by the names of its controls.
#pragma once

#include <string>

#include "support/RecordingView.h"

namespace norvo::test {

// The names with a settings page's suffix: none, or "_Sig".
inline Names on_the_page(const Names& names, const std::string& suffix) {
  Names with_suffix;
  for (const std::string& name : names) with_suffix.insert(name + suffix);
  return with_suffix;
}

inline const Names drive_screen{"idTableView",     "_refresh_btn",    "_refresh_Box",
                                "_refresh_label",  "_open_image_btn", "_rec_mode_Box",
                                "_rec_mode_Photo", "_rec_mode_Video", "_rec_mode_RawFile"};

inline Names settings_controls(const std::string& suffix) {
  return on_the_page({"_Disk_Info_Box", "_Criteria_Box", "_entire_disk_rd", "_sector_range_rd",
                      "_Destination_Box", "_path_label", "_path", "_browse_path"},
                     suffix);
}

inline Names drive_lines(const std::string& suffix) {
  return on_the_page({"_disk", "_vol_name", "_file_system", "_size", "_disk_val", "_vol_name_val",
                      "_file_system_val", "_size_val"},
                     suffix);
}

inline Names entire_disk_lines(const std::string& suffix) {
  return on_the_page({"_start_sector_entire", "_end_sector_entire", "_start_sector_entire_val",
                      "_end_sector_entire_val"},
                     suffix);
}

inline Names range_lines(const std::string& suffix) {
  return on_the_page(
      {"_Sector_Range_Info", "_Start_Sec_Box", "_End_Sec_Box", "_Start_Sec_Min", "_Start_Sec_Max",
       "_End_Sec_Min", "_End_Sec_Max", "_Start_Sec_curr", "_End_Sec_curr", "_Start_Sec_Min_val",
       "_Start_Sec_Max_val", "_End_Sec_Min_val", "_End_Sec_Max_val", "_Start_Slider", "_End_Slider",
       "_Start_slider_val", "_End_slider_val"},
      suffix);
}

inline const Names thorough_lines{"_Thro_Mode_Chk", "_Thro_Mode_Chk_Label", "_Thro_Mode_Info"};

// The settings page of photo searches with the entire disk chosen, and that of the others.
inline Names photo_settings() {
  return settings_controls("") + drive_lines("") + entire_disk_lines("") + thorough_lines;
}
inline Names signature_settings() {
  return settings_controls("_Sig") + drive_lines("_Sig") + entire_disk_lines("_Sig");
}

inline const Names progress_lines{"_Progress_Horz", "_sector_label", "_Mode_label", "_stop_scan"};

inline const Names photo_scan_screen = progress_lines + Names{"imageBrowser"};

inline const Names check_list_screen{"idCheckTableView", "_select_unselect_Chk",
                                     "_Thro_Mode_Chk_SIG"};

inline const Names file_scan_screen =
    progress_lines + Names{"idSigTableView", "imageBrowser_2", "_QuickLook_View_Box",
                           "_QuickLook_View", "_open_folder_Sig"};

// Stands on every screen behind the first.
inline const Names search_type_label{"_Search_Type"};

// What the help line says, step by step.
inline const std::string drives_help =
    "\nSelect the storage media from List from which you want to recover Data. Press ‘Next’ "
    "button to continue... ";
inline const std::string entire_disk_help =
    "If ‘Entire Disk’ option is selected, Norvo Recovery searches lost data in the entire storage "
    "of selected disk. If you want to perform within a specific sector range or in specific "
    "partition, please select other searching criteria. Else press ‘Next’ button to start "
    "searching data in Entire disk.";
inline const std::string sector_range_help =
    "‘Sector Range’ option provides facility to specify the range of start and end sector of "
    "storage media within which you want to perform searching for lost data. Please drag knob of "
    "Slider to enter sector range or you can also enter these values in Start Sector and End "
    "Sector fields manually.";
inline const std::string file_types_help =
    "\nPlease select the required extension type for recovery process. Press ‘Next’ button to "
    "continue... ";

// As the view writes down a text that was set.
inline std::string text_set(const std::string& control, const std::string& text) {
  return "text " + control + " \"" + text + "\"";
}

// As the panel writes down an information box.
inline std::string told(const std::string& message) {
  return "alert \"\n" + message + "\" [OK]";
}

}  // namespace norvo::test
