// What the tests of searches in the window share that hold for photos and for files alike: the
// test's parameter is the search type, 0 for photos and 1 for videos.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "app/SessionHarness.h"
#include "wizard/ScreenLists.h"

namespace norvo::test {

inline const std::string stop_question = "alert \"\nDo you want to stop searching?\" [Yes|No]";
inline const std::string unable_to_save = told(
    "Unable to continue saving recovered data.\n\nEither Destination Drive is inaccessible or "
    "there is no free space available in drive to save recovered data.");
inline const Names photo_final_screen =
    search_type_label + Names{"imageBrowser", "_zoom_label", "_zoom_slider", "_open_folder"};
inline const Names file_final_screen =
    search_type_label + Names{"idSigTableView", "imageBrowser_2", "_QuickLook_View_Box",
                              "_QuickLook_View", "_open_folder_Sig"};
// What the person is told on the final screen.
inline const std::string final_sentence =
    "\nTo select another disk for recovery, click on ‘Back’ Button.";

inline long count(const std::vector<std::string>& entries, const std::string& entry) {
  return std::count(entries.begin(), entries.end(), entry);
}

class EitherSearch : public testing::TestWithParam<std::int32_t> {
 protected:
  bool photos() const { return GetParam() == 0; }
  // What a file of this search begins with, in the signatures of SessionHarness.
  std::string header() const { return photos() ? "\xFF\xD8\xFF" : "moov"; }

  Names screen_before() const {
    return search_type_label + (photos() ? photo_settings() : check_list_screen);
  }
  Names scan_screen() const {
    return search_type_label + (photos() ? photo_scan_screen : file_scan_screen);
  }
  Names final_screen() const { return photos() ? photo_final_screen : file_final_screen; }
};

}  // namespace norvo::test
