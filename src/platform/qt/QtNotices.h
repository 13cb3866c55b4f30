// The notice windows "Browse_Info", "SaveFile_Info", "LoadDrive_Modeless", "ClearPreview_Modeless"
// and "Help_Support", and the folder chooser "folder_chooser". Main thread.
#pragma once

#include <functional>
#include <string_view>

#include "platform/qt/ContactDialog.h"
#include "platform/qt/Labels.h"
#include "platform/qt/NoticeWindow.h"
#include "platform/qt/PathLabel.h"
#include "wizard/Notices.h"

namespace norvo {

class QtNotices : public Notices {
 public:
  // The notices belong to `window`, which outlives this object or dies with it. `saved_place` says
  // where the files of the search are, asked when that is shown. `clicked` hears the name of each
  // button of the contact dialog, and "Open_Support_Mail" of the support address after a search.
  QtNotices(QWidget& window, ContactTexts contact, std::function<Text()> saved_place,
            std::function<void(std::string_view name)> clicked);

  int run_Browse_Info() override;
  void hide_Browse_Info() override;
  std::optional<std::filesystem::path> choose_folder() override;
  int run_SaveFile_Info() override;
  void close_SaveFile_Info() override;
  void show_LoadDrive() override;
  void hide_LoadDrive() override;
  void show_ClearPreview() override;
  void hide_ClearPreview() override;
  void run_Help_Support() override;

 private:
  void make_save_file_info();
  void show_sheet(NoticeWindow& sheet);

  QWidget& window_;
  ContactTexts contact_;
  std::function<Text()> saved_place_;
  std::function<void(std::string_view)> clicked_;
  NoticeWindow* browse_info_;
  NoticeWindow* save_file_info_ = nullptr;
  PathLabel* saved_path_ = nullptr;
  NoticeWindow* load_drive_;
  NoticeWindow* clear_preview_;
  ContactDialog* help_support_;
};

}  // namespace norvo
